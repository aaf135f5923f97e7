#include "platform/drawing/qt/Raster.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <numeric>

namespace {

using Wide = __int128;

/// A line of n steps along its longer direction. Across it, the line has moved away from its start
/// by floor((2 * k * across + bias) / (2 * n)) pixels after k steps: the distance rounded to the
/// nearest pixel, and where two are equally near, to the upper or left one.
struct LineSlope {
    std::int64_t m_nSteps;
    std::int64_t m_nAcross;
    std::int64_t m_nBias;

    /// The first step after which the line is nDistance pixels or more away; nSteps when none is.
    std::int64_t FindStep(std::int64_t nDistance) const {
        if (nDistance <= 0) return 0;
        if (nDistance > m_nAcross) return m_nSteps;
        // Twice a product of two numbers of 33 bits.
        const Wide nNeeded = Wide{m_nSteps} * 2 * nDistance - m_nBias;
        const Wide nPerStep = Wide{m_nAcross} * 2;
        return static_cast<std::int64_t>((nNeeded + nPerStep - 1) / nPerStep);
    }
};

/// Steps in one direction, and how many of them lead into and out of [nLow, nHigh).
struct Interval {
    std::int64_t m_nFirst;
    std::int64_t m_nEnd;

    static Interval Of(std::int64_t nStart, bool bDown, std::int64_t nLow, std::int64_t nHigh) {
        if (bDown) return {nStart - nHigh + 1, nStart - nLow + 1};
        return {nLow - nStart, nHigh - nStart};
    }
};

/// Where in its dashes a line is.
class CDashes {
  public:
    CDashes(const LineStyle& style, std::int64_t nStep) : m_style(style) {
        const int nLength =
            std::accumulate(style.m_dashes.begin(), style.m_dashes.begin() + style.m_nDashes, 0);
        auto nPhase = static_cast<int>(nStep % nLength);
        for (; nPhase >= style.m_dashes[m_nDash]; ++m_nDash) nPhase -= style.m_dashes[m_nDash];
        m_nLeft = style.m_dashes[m_nDash] - nPhase;
    }
    bool IsStroke() const { return m_nDash % 2 == 0; }
    void Advance() {
        if (--m_nLeft > 0) return;
        if (++m_nDash == m_style.m_nDashes) m_nDash = 0;
        m_nLeft = m_style.m_dashes[m_nDash];
    }

