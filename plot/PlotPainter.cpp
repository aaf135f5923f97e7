// The input band, the axes and the grid.
#include "plot/PlotPainter.h"

#include <string>

#include "platform/drawing/DisplayScale.h"
#include "plot/Truncate.h"

void CPlotPainter::DrawInputBand() {
    m_dc.SetTextColor(m_colours.m_crText);
    m_dc.SetTextAlign(TextAlign::Left);
    for (int nLine = 0; nLine < 4; ++nLine)
        m_dc.TextOut(0, m_layout.BandTop() + nLine * m_layout.m_nRowHeight,
                     L"I #" + std::to_wstring(nLine + 1));

    const CPenScope pen(m_dc, PenStyle::Solid, RGB(128, 128, 128));
    for (const int y : {m_layout.BandTop(), m_layout.m_nAxisY - m_layout.m_nRowHeight}) {
        m_dc.MoveTo(0, y);
        m_dc.LineTo(m_layout.m_nWidth, y);
    }
}

void CPlotPainter::DrawTimeAxis() {
    m_dc.SetTextColor(m_colours.m_crText);
    m_dc.SetTextAlign(TextAlign::Left);
    m_dc.TextOut(0, m_layout.m_nLabelY, L"(ms)");

    // A press near the right edge moves the start of the view beyond its end until the release.
    const std::int64_t nView = m_scene.m_nViewEnd - m_scene.m_nViewStart;
    if (nView < 0) return;

    // About ten ticks, at a distance of 5, 10, ... 105 times a power of ten.
    std::int64_t nLeading = nView / 10;
    std::int64_t nPower = 1;
    for (; nLeading > 100; nLeading /= 10) nPower *= 10;
    const std::int64_t nStep = (nLeading / 5 + 1) * nPower * 5;
    const std::int64_t nTicks = nView / nStep;

    const auto toMilliseconds =
        [nRate = std::int64_t{m_scene.m_graph.m_nGraphRate}](std::int64_t nIndex) {
            if (nRate >= 1000) return nIndex / (nRate / 1000);
            return nRate > 0 ? nIndex * 1000 / nRate : nIndex;
        };
    const CPenScope pen(m_dc, PenStyle::Solid, m_colours.m_crTimeMarker);
    for (std::int64_t nTick = 0; nTick <= nTicks; ++nTick) {
        const int x = m_time.XAt(nTick * nStep);
        m_dc.SetTextAlign((nTick == 0        ? TextAlign::Left
                           : nTick == nTicks ? TextAlign::Right
                                             : TextAlign::Center));
        m_dc.TextOut(x, m_layout.m_nLabelY,
                     std::to_wstring(toMilliseconds(nTick * nStep + m_scene.m_nViewStart)));
        m_dc.MoveTo(x, m_layout.m_nLabelY);
        m_dc.LineTo(x, m_layout.m_nAxisY);
    }
}

/// An axis that runs downwards has no grid: the step is at least 1 for it too.
void CPlotPainter::DrawValueGrid() {
    const int nStep = std::max(m_value.m_nSpan / 10, 1);
    const CPenScope pen(m_dc, PenStyle::Dot, m_colours.m_crGridLines);
    m_dc.SetTextColor(m_colours.m_crText);
    m_dc.SetTextAlign(TextAlign::Left);
    for (int nLine = 0; nLine <= m_value.m_nSpan / nStep; ++nLine) {
        const int y = m_value.m_nMinY - TruncateToPixel(nLine * m_value.m_dScale * nStep);
        m_dc.MoveTo(m_time.m_nLeft, y);
        m_dc.LineTo(m_layout.m_nWidth, y);
        m_dc.TextOut(0, y - Scaled(8), std::to_wstring(m_value.m_nMin + nLine * nStep));
    }
}
