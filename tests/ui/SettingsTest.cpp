#include <gtest/gtest.h>

#include "plot/RTGraphSettings.h"
#include "tests/support/Controls.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgSettings.h"

namespace {

using enum CDlgSettings::Control;

struct Settings {
    Settings() { m_dialog.m_pGraph = &m_graph; }
    RTGraphSettings m_graph;
    CDlgSettings m_dialog;
};

}  // namespace

TEST(Settings, TogglesAutoZoom) {
    Settings settings;
    RunModal(settings.m_dialog, [&] {
        Operator::Tap(settings.m_dialog, ID_AUTO_ZOOM);
        EXPECT_EQ(settings.m_graph.m_bAutoZoom, 0);
        Operator::Tap(settings.m_dialog, ID_AUTO_ZOOM);
        EXPECT_EQ(settings.m_graph.m_bAutoZoom, 1);
        Operator::Tap(settings.m_dialog, ID_AUTO_ZOOM);
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
        enter(ID_RANGE_MIN, L"");  // the pad begins with what the button shows
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MIN), L"-5000");
        enter(ID_RANGE_MAX, L"250.75");
        EXPECT_EQ(settings.m_graph.m_nRangeMax, 250);
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MAX), L"250.75");
        for (const wchar_t* pNumber : {L"-20000.5", L"70000.1"}) {
            enter(ID_RANGE_MIN, pNumber);
            EXPECT_TRUE(AwaitModal(L"Data Error"));
            EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), CBigMessageBox::ID_OK_CENTRE));
            EXPECT_EQ(settings.m_graph.m_nRangeMin, -5000);
        }
        enter(ID_RANGE_MIN, L"-20000");
        EXPECT_EQ(settings.m_graph.m_nRangeMin, -20000);
        enter(ID_RANGE_MIN, L"70000");  // above the upper end
        EXPECT_EQ(settings.m_graph.m_nRangeMin, 70000);
    });
}
