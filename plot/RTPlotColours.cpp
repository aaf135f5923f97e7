#include "plot/RTPlotColours.h"

#include <string>

#include "platform/windows/Application.h"

namespace {

constexpr COLORREF YELLOW = RGB(255, 255, 0);

/// The slots without a settings key hold colours that can be told from the others on grey.
constexpr std::array<COLORREF, RTPlotColours::SLOT_COUNT> GRAPH_LINES{
    RGB(0, 0, 255),     RGB(0, 100, 0),   RGB(0, 128, 128), RGB(139, 0, 139), RGB(139, 69, 19),
    RGB(112, 128, 144), RGB(128, 0, 0),   RGB(255, 69, 0),  RGB(128, 128, 0), RGB(46, 139, 87),
    RGB(120, 120, 0),   RGB(0, 120, 0),   RGB(120, 0, 0),   RGB(0, 0, 120),   RGB(199, 21, 133),
    RGB(75, 0, 130),    RGB(0, 105, 180), RGB(184, 110, 0), RGB(64, 64, 64),  RGB(90, 160, 0),
};
constexpr std::array<COLORREF, RTPlotColours::SLOT_COUNT> GRAPH_LINES_2{
    RGB(100, 149, 237), RGB(0, 255, 0),     RGB(0, 255, 255),   RGB(186, 85, 211),
    RGB(244, 164, 96),  RGB(176, 196, 222), RGB(220, 20, 60),   RGB(255, 140, 0),
    RGB(240, 230, 140), RGB(102, 205, 170), RGB(200, 200, 40),  RGB(60, 190, 60),
    RGB(210, 90, 90),   RGB(80, 80, 220),   RGB(255, 105, 180), RGB(138, 43, 226),
    RGB(30, 160, 255),  RGB(255, 195, 60),  RGB(128, 128, 128), RGB(160, 235, 40),
};

COLORREF ReadColour(const std::wstring& strKey, COLORREF crDefault) {
    CApplication* pApp = GetApp();
    if (!pApp) return crDefault;
    return static_cast<COLORREF>(
        pApp->GetProfileInt(L"RealTimeMonitor\\Colours", strKey, static_cast<int>(crDefault)));
}

}  // namespace

void RTPlotColours::Load() {
    m_crTimeMarker = ReadColour(L"TimeMarkerColour", RGB(0, 0, 0));
    m_crToolPulse = ReadColour(L"ToolPulseColour", YELLOW);
    m_crStart = ReadColour(L"StartColour", YELLOW);
    m_crEnd = ReadColour(L"EndColour", YELLOW);
    m_crTrigger = ReadColour(L"TriggerColour", YELLOW);
    m_crBackground = ReadColour(L"BackgroundColour", RGB(192, 192, 192));
    m_crToolSyncPulse = ReadColour(L"ToolSyncPulseColour", YELLOW);
    m_crHomePulseCB = ReadColour(L"HomePulseCBColour", YELLOW);
    m_crText = ReadColour(L"Text", RGB(0, 0, 0));
    m_crGridLines = ReadColour(L"CurveGridLines", YELLOW);

    m_acrGraphLine = GRAPH_LINES;
    m_acrGraphLine2 = GRAPH_LINES_2;
    for (std::size_t n = 0; n < STORED_SLOTS; ++n) {
        const std::wstring strSlot = std::to_wstring(n);
        m_acrGraphLine[n] = ReadColour(L"GraphLineColour" + strSlot, GRAPH_LINES[n]);
        m_acrGraphLine2[n] = ReadColour(L"GraphLine2Colour" + strSlot, GRAPH_LINES_2[n]);
    }
}
