#include "plot/PlotScale.h"

#include <cstdlib>

#include "curves/InstrumentMode.h"
#include "platform/drawing/DisplayScale.h"
#include "plot/PlotSnapshot.h"
#include "plot/Truncate.h"

namespace {

/// Columns across the width of the design when each takes an even share of the range.
constexpr int TARGET_COLUMNS = 500;

constexpr int MIN_AUTO_SPAN = 20;

struct ValueRange {
    int m_nMin;
    int m_nMax;
};

int EnlargeExtreme(int nExtreme) {
    return std::clamp<int>(TruncateToPixel(1.2 * nExtreme), INT16_MIN, INT16_MAX);
}

}  // namespace

PlotLayout::PlotLayout(int nNewWidth, int nNewHeight)
    : m_nWidth(nNewWidth), m_nHeight(nNewHeight), m_nLeftMargin(Scaled(40)),
      m_nRangeWidth(m_nWidth - m_nLeftMargin - Scaled(2)), m_nAxisY(m_nHeight - Scaled(40)),
      m_nLabelY(m_nHeight - Scaled(30)), m_nBandHeight(TruncateToPixel(0.2 * m_nHeight)),
      m_nTopMargin(TruncateToPixel(0.05 * m_nHeight)), m_nRowHeight(m_nBandHeight / 5),
      m_nTraceHeight(TruncateToPixel(0.16 * m_nBandHeight)),
      m_nUsableHeight(m_nAxisY - m_nBandHeight - m_nTopMargin - Scaled(20)),
      m_nBaseline(m_nAxisY - m_nTopMargin - m_nBandHeight) {}

TimeAxis::TimeAxis(const PlotScene& scene, const PlotLayout& layout)
    : m_nLeft(layout.m_nLeftMargin) {
    const std::int64_t nShown =
        scene.m_bZoomed ? scene.m_nViewEnd - scene.m_nViewStart : scene.m_nSpanValues;
    const std::int64_t nRange = std::max<std::int64_t>(nShown, 1);
    m_dScale = static_cast<double>(layout.m_nRangeWidth) / static_cast<double>(nRange);

    m_nColumnWidth = std::max<std::int64_t>(nRange / ScaledThickness(TARGET_COLUMNS), 1);
    if (m_nColumnWidth % 2 != 0) ++m_nColumnWidth;
    const std::int64_t nGroup = GetColumnGroup(scene.m_nMode);
    m_nColumnWidth = (m_nColumnWidth + nGroup - 1) / nGroup * nGroup;
}

int TimeAxis::XAt(std::int64_t nDistance) const {
    return m_nLeft + TruncateToPixel(static_cast<double>(nDistance) * m_dScale);
}

ValueAxis::ValueAxis(const PlotScene& scene, const PlotLayout& layout) {
    const bool bAutoZoom = scene.m_graph.m_bAutoZoom != 0;
    ValueRange range{0, 0};
    // With some room around them; both 0: none are known.
    if (bAutoZoom)
        range = {EnlargeExtreme(scene.m_extremes.m_nMin), EnlargeExtreme(scene.m_extremes.m_nMax)};
    if (range.m_nMin == 0 && range.m_nMax == 0)
        range = {static_cast<std::int16_t>(scene.m_graph.m_nRangeMin),
                 static_cast<std::int16_t>(scene.m_graph.m_nRangeMax)};

    m_nMin = range.m_nMin;
    m_nSpan = range.m_nMax - range.m_nMin;
    if (bAutoZoom && m_nSpan < MIN_AUTO_SPAN) {
        m_nSpan = MIN_AUTO_SPAN;
        m_nMin = std::max(range.m_nMax - MIN_AUTO_SPAN, 0);
    }
    if (m_nSpan == 0) m_nSpan = 1;

    m_dScale = static_cast<double>(layout.m_nUsableHeight) / m_nSpan;
    m_nZeroY = scene.m_graph.m_nRangeMin < 0
                   ? TruncateToPixel(layout.m_nBaseline - std::abs(m_nMin) * m_dScale)
                   : layout.m_nBaseline;
    m_nMinY = m_nMin < 0 ? m_nZeroY + TruncateToPixel(std::abs(m_nMin) * m_dScale) : m_nZeroY;
}

int ValueAxis::YOf(int nValue) const {
    return m_nZeroY - TruncateToPixel((nValue - std::max(m_nMin, 0)) * m_dScale);
}
