// The curves: each reduced to columns of smallest and largest values.
#include <algorithm>

#include "curves/InstrumentMode.h"
#include "plot/PlotPainter.h"

namespace {

/// Lines of so many curves are kept from paint to paint: more than can be told apart. Those of
/// further curves are worked out each time, in one place.
constexpr std::size_t MAX_KEPT_LINES = 1000;

/// The value that a main line reaches by a column: the end of it that is farther from where the
/// line comes from.
int PassColumn(int nLevel, int nLow, int nHigh) { return nLevel >= nHigh ? nLow : nHigh; }

}  // namespace

void CPlotPainter::DrawCurves() {
    if (m_layout.m_nWidth <= LEFT_MARGIN + 2) return;  // no curve area
    m_lines.resize(std::min(m_shown.m_lstCurves.size(), MAX_KEPT_LINES + 1));
    bool bFirst = true;
    for (std::size_t k = 0; k < m_shown.m_lstCurves.size(); ++k) {
        const PlotSnapshot::Curve& curve = m_shown.m_lstCurves[k];
        if (!curve.m_spData || curve.m_nCount == 0) continue;
        const IndexRange range = FindIndexRange(curve);
        if (!range.IsEmpty()) {
            DrawCurve(curve, k, range);
            if (bFirst) DrawInputTraces(curve.m_spData->GetPulses(), range);
        }
        bFirst = false;
    }
}

CPlotPainter::IndexRange CPlotPainter::FindIndexRange(const PlotSnapshot::Curve& curve) const {
    const std::int64_t nCount = curve.m_nCount;
    if (m_shown.m_nViewStart > m_shown.m_nViewEnd) return {};

    IndexRange range;
    range.m_nLast = std::min(m_shown.m_nViewEnd, nCount);
    range.m_nFirst = m_shown.m_nViewStart <= nCount
                         ? std::max<std::int64_t>(m_shown.m_nViewStart, 0)
                         : nCount - 1;
    if (m_shown.m_nDisplay == 2)
        range.m_nFirst = std::max<std::int64_t>(range.m_nFirst, 2);
    else if (range.m_nFirst % 2 != m_shown.m_nDisplay)
        ++range.m_nFirst;
    if (range.m_nFirst >= m_shown.m_nDisplay)
        range.m_nFirst -= (range.m_nFirst - m_shown.m_nDisplay) % GetColumnGroup(m_shown.m_nMode);
    return range;
}

CPlotPainter::Column CPlotPainter::ReadColumn(const PlotSnapshot::Curve& curve, std::int64_t nIndex,
                                              std::int64_t nLast) const {
    const auto find = [&](std::int64_t nFirst, std::int64_t nEnd) {
        return curve.m_spData->FindMinMax(static_cast<std::uint32_t>(nFirst),
                                          static_cast<std::uint32_t>(nEnd));
    };
    const std::int64_t nEnd = std::min(nIndex + m_time.m_nColumnWidth, nLast);
    const RTMinMax values = find(nIndex, nEnd);
    Column column{values.m_nMin, values.m_nMax, 0};
    if (m_shown.m_nDisplay == 2) {
        // Each value of the column brings the one behind it, also when that begins the next column.
        const std::int64_t nLastOwn = nIndex + (nEnd - 1 - nIndex) / 2 * 2;
        const RTMinMax second = find(nIndex + 1, std::min(nLastOwn + 2, nLast));
        column.m_nSecondHigh = std::max<int>(second.m_nMax, 0);
    }
    return column;
}

/// The main line's value after the columns from nIndex on, which are out of sight. They are walked
/// from the last one back, only as far as the outcome still depends on them.
int CPlotPainter::FindLevelAfter(const PlotSnapshot::Curve& curve, std::int64_t nIndex,
                                 std::int64_t nLast, int nLevel) const {
    if (nIndex >= nLast) return nLevel;
    std::int64_t nAt =
        nIndex + (nLast - 1 - nIndex) / m_time.m_nColumnWidth * m_time.m_nColumnWidth;
    Column column = ReadColumn(curve, nAt, nLast);
    int nIfLow = column.m_nLow;  // the outcome if the line leaves the column at its low end
    int nIfHigh = column.m_nHigh;
    while (nIfLow != nIfHigh && nAt > nIndex) {
        nAt -= m_time.m_nColumnWidth;
        const Column before = ReadColumn(curve, nAt, nLast);
        const int nFromLow = before.m_nLow >= column.m_nHigh ? nIfLow : nIfHigh;
        const int nFromHigh = before.m_nHigh >= column.m_nHigh ? nIfLow : nIfHigh;
        nIfLow = nFromLow;
        nIfHigh = nFromHigh;
        column = before;
    }
    return nLevel >= column.m_nHigh ? nIfLow : nIfHigh;
}

