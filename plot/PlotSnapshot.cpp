#include "plot/PlotSnapshot.h"

#include <algorithm>

#include "plot/RTPlot.h"

namespace {

/// Sums up what a scene says of its curves: a few numbers of each.
void IncludeCurves(PlotScene& scene, const RTCurveList& lstCurves) {
    const auto includeExtremes = [&scene](std::int16_t nMin, std::int16_t nMax) {
        scene.m_extremes.m_nMin = std::min(scene.m_extremes.m_nMin, nMin);
        scene.m_extremes.m_nMax = std::max(scene.m_extremes.m_nMax, nMax);
    };
    for (const auto& spCurve : lstCurves) {
        if (!spCurve) continue;
        if (&spCurve != &lstCurves.back()) {
            scene.m_nOlderValues += spCurve->GetCount();
            scene.m_nOlderPulses += spCurve->GetPulses().GetCount();
        }
        if (scene.m_graph.m_bAutoZoom == 0) continue;
        const RTExtremes extremes = spCurve->GetExtremes();
        if (scene.m_nDisplay != 1) includeExtremes(extremes.m_nMinEven, extremes.m_nMaxEven);
        if (scene.m_nDisplay != 0) includeExtremes(extremes.m_nMinOdd, extremes.m_nMaxOdd);
    }
}

PlotSnapshot::Curve TakeCurve(const std::shared_ptr<RTCurveData>& spCurve) {
    return {spCurve, spCurve ? spCurve->GetCount() : 0};
}

}  // namespace

PlotSnapshot PlotSnapshot::Take(const RTPlot& plot, const PlotScene* pKnown) {
    PlotSnapshot shown;
    PlotScene& scene = shown.m_scene;
    scene.m_nWidth = plot.m_nWidth;
    scene.m_nHeight = plot.m_nHeight;
    scene.m_nDisplay = plot.m_nDisplay;
    scene.m_nMode = plot.m_nMode;
    scene.m_nChannel = plot.m_nChannel;
    scene.m_colours = *plot.m_pColours;

    const auto lock = plot.LockSession();
    scene.m_nViewStart = plot.m_nViewStart;
    scene.m_nViewEnd = plot.m_nViewEnd;
    scene.m_bZoomed = plot.m_bZoomed != 0;
    scene.m_nSpanValues = plot.m_nSpanValues;
    if (plot.m_pGraph) scene.m_graph = *plot.m_pGraph;
    if (!plot.m_spCurves) return shown;
    scene.m_set = {plot.m_spCurves};
    const RTCurveList& lstCurves = plot.m_spCurves->m_lstCurves[plot.m_nChannel];
    scene.m_nCurves = lstCurves.size();
    if (lstCurves.empty()) return shown;
    scene.m_newest = {lstCurves.back()};
    IncludeCurves(scene, lstCurves);

    shown.m_newest = TakeCurve(lstCurves.back());
    if (pKnown && *pKnown == scene) return shown;
    shown.m_lstOlder.reserve(lstCurves.size() - 1);
    for (std::size_t k = 0; k + 1 < lstCurves.size(); ++k)
        shown.m_lstOlder.push_back(TakeCurve(lstCurves[k]));
    return shown;
}
