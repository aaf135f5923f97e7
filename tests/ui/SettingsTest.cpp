#include <gtest/gtest.h>

#include "plot/RTGraphSettings.h"
#include "tests/support/Controls.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgSettings.h"

using enum CDlgSettings::Control;

TEST(Settings, StoreAutoZoomAndRangesAsWholeNumbersWithinTheirLimits) {
    RTGraphSettings graph;
    CDlgSettings dialog;
    dialog.m_pGraph = &graph;
    RunModal(dialog, [&] {
        for (const int bOn : {0, 1, 0}) {
            Operator::Tap(dialog, ID_AUTO_ZOOM);
            EXPECT_EQ(graph.m_bAutoZoom, bOn);
        }
        const auto enter = [&](int nButton, const wchar_t* pNumber) {
            Operator::Tap(dialog, nButton);
            EXPECT_TRUE(EnterOnPad(L"Current Value", pNumber));
        };
        enter(ID_RANGE_MIN, L"");  // the pad begins with what the button shows
        EXPECT_EQ(TextOf(dialog, ID_RANGE_MIN), L"-5000");
        enter(ID_RANGE_MAX, L"250.75");
        EXPECT_EQ(graph.m_nRangeMax, 250);
        EXPECT_EQ(TextOf(dialog, ID_RANGE_MAX), L"250.75");
        for (const wchar_t* pNumber : {L"-20000.5", L"70000.1"}) {
            enter(ID_RANGE_MIN, pNumber);
            EXPECT_TRUE(AwaitModal(L"Data Error"));
            EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), CBigMessageBox::ID_OK_CENTRE));
            EXPECT_EQ(graph.m_nRangeMin, -5000);
            EXPECT_EQ(TextOf(dialog, ID_RANGE_MIN), L"-5000");
        }
        for (const int nNumber : {-20000, 70000}) {  // the latter is above the upper end
            enter(ID_RANGE_MIN, std::to_wstring(nNumber).c_str());
            EXPECT_EQ(graph.m_nRangeMin, nNumber);
        }
        Operator::PressKey(Operator::Key::Escape);
    });
    EXPECT_EQ(graph.m_bAutoZoom, 0) << "every way of closing keeps what was set";
}
