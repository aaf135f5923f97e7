#include <gtest/gtest.h>

#include "Support.h"
#include "platform/windows/Controls.h"
#include "plot/RTGraphSettings.h"
#include "ui/DlgSettings.h"
#include "ui/LanguageTable.h"

namespace {

constexpr int RANGE_MIN = 1043, RANGE_MAX = 1044, RANGE_LABEL = 1045, AUTO_ZOOM = 1222;

struct Settings {
    Settings() { m_dialog.m_pGraph = &m_graph; }
    RTGraphSettings m_graph;
    CDlgSettings m_dialog;

    bool IsShownOn() {
        bool bChecked = false;
        Operator::Ask(
            [&] { bChecked = static_cast<CButton*>(m_dialog.GetControl(AUTO_ZOOM))->GetCheck(); });
        return bChecked;
    }
};

}  // namespace

TEST(Settings, TogglesAutoZoomInTheLanguage) {
    CLanguageTable table;
    for (const int nString : {155, 1511, 1516}) table.Set(nString, L"#" + std::to_wstring(nString));
    Settings settings;
    settings.m_dialog.m_pLangTable = &table;
    RunModal(settings.m_dialog, [&] {
        EXPECT_EQ(Operator::ModalTitle(), L"#1511");
        EXPECT_EQ(TextOf(settings.m_dialog, RANGE_LABEL), L"#1516");
        Operator::Tap(settings.m_dialog, RANGE_MIN);
        EXPECT_TRUE(AwaitModal(L"#155"));
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(TextOf(settings.m_dialog, RANGE_MIN), L"-5000");
        EXPECT_TRUE(settings.IsShownOn());
        Operator::Tap(settings.m_dialog, AUTO_ZOOM);
        EXPECT_EQ(settings.m_graph.m_bAutoZoom, 0);
        EXPECT_FALSE(settings.IsShownOn());
        Operator::Tap(settings.m_dialog, AUTO_ZOOM);
        EXPECT_EQ(settings.m_graph.m_bAutoZoom, 1);
        Operator::Tap(settings.m_dialog, AUTO_ZOOM);
        Operator::PressKey(Operator::Key::Escape);
    });
    EXPECT_EQ(settings.m_graph.m_bAutoZoom, 0) << "every way of closing keeps what was set";
}

TEST(Settings, StoresRangesAsWholeNumbersWithinTheirLimits) {
    Settings settings;
    RunModal(settings.m_dialog, [&] {
        const auto enter = [&](int nButton, const wchar_t* pNumber) {
            Operator::Tap(settings.m_dialog, nButton);
            EXPECT_TRUE(EnterOnPad(L"Current Value", pNumber));
        };
        EXPECT_EQ(TextOf(settings.m_dialog, RANGE_MIN), L"-5000");
        EXPECT_EQ(TextOf(settings.m_dialog, RANGE_MAX), L"5000");
        enter(RANGE_MAX, L"250.7");
        EXPECT_EQ(settings.m_graph.m_nRangeMax, 250);
        EXPECT_EQ(TextOf(settings.m_dialog, RANGE_MAX), L"250.7");
        for (const wchar_t* pNumber : {L"-20000.5", L"70000.1"}) {
            enter(RANGE_MIN, pNumber);
            EXPECT_TRUE(AwaitModal(L"Data Error"));
            EXPECT_EQ(Operator::ModalText(), L"Parameter must be within range: -20000 to 70000");
            EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), 3));
            EXPECT_EQ(TextOf(settings.m_dialog, RANGE_MIN), L"-5000");
            EXPECT_EQ(settings.m_graph.m_nRangeMin, -5000);
        }
        enter(RANGE_MIN, L"-20000");
        EXPECT_EQ(settings.m_graph.m_nRangeMin, -20000);
        enter(RANGE_MIN, L"70000");  // above the upper end
        EXPECT_EQ(settings.m_graph.m_nRangeMin, 70000);
    });
}
