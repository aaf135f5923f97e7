// Draws one plot. RTPlot::Paint makes one painter for each paint.
#pragma once

#include <span>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "plot/CurveLine.h"
#include "plot/PlotScale.h"
#include "plot/RTPlot.h"

/// Selects a pen for as long as it lives.
class CPenScope {
  public:
    CPenScope(CDC& dc, PenStyle style, COLORREF color)
        : m_dc(dc), m_pen(style, color), m_pPrevious(dc.SelectPen(&m_pen)) {}
    ~CPenScope() { m_dc.SelectPen(m_pPrevious); }
    CPenScope(const CPenScope&) = delete;
    CPenScope& operator=(const CPenScope&) = delete;

  private:
    CDC& m_dc;
    CPen m_pen;
    const CPen* m_pPrevious;
};

/// Each operation draws one part of the plot over what is there. The time all of them take depends
/// on the plot's width and the number of curves, not on how many values the curves hold.
class CPlotPainter {
  public:
    /// @param lines kept from a paint before, or none; those of this one when the curves are drawn.
    ///        All four must outlive the painter.
    CPlotPainter(CDC& dc, const RTPlot& plot, const PlotSnapshot& shown,
                 std::vector<CurveLine>& lines);

    const TimeAxis& GetTimeAxis() const { return m_time; }
    const ValueAxis& GetValueAxis() const { return m_value; }

    void DrawInputBand();
    void DrawTimeAxis();
    void DrawValueGrid();
    void DrawCurves();
    void DrawMarks();
    void DrawLegend();

  private:
    /// The value indices of a curve that are in view.
    struct IndexRange {
        std::int64_t m_nFirst = 0;
        std::int64_t m_nLast = 0;  ///< just behind
        bool IsEmpty() const { return m_nFirst >= m_nLast; }
    };
    struct Column {
        int m_nLow;
        int m_nHigh;
        int m_nSecondHigh;  ///< of the second quantity, and never below 0
    };

    IndexRange FindIndexRange(const PlotSnapshot::Curve& curve) const;
    Column ReadColumn(const PlotSnapshot::Curve& curve, std::int64_t nIndex,
                      std::int64_t nLast) const;
    int FindLevelAfter(const PlotSnapshot::Curve& curve, std::int64_t nIndex, std::int64_t nLast,
                       int nLevel) const;
    const CurveLine& FindLine(const PlotSnapshot::Curve& curve, std::size_t nCurve,
                              IndexRange range);
    void TraceLine(const PlotSnapshot::Curve& curve, IndexRange range, CurveLine& line) const;
    void DrawCurve(const PlotSnapshot::Curve& curve, std::size_t nCurve, IndexRange range);
    void DrawMainLine(const CPen& pen, CPoint start, std::span<const CPoint> points);
    void DrawPair(const CurveLine& line, const CPen& mainPen, CPoint mainStart,
                  const CPen& secondPen, CPoint secondStart);
    COLORREF GetMainColour(std::size_t nCurve) const;

    void DrawInputTraces(const RTPulseList& pulses, IndexRange range);
    void DrawVerticalLine(int x, int yFrom, PenStyle style, COLORREF color);
    void DrawTimeMarker(std::int64_t nIndex);

    CDC& m_dc;
    const RTPlot& m_plot;
    const RTPlotColours& m_colours;
    const PlotSnapshot& m_shown;
    const PlotLayout m_layout;
    const TimeAxis m_time;
    const ValueAxis m_value;

    /// The value that the main line has reached; it carries over from one curve to the next.
    int m_nLevel = 0;
    std::vector<CurveLine>& m_lines;
};

/// The colour of a curve by its place in the plot's list.
inline COLORREF ColourOf(const std::array<COLORREF, RTPlotColours::SLOT_COUNT>& slots,
                         std::size_t nCurve) {
    return nCurve < slots.size() ? slots[nCurve] : RTPlotColours::FURTHER_CURVES;
}
