// The traces of the four digital input lines.
#include "platform/drawing/DisplayScale.h"
#include "plot/PlotPainter.h"

namespace {

constexpr std::array<COLORREF, CInputTraces::LINE_COUNT> LINE_COLOURS{
    RGB(0, 51, 153),
    RGB(0, 102, 51),
    RGB(51, 0, 102),
    RGB(255, 0, 0),
};

}  // namespace

ChangedSpan CPlotPainter::UpdateTraces(const PlotSnapshot::Curve& curve) {
    const IndexRange range = FindIndexRange(curve);
    return m_cache.m_traces.Update(curve.m_spData, {range.m_nFirst, m_layout.m_nWidth, m_time},
                                   range.m_nLast);
}

void CPlotPainter::DrawInputTraces() {
    m_cache.m_traces.ForEach([this](const TraceRun& run) {
        if (std::max(run.m_nX, run.m_nEndX) >= m_nFrom) DrawTraceRun(run);
    });
}

void CPlotPainter::DrawTraceRun(const TraceRun& run) {
    const auto yOf = [this](unsigned nLine, bool bSet) {
        const int yBase = m_layout.m_nAxisY - (4 - static_cast<int>(nLine)) * m_layout.m_nRowHeight;
        return yBase - Scaled(2) - (bSet ? 0 : m_layout.m_nTraceHeight);
    };
    for (unsigned nLine = 0; nLine < CInputTraces::LINE_COUNT; ++nLine) {
        const CPenScope pen(m_dc, PenStyle::Solid, LINE_COLOURS[nLine]);
        const auto has = [nLine](unsigned nLines) { return (nLines >> nLine & 1u) != 0; };
        const int yBefore = yOf(nLine, has(run.m_nBefore));
        const int yLevel = yOf(nLine, has(run.m_nLevels));
        m_dc.MoveTo(run.m_nX, yBefore);
        if (has(run.m_nReturned)) {
            m_dc.LineTo(run.m_nX, yOf(nLine, !has(run.m_nBefore)));
            m_dc.LineTo(run.m_nX, yBefore);
        }
        if (yLevel != yBefore) m_dc.LineTo(run.m_nX, yLevel);
        m_dc.LineTo(run.m_nEndX, yLevel);
    }
}
