#include "platform/drawing/qt/Raster.h"

#include <cstdlib>
#include <cstring>

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

}  // namespace

void DrawLine(const PixelView& view, CPoint from, CPoint to, const LineStyle& style) {
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
    if (!style.IsSolid()) {
        auto nPhase = static_cast<unsigned>(nFirst % style.m_nPatternLength);
        walk([&] {
            if (style.m_nPattern >> nPhase & 1u)
                *p = style.m_nPixel;
            else if (style.m_nGapPixel)
                *p = *style.m_nGapPixel;
            if (++nPhase == style.m_nPatternLength) nPhase = 0;
        });
    } else if (slope.m_nAcross == 0) {
        for (std::int64_t nStep = nFirst; nStep < nEnd; ++nStep, p += nStepAlong)
            *p = style.m_nPixel;
    } else {
        walk([&] { *p = style.m_nPixel; });
    }
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
