#include "evaluation/XyObjects.h"

#include "platform/system/Text.h"

namespace {

void IncludeEnds(const GridRange& range, AxisRange& axis) {
    for (const auto& end : {range.m_low, range.m_high})
        if (end) axis.Include(static_cast<double>(*end) / GRID_PER_VALUE);
}

/// Both bounds as they are applied, the tolerance outside of them; a bound that is absent is empty.
std::array<std::vector<GridPoint>, 2> FindBounds(const EnvelopeLimit& envelope) {
    std::array bounds{envelope.m_lower, envelope.m_upper};
    for (GridPoint& corner : bounds[0]) corner.m_nForce -= envelope.m_nTolerance;
    for (GridPoint& corner : bounds[1]) corner.m_nForce += envelope.m_nTolerance;
    return bounds;
}

class CObjectDrawing {
  public:
    CObjectDrawing(CDC& dc, const XyPlot& plot, const CXyPen& pen, COLORREF color,
                   const std::string& strName)
        : m_dc(dc), m_plot(plot), m_pen(pen), m_color(color), m_strName(FromUtf8(strName)) {}

    void operator()(const WindowLimit& window) const {
        const CRect rect = FindRect(window.m_area);
        m_pen.Frame(rect);
        for (const Side side : {Side::Left, Side::Right, Side::Bottom, Side::Top}) {
            if (window.m_entry.Has(side)) DrawArrow(rect, side, true);
            if (window.m_exit.Has(side)) DrawArrow(rect, side, false);
        }
        DrawName(rect.TopLeft());
    }
    void operator()(const BlockLimit& block) const {
        const CRect rect = FindRect(block.m_area);
        {
            const CXyPen thin(m_dc, m_color, 1);
            thin.Hatch(rect, std::max(m_plot.m_nText / 2, 2));
        }
        m_pen.Frame(rect);
        DrawName(rect.TopLeft(), true);
    }
    void operator()(const LineLimit& line) const {
        const CPoint from = m_plot.At({line.m_positions.Low(), line.m_nForce});
        const CPoint to = m_plot.At({line.m_positions.High(), line.m_nForce});
        m_pen.Line(from, to);
        const int nEnd = m_plot.m_nText / 3;
        m_pen.Line({from.x, from.y - nEnd}, {from.x, from.y + nEnd});
        m_pen.Line({to.x, to.y - nEnd}, {to.x, to.y + nEnd});
        DrawName({from.x, from.y - m_plot.m_nText * 3 / 2});
    }
    void operator()(const EnvelopeLimit& envelope) const {
        const auto bounds = FindBounds(envelope);
        for (const auto& bound : bounds) {
            std::vector<CPoint> points;
            for (const GridPoint& corner : bound) points.push_back(m_plot.At(corner));
            m_pen.Path(points);
        }
        const auto& named = bounds[1].empty() ? bounds[0] : bounds[1];
        const CPoint corner = m_plot.At(named.front());
        DrawName({corner.x, corner.y - m_plot.m_nText * 3 / 2});
    }
    void operator()(const FeatureLimit&) const {}

  private:
    CRect FindRect(const Area& area) const {
        const auto place = [](const CXyAxis& axis, const std::optional<Grid>& end, int nOpen) {
            return end ? axis.AtGrid(*end) : nOpen;
        };
        return {place(m_plot.m_positions, area.m_x.m_low, m_plot.m_area.left),
                place(m_plot.m_forces, area.m_y.m_high, m_plot.m_area.top),
                place(m_plot.m_positions, area.m_x.m_high, m_plot.m_area.right - 1),
                place(m_plot.m_forces, area.m_y.m_low, m_plot.m_area.bottom - 1)};
    }

    /// Across the middle of a side, so that a way in is told from a way out by its point.
    void DrawArrow(const CRect& rect, Side side, bool bIn) const {
        const int nArm = m_plot.m_nText / 2;
        const int nSign = side == Side::Right || side == Side::Bottom ? 1 : -1;
        const bool bUpright = side == Side::Bottom || side == Side::Top;
        CPoint center{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
        if (side == Side::Left) center.x = rect.left;
        if (side == Side::Right) center.x = rect.right;
        if (side == Side::Top) center.y = rect.top;
        if (side == Side::Bottom) center.y = rect.bottom;
        const int nOut = nSign * nArm;
        const CPoint inside{center.x - (bUpright ? 0 : nOut), center.y - (bUpright ? nOut : 0)};
        const CPoint outside{center.x + (bUpright ? 0 : nOut), center.y + (bUpright ? nOut : 0)};
        m_pen.Arrow(bIn ? outside : inside, bIn ? inside : outside, m_plot.m_nText / 4);
    }

    /// @param bClear on ground of its own, where lines would cross it out
    void DrawName(CPoint corner, bool bClear = false) const {
        // Within the plot, by what letters are wide.
        const CRect& area = m_plot.m_area;
        const int nText = m_plot.m_nText;
        const int nWidth = static_cast<int>(m_strName.size()) * nText * 6 / 10;
        const int nGap = nText / 3;
        const int x =
            std::max(std::min(corner.x + nGap, area.right - nWidth - nGap), area.left + nGap);
        const int y =
            std::max(std::min(corner.y + nGap / 2, area.bottom - nText * 3 / 2), area.top);
        if (bClear)
            m_dc.FillSolidRect({x, y + 1, std::min(x + nWidth, area.right - 1), y + nText * 5 / 4},
                               XY_GROUND_COLOR);
        m_dc.SetTextColor(m_color);
        m_dc.SetTextAlign(TextAlign::Left);
        m_dc.TextOut(x, y, m_strName);
    }

    CDC& m_dc;
    const XyPlot& m_plot;
    const CXyPen& m_pen;
    COLORREF m_color;
    std::wstring m_strName;
};

}  // namespace

void IncludeObject(const LimitObject& object, AxisRange& positions, AxisRange& forces) {
    const auto includeArea = [&](const Area& area) {
        IncludeEnds(area.m_x, positions);
        IncludeEnds(area.m_y, forces);
    };
    if (const auto* pWindow = std::get_if<WindowLimit>(&object.m_limit)) {
        includeArea(pWindow->m_area);
    } else if (const auto* pBlock = std::get_if<BlockLimit>(&object.m_limit)) {
        includeArea(pBlock->m_area);
    } else if (const auto* pLine = std::get_if<LineLimit>(&object.m_limit)) {
        includeArea({pLine->m_positions, {pLine->m_nForce, pLine->m_nForce}});
    } else if (const auto* pEnvelope = std::get_if<EnvelopeLimit>(&object.m_limit)) {
        for (const auto& bound : FindBounds(*pEnvelope))
            for (const GridPoint& corner : bound)
                includeArea(
                    {{corner.m_nPosition, corner.m_nPosition}, {corner.m_nForce, corner.m_nForce}});
    }
}

void DrawObject(CDC& dc, const XyPlot& plot, const LimitObject& object, COLORREF color,
                bool bThick) {
    const CXyPen pen(dc, color, plot.GetWidth(bThick));
    std::visit(CObjectDrawing(dc, plot, pen, color, object.m_strName), object.m_limit);
}
