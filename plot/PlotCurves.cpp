// The curves: each reduced to columns of smallest and largest values.
#include "plot/PlotPainter.h"

namespace {

/// The value that a main line reaches by a column: the end of it that is farther from where the
/// line comes from.
int PassColumn(int nLevel, int nLow, int nHigh) { return nLevel >= nHigh ? nLow : nHigh; }

}  // namespace

void CPlotPainter::DrawCurves() {
    if (m_layout.nWidth <= LEFT_MARGIN + 2) return;  // no curve area
    m_lines.resize(m_shown.lstCurves.size());
    bool bFirst = true;
    for (std::size_t k = 0; k < m_shown.lstCurves.size(); ++k) {
        const PlotSnapshot::Curve& curve = m_shown.lstCurves[k];
        if (!curve.spData || curve.nCount == 0) continue;
        const IndexRange range = FindIndexRange(curve);
        if (!range.IsEmpty()) {
            DrawCurve(curve, k, range);
            if (bFirst) DrawInputTraces(curve.spData->GetPulses(), range);
        }
        bFirst = false;
    }
}

CPlotPainter::IndexRange CPlotPainter::FindIndexRange(const PlotSnapshot::Curve& curve) const {
    const std::int64_t nCount = curve.nCount;
    if (m_shown.nViewStart > m_shown.nViewEnd) return {};

    IndexRange range;
    range.nLast = std::min(m_shown.nViewEnd, nCount);
    range.nFirst =
        m_shown.nViewStart <= nCount ? std::max<std::int64_t>(m_shown.nViewStart, 0) : nCount - 1;
    if (m_shown.nDisplay == 2)
        range.nFirst = std::max<std::int64_t>(range.nFirst, 2);
    else if (range.nFirst % 2 != m_shown.nDisplay)
        ++range.nFirst;
    if (m_shown.nMode == 3 && range.nFirst >= m_shown.nDisplay)
        range.nFirst -= (range.nFirst - m_shown.nDisplay) % 3;
    return range;
}

CPlotPainter::Column CPlotPainter::ReadColumn(const PlotSnapshot::Curve& curve, std::int64_t nIndex,
                                              std::int64_t nLast) const {
    const auto find = [&](std::int64_t nFirst, std::int64_t nEnd) {
        return curve.spData->FindMinMax(static_cast<std::uint32_t>(nFirst),
                                        static_cast<std::uint32_t>(nEnd));
    };
    const std::int64_t nEnd = std::min(nIndex + m_time.nColumnWidth, nLast);
    const RTMinMax values = find(nIndex, nEnd);
    Column column{values.m_nMin, values.m_nMax, 0};
    if (m_shown.nDisplay == 2) {
        // Each value of the column brings the one behind it, also when that begins the next column.
        const std::int64_t nLastOwn = nIndex + (nEnd - 1 - nIndex) / 2 * 2;
        const RTMinMax second = find(nIndex + 1, std::min(nLastOwn + 2, nLast));
        column.nSecondHigh = std::max<int>(second.m_nMax, 0);
    }
    return column;
}

/// The main line's value after the columns from nIndex on, which are out of sight. They are walked
/// from the last one back, only as far as the outcome still depends on them.
int CPlotPainter::FindLevelAfter(const PlotSnapshot::Curve& curve, std::int64_t nIndex,
                                 std::int64_t nLast, int nLevel) const {
    if (nIndex >= nLast) return nLevel;
    std::int64_t nAt = nIndex + (nLast - 1 - nIndex) / m_time.nColumnWidth * m_time.nColumnWidth;
    Column column = ReadColumn(curve, nAt, nLast);
    int nIfLow = column.nLow;  // the outcome if the line leaves the column at its low end
    int nIfHigh = column.nHigh;
    while (nIfLow != nIfHigh && nAt > nIndex) {
        nAt -= m_time.nColumnWidth;
        const Column before = ReadColumn(curve, nAt, nLast);
        const int nFromLow = before.nLow >= column.nHigh ? nIfLow : nIfHigh;
        const int nFromHigh = before.nHigh >= column.nHigh ? nIfLow : nIfHigh;
        nIfLow = nFromLow;
        nIfHigh = nFromHigh;
        column = before;
    }
    return nLevel >= column.nHigh ? nIfLow : nIfHigh;
}

