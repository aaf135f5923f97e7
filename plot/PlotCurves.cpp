// The curves: which of their values are in view, and drawing their lines.
#include <algorithm>

#include "curves/InstrumentMode.h"
#include "platform/drawing/DisplayScale.h"
#include "plot/PlotPainter.h"

bool CPlotPainter::IsInView(const PlotSnapshot::Curve& curve) const {
    return m_layout.m_nRangeWidth > 0 && curve.HasValues() && !FindIndexRange(curve).IsEmpty();
}

CPlotPainter::IndexRange CPlotPainter::FindIndexRange(const PlotSnapshot::Curve& curve) const {
    const std::int64_t nCount = curve.m_nCount;
    if (m_scene.m_nViewStart > m_scene.m_nViewEnd) return {};

    IndexRange range;
    range.m_nLast = std::min(m_scene.m_nViewEnd, nCount);
    range.m_nFirst = m_scene.m_nViewStart <= nCount
                         ? std::max<std::int64_t>(m_scene.m_nViewStart, 0)
                         : nCount - 1;
    if (m_scene.m_nDisplay == 2)
        range.m_nFirst = std::max<std::int64_t>(range.m_nFirst, 2);
    else if (range.m_nFirst % 2 != m_scene.m_nDisplay)
        ++range.m_nFirst;
    if (range.m_nFirst >= m_scene.m_nDisplay)
        range.m_nFirst -= (range.m_nFirst - m_scene.m_nDisplay) % GetColumnGroup(m_scene.m_nMode);
    return range;
}

ChangedSpan CPlotPainter::UpdateLine(CurveLine& line, const PlotSnapshot::Curve& curve,
                                     int nLevel) const {
    const IndexRange range = FindIndexRange(curve);
    return line.Update(
        curve.m_spData,
        {range.m_nFirst, m_scene.m_nDisplay, nLevel, m_layout.m_nWidth, m_time, m_value},
        range.m_nLast);
}

void CPlotPainter::DrawCurve(const CurveLine& line, const PlotSnapshot::Curve& curve,
                             std::size_t nCurve) {
    const IndexRange range = FindIndexRange(curve);
    const std::int16_t* pValues = curve.m_spData->GetValues();
    const CPen mainPen(PenStyle::Solid, GetMainColour(nCurve));
    const CPoint mainStart{m_time.m_nLeft, m_value.YOf(pValues[range.m_nFirst])};
    if (m_scene.m_nDisplay == 2 && range.m_nFirst + 1 < range.m_nLast) {
        const CPen secondPen(PenStyle::Solid, ColourOf(m_colours.m_acrGraphLine2, nCurve));
        DrawPair(line, mainPen, mainStart, secondPen,
                 {m_time.m_nLeft, m_value.YOf(pValues[range.m_nFirst + 1])});
        return;
    }
    const std::span<const CPoint> points(line.GetMainPoints());
    const auto itFirst = std::ranges::lower_bound(points, m_nFrom, {}, &CPoint::x);
    const auto nDrawn = static_cast<std::size_t>(itFirst - points.begin());
    DrawMainLine(mainPen, nDrawn == 0 ? mainStart : points[nDrawn - 1], points.subspan(nDrawn));
}

void CPlotPainter::DrawMainLine(const CPen& pen, CPoint start, std::span<const CPoint> points) {
    const CRgn curveArea({m_time.m_nLeft, m_layout.m_nTopMargin, m_layout.m_nWidth,
                          m_value.m_nMinY + ScaledThickness(1)});
    const CPen* pPrevious = m_dc.SelectPen(&pen);
    m_dc.SelectClipRgn(&curveArea);
    m_dc.MoveTo(start.x, start.y);
    m_dc.PolylineTo(points);
    m_dc.SelectClipRgn(nullptr);
    m_dc.SelectPen(pPrevious);
}

/// Both lines, column by column: where they meet, the later column is on top.
void CPlotPainter::DrawPair(const CurveLine& line, const CPen& mainPen, CPoint mainStart,
                            const CPen& secondPen, CPoint secondStart) {
    const std::span<const CPoint> points(line.GetMainPoints());
    const std::span<const CurveLine::ColumnEnd> ends(line.GetColumnEnds());
    auto itEnd =
        std::ranges::lower_bound(ends, m_nFrom, {}, [](const auto& end) { return end.m_second.x; });
    std::size_t nDrawn = 0;
    if (itEnd != ends.begin()) {
        nDrawn = (itEnd - 1)->m_nMainPoints;
        secondStart = (itEnd - 1)->m_second;
    }
    for (; itEnd != ends.end(); ++itEnd) {
        DrawMainLine(mainPen, nDrawn == 0 ? mainStart : points[nDrawn - 1],
                     points.subspan(nDrawn, itEnd->m_nMainPoints - nDrawn));
        nDrawn = itEnd->m_nMainPoints;

        const CPen* pPrevious = m_dc.SelectPen(&secondPen);
        m_dc.MoveTo(secondStart.x, secondStart.y);
        m_dc.LineTo(itEnd->m_second.x, itEnd->m_second.y);
        m_dc.SelectPen(pPrevious);
        secondStart = itEnd->m_second;
    }
}

COLORREF CPlotPainter::GetMainColour(std::size_t nCurve) const {
    return ColourOf(m_scene.m_nDisplay == 1 ? m_colours.m_acrGraphLine2 : m_colours.m_acrGraphLine,
                    nCurve);
}
