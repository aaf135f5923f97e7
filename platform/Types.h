// Basic types of the framework layer: message parameters, colours, points and rectangles.
#pragma once

#include <algorithm>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// A colour reference: red in the low byte, then green, then blue; the top byte is 0.
using COLORREF = std::uint32_t;

/// A window's entry in the process-wide window table. 0 means no window; a handle is never used
/// again after its window is gone, so a stale handle is recognised as stale.
using HWND = std::uintptr_t;

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
