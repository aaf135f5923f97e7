// Colours, points and rectangles.
#pragma once

#include <algorithm>
#include <cstdint>

/// A colour reference: red in the low byte, then green, then blue; the top byte is 0.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFu) | ((green & 0xFFu) << 8) | ((blue & 0xFFu) << 16);
}

struct CPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const CPoint&, const CPoint&) = default;
};

struct CSize {
    int cx = 0;
    int cy = 0;
    friend bool operator==(const CSize&, const CSize&) = default;
};

/// A rectangle in pixels; right and bottom lie just outside of it.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CPoint TopLeft() const { return {left, top}; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool PtInRect(CPoint point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    void OffsetRect(int dx, int dy) {
        left += dx;
        right += dx;
        top += dy;
        bottom += dy;
    }
    void NormalizeRect() {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    friend bool operator==(const CRect&, const CRect&) = default;
};
