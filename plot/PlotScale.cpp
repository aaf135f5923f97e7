#include "plot/PlotScale.h"

#include <cstdlib>

#include "curves/InstrumentMode.h"
#include "plot/RTPlot.h"
#include "plot/Truncate.h"

namespace {

/// Columns across the width when each takes an even share of the range.
constexpr std::int64_t TARGET_COLUMNS = 500;

constexpr int MIN_AUTO_SPAN = 20;

struct ValueRange {
    int m_nMin;
    int m_nMax;
};

int EnlargeExtreme(int nExtreme) {
    return std::clamp<int>(TruncateToPixel(1.2 * nExtreme), INT16_MIN, INT16_MAX);
}

/// The extremes of all curves with some room around them; both 0: none are known.
ValueRange FindExtremes(const PlotSnapshot& shown) {
    ValueRange range{INT16_MAX, 0};
    for (const PlotSnapshot::Curve& curve : shown.m_lstCurves) {
        if (!curve.m_spData) continue;
        if (shown.m_nDisplay != 1) {
            range.m_nMax = std::max<int>(range.m_nMax, curve.m_extremes.m_nMaxEven);
            range.m_nMin = std::min<int>(range.m_nMin, curve.m_extremes.m_nMinEven);
        }
        if (shown.m_nDisplay != 0) {
            range.m_nMax = std::max<int>(range.m_nMax, curve.m_extremes.m_nMaxOdd);
            range.m_nMin = std::min<int>(range.m_nMin, curve.m_extremes.m_nMinOdd);
        }
    }
    return {EnlargeExtreme(range.m_nMin), EnlargeExtreme(range.m_nMax)};
}

}  // namespace

PlotSnapshot PlotSnapshot::Take(const RTPlot& plot) {
    PlotSnapshot shown;
    shown.m_nDisplay = plot.m_nDisplay;
    shown.m_nMode = plot.m_nMode;

    const auto lock = plot.LockSession();
    shown.m_nViewStart = plot.m_nViewStart;
    shown.m_nViewEnd = plot.m_nViewEnd;
    shown.m_bZoomed = plot.m_bZoomed != 0;
    shown.m_nSpanValues = plot.m_nSpanValues;
    if (plot.m_pGraph) shown.m_graph = *plot.m_pGraph;
    if (!plot.m_spCurves) return shown;
    const RTCurveList& lstCurves = plot.m_spCurves->m_lstCurves[plot.m_nChannel];
    shown.m_lstCurves.reserve(lstCurves.size());
    for (const auto& spCurve : lstCurves) {
        Curve curve{spCurve, 0, {}};
        if (spCurve) {
            curve.m_nCount = spCurve->GetCount();
            curve.m_extremes = spCurve->GetExtremes();
        }
        shown.m_lstCurves.push_back(std::move(curve));
    }
    return shown;
}

PlotLayout::PlotLayout(int nNewWidth, int nNewHeight)
    : m_nWidth(nNewWidth), m_nHeight(nNewHeight), m_nAxisY(m_nHeight - 40),
      m_nLabelY(m_nHeight - 30), m_nBandHeight(TruncateToPixel(0.2 * m_nHeight)),
      m_nTopMargin(TruncateToPixel(0.05 * m_nHeight)), m_nRowHeight(m_nBandHeight / 5),
      m_nTraceHeight(TruncateToPixel(0.16 * m_nBandHeight)),
      m_nUsableHeight(m_nHeight - m_nBandHeight - 40 - m_nTopMargin - 20),
      m_nBaseline(m_nHeight - 40 - m_nTopMargin - m_nBandHeight) {}

TimeAxis::TimeAxis(const PlotSnapshot& shown, const PlotLayout& layout) {
    const std::int64_t nShown =
        shown.m_bZoomed ? shown.m_nViewEnd - shown.m_nViewStart : shown.m_nSpanValues;
    const std::int64_t nRange = std::max<std::int64_t>(nShown, 1);
    m_dScale = static_cast<double>(layout.m_nWidth - LEFT_MARGIN - 2) / static_cast<double>(nRange);

    m_nColumnWidth = std::max<std::int64_t>(nRange / TARGET_COLUMNS, 1);
    if (m_nColumnWidth % 2 != 0) ++m_nColumnWidth;
    const std::int64_t nGroup = GetColumnGroup(shown.m_nMode);
    m_nColumnWidth = (m_nColumnWidth + nGroup - 1) / nGroup * nGroup;
}

int TimeAxis::XAt(std::int64_t nDistance) const {
    return LEFT_MARGIN + TruncateToPixel(static_cast<double>(nDistance) * m_dScale);
}

ValueAxis::ValueAxis(const PlotSnapshot& shown, const PlotLayout& layout) {
    const bool bAutoZoom = shown.m_graph.m_bAutoZoom != 0;
    ValueRange range{0, 0};
    if (bAutoZoom) range = FindExtremes(shown);
    if (range.m_nMin == 0 && range.m_nMax == 0)
        range = {static_cast<std::int16_t>(shown.m_graph.m_nRangeMin),
                 static_cast<std::int16_t>(shown.m_graph.m_nRangeMax)};

    m_nMin = range.m_nMin;
    m_nSpan = range.m_nMax - range.m_nMin;
    if (bAutoZoom && m_nSpan < MIN_AUTO_SPAN) {
        m_nSpan = MIN_AUTO_SPAN;
        m_nMin = std::max(range.m_nMax - MIN_AUTO_SPAN, 0);
    }
    if (m_nSpan == 0) m_nSpan = 1;

    m_dScale = static_cast<double>(layout.m_nUsableHeight) / m_nSpan;
    m_nZeroY = shown.m_graph.m_nRangeMin < 0
                   ? TruncateToPixel(layout.m_nBaseline - std::abs(m_nMin) * m_dScale)
                   : layout.m_nBaseline;
    m_nMinY = m_nMin < 0 ? m_nZeroY + TruncateToPixel(std::abs(m_nMin) * m_dScale) : m_nZeroY;
}

int ValueAxis::YOf(int nValue) const {
    return m_nZeroY - TruncateToPixel((nValue - std::max(m_nMin, 0)) * m_dScale);
}
