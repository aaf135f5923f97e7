#include "plot/RTPlot.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>

#include "platform/windows/Application.h"

namespace {

constexpr const wchar_t* SNAP_KEY = L"SnapToTimeMarkers";
constexpr const wchar_t* ALL_PULSES_KEY = L"ShowAllCurvePulses";

/// Sections of one product stand under its prefix; the colours are shared and carry none.
std::wstring FlagSection() {
    std::wstring strSection = L"KV3090";
    if (!strSection.empty()) strSection += L'\\';
    return strSection + L"RealTimeMonitor";
}

}  // namespace

RTPlot::RTPlot() : m_pColours(std::make_unique<RTPlotColours>()) {
    m_pColours->Load();
    if (CApplication* pApp = GetApp()) {
        m_bSnapToTimeMarkers = pApp->GetProfileInt(FlagSection(), SNAP_KEY, 0);
        m_bShowAllCurvePulses = pApp->GetProfileInt(FlagSection(), ALL_PULSES_KEY, 0) != 0;
    }
}

RTPlot::~RTPlot() {
    // A store that cannot be written keeps what it held; there is nobody left to tell.
    try {
        if (CApplication* pApp = GetApp()) {
            pApp->WriteProfileInt(FlagSection(), SNAP_KEY, m_bSnapToTimeMarkers);
            pApp->WriteProfileInt(FlagSection(), ALL_PULSES_KEY, m_bShowAllCurvePulses);
        }
    } catch (const std::bad_alloc&) {
        // As above, without memory.
    }
}

void RTPlot::ZoomAll() {
    m_bZoomed = 0;
    const auto spFirst = m_spCurves ? m_spCurves->FirstCurve(m_nChannel) : nullptr;
    if (!spFirst) return;
    constexpr std::uint32_t LAST_INDEX = std::numeric_limits<std::int32_t>::max();
    m_nViewStart = 0;
    m_nViewEnd = static_cast<std::int32_t>(std::min(spFirst->GetCapacity(), LAST_INDEX));
}