/// Works the line out only when anything that it follows from has changed since the last paint.
const CurveLine& CPlotPainter::FindLine(const PlotSnapshot::Curve& curve, std::size_t nCurve,
                                        IndexRange range) {
    CurveLine& line = m_lines[nCurve];
    const CurveLine::Source source{range.nFirst,    range.nLast, m_shown.nDisplay, m_nLevel,
                                   m_layout.nWidth, m_time,      m_value};
    if (!line.IsOf(curve.spData, source)) {
        line.source.reset();
        TraceLine(curve, range, line);
        line.wpData = curve.spData;
        line.source = source;
    }
    m_nLevel = line.nLevelAfter;
    return line;
}

void CPlotPainter::TraceLine(const PlotSnapshot::Curve& curve, IndexRange range,
                             CurveLine& line) const {
    line.mainPoints.clear();
    line.columnEnds.clear();
    int nLevel = m_nLevel;
    for (std::int64_t i = range.nFirst; i < range.nLast; i += m_time.nColumnWidth) {
        const int x = m_time.XAt(i - range.nFirst);
        const Column column = ReadColumn(curve, i, range.nLast);
        const bool bStraddles = column.nLow < nLevel && column.nHigh > nLevel;
        if (bStraddles) line.mainPoints.push_back({x, m_value.YOf(column.nLow)});
        nLevel = PassColumn(nLevel, column.nLow, column.nHigh);
        line.mainPoints.push_back({x, m_value.YOf(nLevel)});
        if (m_shown.nDisplay == 2)
            line.columnEnds.push_back(
                {line.mainPoints.size(), {x, m_value.YOf(column.nSecondHigh)}});
        if (x >= m_layout.nWidth) {
            nLevel = FindLevelAfter(curve, i + m_time.nColumnWidth, range.nLast, nLevel);
            break;
        }
    }
    line.nLevelAfter = nLevel;
}

void CPlotPainter::DrawCurve(const PlotSnapshot::Curve& curve, std::size_t nCurve,
                             IndexRange range) {
    const CurveLine& line = FindLine(curve, nCurve, range);
    const std::int16_t* pValues = curve.spData->GetValues();
    const CPen mainPen(PenStyle::Solid, GetMainColour(nCurve));
    const CPoint mainStart{LEFT_MARGIN, m_value.YOf(pValues[range.nFirst])};
    if (m_shown.nDisplay == 2 && range.nFirst + 1 < range.nLast) {
        const CPen secondPen(PenStyle::Solid, ColourOf(m_colours.m_acrGraphLine2, nCurve));
        DrawPair(line, mainPen, mainStart, secondPen,
                 {LEFT_MARGIN, m_value.YOf(pValues[range.nFirst + 1])});
    } else {
        DrawMainLine(mainPen, mainStart, line.mainPoints);
    }
}

void CPlotPainter::DrawMainLine(const CPen& pen, CPoint start, std::span<const CPoint> points) {
    const CRgn curveArea({LEFT_MARGIN, m_layout.nTopMargin, m_layout.nWidth, m_value.nMinY + 1});
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
    const std::span<const CPoint> points(line.mainPoints);
    std::size_t nDrawn = 0;
    for (const CurveLine::ColumnEnd& end : line.columnEnds) {
        DrawMainLine(mainPen, nDrawn == 0 ? mainStart : points[nDrawn - 1],
                     points.subspan(nDrawn, end.nMainPoints - nDrawn));
        nDrawn = end.nMainPoints;

        const CPen* pPrevious = m_dc.SelectPen(&secondPen);
        m_dc.MoveTo(secondStart.x, secondStart.y);
        m_dc.LineTo(end.second.x, end.second.y);
        m_dc.SelectPen(pPrevious);
        secondStart = end.second;
    }
}

COLORREF CPlotPainter::GetMainColour(std::size_t nCurve) const {
    return ColourOf(m_shown.nDisplay == 1 ? m_colours.m_acrGraphLine2 : m_colours.m_acrGraphLine,
                    nCurve);
}
