// The paint as a whole: how much of the picture is to be drawn, and in what order.
#include <algorithm>

#include "platform/drawing/DisplayScale.h"
#include "plot/PlotPainter.h"

namespace {

/// Lines of so many curves are kept from paint to paint: more than can be told apart. Those of
/// further curves are worked out each time, in one place.
constexpr std::size_t MAX_KEPT_LINES = 1000;

}  // namespace

CRect RTPlot::Paint(CDC& dc, PlotCache* pCache) {
    PlotCache none;
    PlotCache& cache = pCache ? *pCache : none;
    const bool bKnown = cache.m_scene && cache.m_bHasGround;
    const PlotSnapshot shown = PlotSnapshot::Take(*this, bKnown ? &*cache.m_scene : nullptr);
    CPlotPainter painter(dc, *this, shown, cache);
    if (shown.m_scene.m_nCurves > 0) {
        m_nLeftMargin = painter.GetTimeAxis().m_nLeft;
        m_dXScale = painter.GetTimeAxis().m_dScale;
        m_dYScale = painter.GetValueAxis().m_dScale;
        m_nZeroY = painter.GetValueAxis().m_nZeroY;
        m_nValueSpan = painter.GetValueAxis().m_nSpan;
    }
    return painter.Paint();
}

CPlotPainter::CPlotPainter(CDC& dc, const RTPlot& plot, const PlotSnapshot& shown, PlotCache& cache)
    : m_dc(dc), m_plot(plot), m_colours(shown.m_scene.m_colours), m_shown(shown),
      m_scene(shown.m_scene), m_layout(m_scene.m_nWidth, m_scene.m_nHeight),
      m_time(m_scene, m_layout), m_value(m_scene, m_layout), m_cache(cache) {}

CRect CPlotPainter::Paint() {
    const bool bSameScene = m_cache.m_scene == m_scene;
    // Until the picture is there again.
    m_cache.m_scene.reset();
    const CRect drawn = bSameScene ? PaintChange() : PaintAll();
    m_cache.m_marks = GetMarks();
    m_cache.m_scene = m_scene;
    return drawn;
}

CRect CPlotPainter::PaintAll() {
    m_cache.m_bHasGround = false;
    DrawGround();
    FindChange();
    DrawFront();
    return {0, 0, m_layout.m_nWidth, m_layout.m_nHeight};
}

CRect CPlotPainter::PaintChange() {
    ChangedSpan span = FindChange();
    if (m_cache.m_marks != GetMarks()) span = ChangedSpan::Everything();
    const CRect changed{std::max(span.m_nFrom, 0), 0, std::min(span.m_nEnd, m_layout.m_nWidth),
                        m_layout.m_nHeight};
    if (changed.IsEmpty()) return {};

    if (!m_cache.m_bHasGround) MakeGround();
    CDC ground;
    ground.CreateCompatibleDC(&m_dc);
    ground.SelectBitmap(&m_cache.m_ground);
    m_dc.LimitTo(&changed);
    m_dc.CopyRect(0, 0, m_layout.m_nWidth, m_layout.m_nHeight, &ground, 0, 0);
    // A line reaches to the right of its points by what it is wider than one pixel.
    m_nFrom = changed.left - (ScaledThickness(1) - 1);
    m_nEnd = changed.right;
    DrawFront();
    m_dc.LimitTo(nullptr);
    return changed;
}

/// Brings the newest curve's line and traces up to date.
ChangedSpan CPlotPainter::FindChange() {
    ChangedSpan changed;
    const PlotSnapshot::Curve& newest = m_shown.m_newest;
    if (!IsInView(newest)) return changed;
    changed = UpdateLine(m_cache.m_newestLine, newest, m_cache.m_nOlderLevel);
    if (!m_cache.m_bOlderValues) changed.Include(UpdateTraces(newest));
    changed.m_nEnd += ScaledThickness(1) - 1;
    return changed;
}

void CPlotPainter::MakeGround() {
    const CSize size{m_layout.m_nWidth, m_layout.m_nHeight};
    if (m_cache.m_ground.GetSize() != size) m_cache.m_ground.CreateBitmap(size.cx, size.cy);
    CDC ground;
    ground.CreateCompatibleDC(&m_dc);
    ground.SelectBitmap(&m_cache.m_ground);
    CPlotPainter(ground, m_plot, m_shown, m_cache).DrawGround();
    m_cache.m_bHasGround = true;
}

void CPlotPainter::DrawGround() {
    const CBrush background(m_colours.m_crBackground);
    m_dc.Rectangle({0, 0, m_layout.m_nWidth, m_layout.m_nHeight}, &background);
    m_cache.m_nOlderLevel = 0;
    m_cache.m_bOlderValues = false;
    if (m_scene.m_nCurves == 0) return;
    m_dc.SetBackgroundMode(BackgroundMode::Transparent);
    DrawInputBand();
    DrawTimeAxis();
    DrawValueGrid();

    m_cache.m_lines.resize(std::min(m_shown.m_lstOlder.size(), MAX_KEPT_LINES + 1));
    for (std::size_t k = 0; k < m_shown.m_lstOlder.size(); ++k) {
        const PlotSnapshot::Curve& curve = m_shown.m_lstOlder[k];
        const bool bFirst = !m_cache.m_bOlderValues;
        m_cache.m_bOlderValues |= curve.HasValues();
        if (!IsInView(curve)) continue;
        CurveLine& line = m_cache.m_lines[std::min(k, MAX_KEPT_LINES)];
        UpdateLine(line, curve, m_cache.m_nOlderLevel);
        m_cache.m_nOlderLevel = line.GetLevel();
        DrawCurve(line, curve, k);
        if (!bFirst) continue;
        UpdateTraces(curve);
        DrawInputTraces();
    }
}

void CPlotPainter::DrawFront() {
    if (m_scene.m_nCurves == 0) return;
    m_dc.SetBackgroundMode(BackgroundMode::Transparent);
    if (IsInView(m_shown.m_newest)) {
        DrawCurve(m_cache.m_newestLine, m_shown.m_newest, m_scene.m_nCurves - 1);
        if (!m_cache.m_bOlderValues) DrawInputTraces();
    }
    DrawMarks();
    DrawLegend();
}
