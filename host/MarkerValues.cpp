#include "host/MarkerValues.h"

#include "plot/RTPlot.h"

namespace {

constexpr std::int32_t UNSET = -1;

std::shared_ptr<RTCurveData> CopyNewestCurve(const RTPlot& plot) {
    const auto lock = plot.LockSession();
    if (!plot.m_spCurves) return nullptr;
    const RTCurveList& curves = plot.m_spCurves->m_lstCurves[plot.m_nChannel];
    return curves.empty() ? nullptr : curves.back();
}

}  // namespace

std::vector<MarkerValues> ReadMarkerValues(const RTPlot& plot, bool bPairs) {
    if (plot.m_nMarkerA == UNSET && plot.m_nMarkerB == UNSET) return {};
    const auto spCurve = CopyNewestCurve(plot);
    const std::uint32_t nCount = spCurve ? spCurve->GetCount() : 0;
    const std::uint32_t nQuantities = bPairs ? 2 : 1;

    std::vector<MarkerValues> rows(nQuantities);
    for (std::uint32_t k = 0; k < nQuantities; ++k) {
        const auto read = [&](std::int32_t nMarker) -> std::optional<std::int32_t> {
            if (nMarker == UNSET) return std::nullopt;
            const auto nMarked = static_cast<std::uint32_t>(nMarker);
            const std::uint32_t nIndex = nMarked - nMarked % nQuantities + k;
            if (nIndex >= nCount) return std::nullopt;
            return spCurve->GetValues()[nIndex];
        };
        rows[k] = {read(plot.m_nMarkerA), read(plot.m_nMarkerB)};
    }
    return rows;
}