/// Works the line out only when anything that it follows from has changed since the last paint.
const CurveLine& CPlotPainter::FindLine(const PlotSnapshot::Curve& curve, std::size_t nCurve,
                                        IndexRange range) {
    CurveLine& line = m_lines[std::min(nCurve, MAX_KEPT_LINES)];
    const CurveLine::Source source{range.m_nFirst, range.m_nLast,     m_shown.m_nDisplay,
                                   m_nLevel,       m_layout.m_nWidth, m_time,
                                   m_value};
    if (!line.IsOf(curve.m_spData, source)) {
        line.m_source.reset();
        TraceLine(curve, range, line);
        line.m_wpData = curve.m_spData;
        line.m_source = source;
    }
    m_nLevel = line.m_nLevelAfter;
    return line;
}

void CPlotPainter::TraceLine(const PlotSnapshot::Curve& curve, IndexRange range,
                             CurveLine& line) const {
    line.m_mainPoints.clear();
    line.m_columnEnds.clear();
    int nLevel = m_nLevel;
    for (std::int64_t i = range.m_nFirst; i < range.m_nLast; i += m_time.m_nColumnWidth) {
        const int x = m_time.XAt(i - range.m_nFirst);
        const Column column = ReadColumn(curve, i, range.m_nLast);
        const bool bStraddles = column.m_nLow < nLevel && column.m_nHigh > nLevel;
        if (bStraddles) line.m_mainPoints.push_back({x, m_value.YOf(column.m_nLow)});
        nLevel = PassColumn(nLevel, column.m_nLow, column.m_nHigh);
        line.m_mainPoints.push_back({x, m_value.YOf(nLevel)});
        if (m_shown.m_nDisplay == 2)
            line.m_columnEnds.push_back(
                {line.m_mainPoints.size(), {x, m_value.YOf(column.m_nSecondHigh)}});
        if (x >= m_layout.m_nWidth) {
            nLevel = FindLevelAfter(curve, i + m_time.m_nColumnWidth, range.m_nLast, nLevel);
            break;
        }
    }
    line.m_nLevelAfter = nLevel;
}

void CPlotPainter::DrawCurve(const PlotSnapshot::Curve& curve, std::size_t nCurve,
                             IndexRange range) {
    const CurveLine& line = FindLine(curve, nCurve, range);
    const std::int16_t* pValues = curve.m_spData->GetValues();
    const CPen mainPen(PenStyle::Solid, GetMainColour(nCurve));
    const CPoint mainStart{LEFT_MARGIN, m_value.YOf(pValues[range.m_nFirst])};
    if (m_shown.m_nDisplay == 2 && range.m_nFirst + 1 < range.m_nLast) {
        const CPen secondPen(PenStyle::Solid, ColourOf(m_colours.m_acrGraphLine2, nCurve));
        DrawPair(line, mainPen, mainStart, secondPen,
                 {LEFT_MARGIN, m_value.YOf(pValues[range.m_nFirst + 1])});
    } else {
        DrawMainLine(mainPen, mainStart, line.m_mainPoints);
    }
}

void CPlotPainter::DrawMainLine(const CPen& pen, CPoint start, std::span<const CPoint> points) {
    const CRgn curveArea(
        {LEFT_MARGIN, m_layout.m_nTopMargin, m_layout.m_nWidth, m_value.m_nMinY + 1});
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
    const std::span<const CPoint> points(line.m_mainPoints);
    std::size_t nDrawn = 0;
    for (const CurveLine::ColumnEnd& end : line.m_columnEnds) {
        DrawMainLine(mainPen, nDrawn == 0 ? mainStart : points[nDrawn - 1],
                     points.subspan(nDrawn, end.m_nMainPoints - nDrawn));
        nDrawn = end.m_nMainPoints;

        const CPen* pPrevious = m_dc.SelectPen(&secondPen);
        m_dc.MoveTo(secondStart.x, secondStart.y);
        m_dc.LineTo(end.m_second.x, end.m_second.y);
        m_dc.SelectPen(pPrevious);
        secondStart = end.m_second;
    }
}

COLORREF CPlotPainter::GetMainColour(std::size_t nCurve) const {
    return ColourOf(m_shown.m_nDisplay == 1 ? m_colours.m_acrGraphLine2 : m_colours.m_acrGraphLine,
                    nCurve);
}
