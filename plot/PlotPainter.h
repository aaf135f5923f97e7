// Draws one plot. RTPlot::Paint makes one painter for each paint.
#pragma once

#include <span>

#include "platform/drawing/Graphics.h"
#include "plot/PlotCache.h"
#include "plot/PlotScale.h"
#include "plot/PlotSnapshot.h"
#include "plot/RTPlot.h"
#include "plot/Truncate.h"

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

/// Draws a picture as a whole, or what of it has changed since the paint before. The time this
/// takes depends on the width of what is drawn and, when that is the whole, on the number of
/// curves, not on how many values the curves hold.
class CPlotPainter {
  public:
    /// @param cache of the paint before, if there was one; of this one when Paint has returned.
    ///        All four must outlive the painter.
    CPlotPainter(CDC& dc, const RTPlot& plot, const PlotSnapshot& shown, PlotCache& cache);

    const TimeAxis& GetTimeAxis() const { return m_time; }
    const ValueAxis& GetValueAxis() const { return m_value; }

    /// @return the part of the picture that was drawn
    CRect Paint();

  private:
    /// The value indices of a curve that are in view.
    struct IndexRange {
        std::int64_t m_nFirst = 0;
        std::int64_t m_nLast = 0;  ///< just behind
        bool IsEmpty() const { return m_nFirst >= m_nLast; }
    };

    CRect PaintAll();
    CRect PaintChange();
    ChangedSpan FindChange();
    void MakeGround();

    /// All but the newest curve and the marks.
    void DrawGround();
    /// The newest curve, the marks and the legend, from m_nFrom on.
    void DrawFront();

    void DrawInputBand();
    void DrawTimeAxis();
    void DrawValueGrid();
    void DrawMarks();
    void DrawLegend();
    void DrawVerticalLine(int x, int yFrom, PenStyle style, COLORREF color);
    void DrawTimeMarker(std::int64_t nIndex);
    PlotMarks GetMarks() const;

    bool IsInView(const PlotSnapshot::Curve& curve) const;
    IndexRange FindIndexRange(const PlotSnapshot::Curve& curve) const;
    ChangedSpan UpdateLine(CurveLine& line, const PlotSnapshot::Curve& curve, int nLevel) const;
    ChangedSpan UpdateTraces(const PlotSnapshot::Curve& curve);
    void DrawCurve(const CurveLine& line, const PlotSnapshot::Curve& curve, std::size_t nCurve);
    void DrawMainLine(const CPen& pen, CPoint start, std::span<const CPoint> points);
    void DrawPair(const CurveLine& line, const CPen& mainPen, CPoint mainStart,
                  const CPen& secondPen, CPoint secondStart);
    COLORREF GetMainColour(std::size_t nCurve) const;
    void DrawInputTraces();
    void DrawTraceRun(const TraceRun& run);

    CDC& m_dc;
    const RTPlot& m_plot;
    const RTPlotColours& m_colours;
    const PlotSnapshot& m_shown;
    const PlotScene& m_scene;
    const PlotLayout m_layout;
    const TimeAxis m_time;
    const ValueAxis m_value;
    PlotCache& m_cache;
    /// What lies left of the one x, and from the other one on, is there already.
    int m_nFrom = 0;
    int m_nEnd = FAR_PIXEL;
};

/// The colour of a curve by its place in the plot's list.
inline COLORREF ColourOf(const std::array<COLORREF, RTPlotColours::SLOT_COUNT>& slots,
                         std::size_t nCurve) {
    return nCurve < slots.size() ? slots[nCurve] : RTPlotColours::FURTHER_CURVES;
}
