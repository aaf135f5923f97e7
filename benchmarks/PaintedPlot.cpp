#include "PaintedPlot.h"

std::shared_ptr<CRTCurves> MakeFullCurves(unsigned nCurves, unsigned nValues) {
    constexpr unsigned VALUES_PER_BLOCK = 800;  // 20 ms, as a link delivers them
    constexpr unsigned LEVEL_CHANGES = 12;
    auto spCurves = std::make_shared<CRTCurves>();
    for (unsigned nCurve = 0; nCurve < nCurves; ++nCurve) {
        RTCurveData& curve = *spCurves->AddCurve(0, nValues);
        const auto free = curve.GetFreeValues();
        FillStrokes(free, nCurve);
        for (unsigned i = VALUES_PER_BLOCK; i <= nValues; i += VALUES_PER_BLOCK) {
            curve.PublishCount(i);
            curve.AddPulse(static_cast<std::int32_t>(i),
                           static_cast<std::uint8_t>(i / (nValues / LEVEL_CHANGES + 1)));
        }
        curve.PublishCount(nValues);
        curve.RecomputeExtremes();
    }
    return spCurves;
}

PaintedPlot::PaintedPlot(std::shared_ptr<CRTCurves> spCurves, unsigned nSpanValues, int nWidth)
    : m_picture(nWidth) {
    m_graph.m_nGraphRate = PLOT_RATE;
    m_plot.m_spCurves = std::move(spCurves);
    m_plot.m_pGraph = &m_graph;
    m_plot.m_nSpanValues = static_cast<std::int32_t>(nSpanValues);
    m_plot.m_nWidth = nWidth;
    m_plot.m_nHeight = m_plot.m_nBottom = PICTURE_HEIGHT;
    m_plot.ZoomAll();
}
