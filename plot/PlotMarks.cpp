// Marks, time markers, trigger level and legend.
#include <string>

#include "platform/drawing/DisplayScale.h"
#include "plot/PlotPainter.h"
#include "plot/Truncate.h"

namespace {

constexpr std::int32_t UNSET = -1;
constexpr COLORREF TRIGGER_LINE = RGB(255, 0, 255);

// The legend, in pixels of the design.
constexpr int LEGEND_WIDTH = 100;
constexpr int LEGEND_TOP = 120;
constexpr int LEGEND_STEP = 20;
constexpr int LEGEND_LINE = 20;        ///< length of a line
constexpr int LEGEND_TEXT = 30;        ///< from the line's left end to the text
constexpr int LEGEND_TEXT_ABOVE = 10;  ///< from the text's top to the line

}  // namespace

void CPlotPainter::DrawVerticalLine(int x, int yFrom, PenStyle style, COLORREF color) {
    const CPenScope pen(m_dc, style, color);
    m_dc.MoveTo(x, yFrom);
    m_dc.LineTo(x, ScaledThickness(1) - 1);
}

void CPlotPainter::DrawTimeMarker(std::int64_t nIndex) {
    if (nIndex == UNSET) return;
    DrawVerticalLine(m_time.XAt(nIndex - m_scene.m_nViewStart), m_layout.m_nHeight,
                     PenStyle::DashDotDot, m_colours.m_crTimeMarker);
}

PlotMarks CPlotPainter::GetMarks() const {
    return {m_plot.m_nToolPulseMark, m_plot.m_nStartMark, m_plot.m_nEndMark,
            m_plot.m_nMarkerA,       m_plot.m_nMarkerB,   m_plot.m_nTriggerLevel};
}

void CPlotPainter::DrawMarks() {
    const auto drawMark = [this](std::int64_t nIndex, int yFrom, COLORREF color) {
        // The marks are measured from the plot's edge, as the clicks that place them.
        if (nIndex != UNSET)
            DrawVerticalLine(m_time.XAt(nIndex - m_scene.m_nViewStart) - m_time.m_nLeft, yFrom,
                             PenStyle::Solid, color);
    };
    drawMark(m_plot.m_nToolPulseMark, m_layout.m_nHeight, m_colours.m_crToolPulse);
    drawMark(m_plot.m_nStartMark, m_layout.BandTop(), m_colours.m_crStart);
    drawMark(m_plot.m_nEndMark, m_layout.m_nHeight, m_colours.m_crEnd);

    DrawTimeMarker(m_plot.m_nMarkerA);
    DrawTimeMarker(m_plot.m_nMarkerB);
    if (m_scene.m_nCurves == 1 && m_shown.m_newest.m_spData)
        for (const std::int32_t nMarker : m_shown.m_newest.m_spData->m_anMarkers)
            DrawTimeMarker(nMarker);

    if (m_plot.m_nTriggerLevel == UNSET) return;
    const CPenScope pen(m_dc, PenStyle::Solid, TRIGGER_LINE);
    const int y = m_value.m_nZeroY - TruncateToPixel(m_plot.m_nTriggerLevel * m_value.m_dScale);
    m_dc.MoveTo(m_time.m_nLeft, y);
    m_dc.LineTo(m_layout.m_nWidth, y);
}

void CPlotPainter::DrawLegend() {
    const std::size_t nCurves = m_scene.m_nCurves;
    const int xLine = m_layout.m_nWidth - Scaled(LEGEND_WIDTH);
    if (nCurves < 2 || m_nEnd <= xLine) return;
    m_dc.SetTextAlign(TextAlign::Left);
    for (std::size_t k = 0; k < nCurves; ++k) {
        const int y = Scaled(LEGEND_TOP + LEGEND_STEP * static_cast<int>(k));
        const int yText = y - Scaled(LEGEND_TEXT_ABOVE);
        if (yText >= m_layout.m_nHeight) break;
        const COLORREF color = ColourOf(m_colours.m_acrGraphLine, k);
        const CPenScope pen(m_dc, PenStyle::Solid, color);
        m_dc.MoveTo(xLine, y);
        m_dc.LineTo(xLine + Scaled(LEGEND_LINE), y);
        m_dc.SetTextColor(color);
        m_dc.TextOut(xLine + Scaled(LEGEND_TEXT), yText, L"Curve #" + std::to_wstring(k + 1));
    }
}
