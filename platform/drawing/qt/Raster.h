// Drawing directly on the pixels of an image, exactly and fast.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/drawing/Geometry.h"

/// Part of an image. Drawing changes nothing outside of the clipping rectangle.
struct PixelView {
    std::uint32_t* m_pPixels;  ///< the image's top-left pixel, 0xFFRRGGBB
    std::ptrdiff_t m_nStride;  ///< pixels from a row to the next
    CRect m_clip;              ///< within the image; empty: nothing can be drawn

    std::uint32_t* At(int x, int y) const { return m_pPixels + y * m_nStride + x; }
};

/// The lengths of strokes and gaps in turn, beginning with a stroke, in pixels along the line.
using LineDashes = std::array<int, 6>;

/// How the pixels along a line are set. Its dashes repeat.
struct LineStyle {
    std::uint32_t m_nPixel;
    int m_nThickness = 1;  ///< 1 or more
    LineDashes m_dashes{};
    unsigned m_nDashes = 0;                         ///< an even number; 0: the line is solid
    std::optional<std::uint32_t> m_nGapPixel = {};  ///< none: gaps are left as they are
};

/// Sets the pixels of the line from one point up to, but not including, the other, as
/// platform/drawing/Graphics.h says. Any coordinates will do: only pixels within the clipping
/// rectangle cost time.
void DrawLine(const PixelView& view, CPoint from, CPoint to, const LineStyle& style);

void FillPixels(const PixelView& view, const CRect& rect, std::uint32_t nPixel);

/// Turns every colour into its complement.
void InvertPixels(const PixelView& view, const CRect& rect);

constexpr std::uint32_t ToPixel(COLORREF color) {
    return 0xFF000000u | ((color & 0xFFu) << 16) | (color & 0xFF00u) | ((color >> 16) & 0xFFu);
}
constexpr COLORREF ToColor(std::uint32_t nPixel) {
    return ((nPixel & 0xFFu) << 16) | (nPixel & 0xFF00u) | ((nPixel >> 16) & 0xFFu);
}

inline CRect Intersect(const CRect& a, const CRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}