  private:
    const LineStyle& m_style;
    unsigned m_nDash = 0;
    int m_nLeft = 0;  ///< pixels of this stroke or gap
};

/// A line one pixel wide.
void DrawThinLine(const PixelView& view, CPoint from, CPoint to, const LineStyle& style) {
    if (view.m_clip.IsEmpty()) return;
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool bSteep = std::abs(dy) > std::abs(dx);

    LineSlope slope;
    slope.m_nSteps = std::max(std::abs(dx), std::abs(dy));
    slope.m_nAcross = std::min(std::abs(dx), std::abs(dy));
    slope.m_nBias = (bSteep ? dx : dy) < 0 ? slope.m_nSteps : slope.m_nSteps - 1;

    const Interval alongX = Interval::Of(from.x, dx < 0, view.m_clip.left, view.m_clip.right);
    const Interval alongY = Interval::Of(from.y, dy < 0, view.m_clip.top, view.m_clip.bottom);
    const Interval& along = bSteep ? alongY : alongX;
    const Interval& across = bSteep ? alongX : alongY;
    const std::int64_t nFirst =
        std::max({std::int64_t{0}, along.m_nFirst, slope.FindStep(across.m_nFirst)});
    const std::int64_t nEnd =
        std::min({slope.m_nSteps, along.m_nEnd, slope.FindStep(across.m_nEnd)});
    if (nFirst >= nEnd) return;

    const std::int64_t nWhole = 2 * slope.m_nSteps;
    const Wide nProgress = Wide{slope.m_nAcross} * 2 * nFirst + slope.m_nBias;
    const std::int64_t nMoved = nFirst == 0 ? 0 : static_cast<std::int64_t>(nProgress / nWhole);
    auto nRest = static_cast<std::int64_t>(nProgress - Wide{nWhole} * nMoved);

    const std::int64_t nMovedX = bSteep ? nMoved : nFirst;
    const std::int64_t nMovedY = bSteep ? nFirst : nMoved;
    std::uint32_t* p = view.At(static_cast<int>(from.x + (dx < 0 ? -nMovedX : nMovedX)),
                               static_cast<int>(from.y + (dy < 0 ? -nMovedY : nMovedY)));
    const std::ptrdiff_t nStepX = dx < 0 ? -1 : 1;
    const std::ptrdiff_t nStepY = dy < 0 ? -view.m_nStride : view.m_nStride;
    const std::ptrdiff_t nStepAlong = bSteep ? nStepY : nStepX;
    const std::ptrdiff_t nStepAcross = bSteep ? nStepX : nStepY;

    const auto walk = [&](auto setPixel) {
        for (std::int64_t nStep = nFirst; nStep < nEnd; ++nStep) {
            setPixel();
            p += nStepAlong;
            nRest += 2 * slope.m_nAcross;
            if (nRest >= nWhole) {
                nRest -= nWhole;
                p += nStepAcross;
            }
        }
    };
    if (style.m_nDashes > 0) {
        CDashes dashes(style, nFirst);
        walk([&] {
            if (dashes.IsStroke())
                *p = style.m_nPixel;
            else if (style.m_nGapPixel)
                *p = *style.m_nGapPixel;
            dashes.Advance();
        });
    } else if (slope.m_nAcross == 0) {
        for (std::int64_t nStep = nFirst; nStep < nEnd; ++nStep, p += nStepAlong)
            *p = style.m_nPixel;
    } else {
        walk([&] { *p = style.m_nPixel; });
    }
}

}  // namespace

void DrawLine(const PixelView& view, CPoint from, CPoint to, const LineStyle& style) {
    if (style.m_nThickness == 1) {
        DrawThinLine(view, from, to, style);
        return;
    }
    if (view.m_clip.IsEmpty() || from == to) return;
    const int nThickness = style.m_nThickness;
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool bSteep = std::abs(dy) > std::abs(dx);
    // The view is moved in place of the points, which may be any.
    for (int n = 0; n < nThickness; ++n) {
        PixelView moved = view;
        moved.m_pPixels += bSteep ? n : n * view.m_nStride;
        moved.m_clip.OffsetRect(bSteep ? -n : 0, bSteep ? 0 : -n);
        DrawThinLine(moved, from, to, style);
    }
    if (style.m_nDashes > 0) return;
    const auto behind = [nThickness](int n) {
        return static_cast<int>(std::min<std::int64_t>(std::int64_t{n} + nThickness, INT_MAX));
    };
    FillPixels(view, {from.x, from.y, behind(from.x), behind(from.y)}, style.m_nPixel);
}

void FillPixels(const PixelView& view, const CRect& rect, std::uint32_t nPixel) {
    const CRect part = Intersect(rect, view.m_clip);
    if (part.IsEmpty()) return;
    // The library copies with the longest registers that the processor has.
    const std::uint32_t* const pFirstRow = view.At(part.left, part.top);
    std::fill_n(view.At(part.left, part.top), part.Width(), nPixel);
    for (int y = part.top + 1; y < part.bottom; ++y)
        std::memcpy(view.At(part.left, y), pFirstRow, sizeof(std::uint32_t) * part.Width());
}

void InvertPixels(const PixelView& view, const CRect& rect) {
    const CRect part = Intersect(rect, view.m_clip);
    if (part.IsEmpty()) return;
    for (int y = part.top; y < part.bottom; ++y) {
        std::uint32_t* p = view.At(part.left, y);
        for (int nLeft = part.Width(); nLeft > 0; --nLeft) *p++ ^= 0x00FFFFFFu;
    }
}
