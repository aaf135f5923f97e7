#include "plot/PlotScale.h"

#include <cstdlib>

#include "plot/RTPlot.h"
#include "plot/Truncate.h"

namespace {

/// Columns across the width when each takes an even share of the range.
constexpr std::int64_t TARGET_COLUMNS = 500;

/// Mode 3 delivers its values in groups of so many; a column never splits one.
constexpr std::int64_t MODE_3_GROUP = 3;

constexpr int MIN_AUTO_SPAN = 20;

struct ValueRange {
    int nMin;
    int nMax;
};

int EnlargeExtreme(int nExtreme) {
    return std::clamp<int>(TruncateToPixel(1.2 * nExtreme), INT16_MIN, INT16_MAX);
}

/// The extremes of all curves with some room around them; both 0: none are known.
ValueRange FindExtremes(const PlotSnapshot& shown) {
    ValueRange range{INT16_MAX, 0};
    for (const PlotSnapshot::Curve& curve : shown.lstCurves) {
        if (!curve.spData) continue;
        if (shown.nDisplay != 1) {
            range.nMax = std::max<int>(range.nMax, curve.extremes.m_nMaxEven);
            range.nMin = std::min<int>(range.nMin, curve.extremes.m_nMinEven);
        }
        if (shown.nDisplay != 0) {
            range.nMax = std::max<int>(range.nMax, curve.extremes.m_nMaxOdd);
            range.nMin = std::min<int>(range.nMin, curve.extremes.m_nMinOdd);
        }
    }
    return {EnlargeExtreme(range.nMin), EnlargeExtreme(range.nMax)};
}

}  // namespace

PlotSnapshot PlotSnapshot::Take(const RTPlot& plot) {
    PlotSnapshot shown;
    shown.nDisplay = plot.m_nDisplay;
    shown.nMode = plot.m_nMode;

    const auto lock = plot.LockSession();
    shown.nViewStart = plot.m_nViewStart;
    shown.nViewEnd = plot.m_nViewEnd;
    shown.bZoomed = plot.m_bZoomed != 0;
    shown.nSpanValues = plot.m_nSpanValues;
    if (plot.m_pGraph) shown.graph = *plot.m_pGraph;
    if (!plot.m_spCurves) return shown;
    const RTCurveList& lstCurves = plot.m_spCurves->m_lstCurves[plot.m_nChannel];
    shown.lstCurves.reserve(lstCurves.size());
    for (const auto& spCurve : lstCurves) {
        Curve curve{spCurve, 0, {}};
        if (spCurve) {
            curve.nCount = spCurve->GetCount();
            curve.extremes = spCurve->GetExtremes();
        }
        shown.lstCurves.push_back(std::move(curve));
    }
    return shown;
}

PlotLayout::PlotLayout(int nNewWidth, int nNewHeight)
    : nWidth(nNewWidth), nHeight(nNewHeight), nAxisY(nHeight - 40), nLabelY(nHeight - 30),
      nBandHeight(TruncateToPixel(0.2 * nHeight)), nTopMargin(TruncateToPixel(0.05 * nHeight)),
      nRowHeight(nBandHeight / 5), nTraceHeight(TruncateToPixel(0.16 * nBandHeight)),
      nUsableHeight(nHeight - nBandHeight - 40 - nTopMargin - 20),
      nBaseline(nHeight - 40 - nTopMargin - nBandHeight) {}

TimeAxis::TimeAxis(const PlotSnapshot& shown, const PlotLayout& layout) {
    const std::int64_t nShown =
        shown.bZoomed ? shown.nViewEnd - shown.nViewStart : shown.nSpanValues;
    const std::int64_t nRange = std::max<std::int64_t>(nShown, 1);
    dScale = static_cast<double>(layout.nWidth - LEFT_MARGIN - 2) / static_cast<double>(nRange);

    nColumnWidth = std::max<std::int64_t>(nRange / TARGET_COLUMNS, 1);
    if (nColumnWidth % 2 != 0) ++nColumnWidth;
    if (shown.nMode == 3 && nColumnWidth % MODE_3_GROUP != 0)
        nColumnWidth = nColumnWidth / MODE_3_GROUP * MODE_3_GROUP + MODE_3_GROUP;
}

int TimeAxis::XAt(std::int64_t nDistance) const {
    return LEFT_MARGIN + TruncateToPixel(static_cast<double>(nDistance) * dScale);
}

ValueAxis::ValueAxis(const PlotSnapshot& shown, const PlotLayout& layout) {
    const bool bAutoZoom = shown.graph.m_bAutoZoom != 0;
    ValueRange range{0, 0};
    if (bAutoZoom) range = FindExtremes(shown);
    if (range.nMin == 0 && range.nMax == 0)
        range = {static_cast<std::int16_t>(shown.graph.m_nRangeMin),
                 static_cast<std::int16_t>(shown.graph.m_nRangeMax)};

    nMin = range.nMin;
    nSpan = range.nMax - range.nMin;
    if (bAutoZoom && nSpan < MIN_AUTO_SPAN) {
        nSpan = MIN_AUTO_SPAN;
        nMin = std::max(range.nMax - MIN_AUTO_SPAN, 0);
    }
    nSpan = std::max(nSpan, 1);

    dScale = static_cast<double>(layout.nUsableHeight) / nSpan;
    nZeroY = shown.graph.m_nRangeMin < 0
                 ? TruncateToPixel(layout.nBaseline - std::abs(nMin) * dScale)
                 : layout.nBaseline;
    nMinY = nMin < 0 ? nZeroY + TruncateToPixel(std::abs(nMin) * dScale) : nZeroY;
}

int ValueAxis::YOf(int nValue) const {
    return nZeroY - TruncateToPixel((nValue - std::max(nMin, 0)) * dScale);
}
