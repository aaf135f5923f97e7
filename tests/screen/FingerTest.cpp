// What an operator does with a finger on the screen: zoom band, markers, trigger level, entries.
#include <gtest/gtest.h>

#include "platform/drawing/DisplayScale.h"
#include "tests/support/Panel.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarMainMenu.h"

namespace {

using Menu = CDlgBarMainMenu;

/// A screen with one idle capture of 98,400 values: its plot is 698 pixels wide, so 656 pixels
/// stand for the capture and one pixel for exactly 150 values.
class FingerTest : public ::testing::Test {
  protected:
    FingerTest() { m_panel.m_pSession->m_nHostValueRate = 32800; }

    RTPlot& Plot() { return m_panel.m_pSession->m_aPlots[0]; }

    void Capture() {
        m_panel.Tap(IDC_START);
        m_panel.m_queue.push(MakeSamples(0, {1000, 5, 2000, 5, -200, 5}));
        m_panel.m_queue.push(MakeIdleReport());
        m_panel.Settle();
        Operator::WaitUntil([this] { return Plot().m_dXScale > 0; }, 2000);
        ASSERT_DOUBLE_EQ(Plot().m_dXScale, GetDisplayScale() / 150);
    }

    void ExpectView(int nStart, int nEnd, bool bZoomed = true) {
        EXPECT_EQ(Plot().m_nViewStart, nStart);
        EXPECT_EQ(Plot().m_nViewEnd, nEnd);
        EXPECT_EQ(Plot().m_bZoomed, bZoomed);
    }
    TestPanel m_panel{1, 1};
};

}  // namespace

TEST_F(FingerTest, ZoomsToABandOfEitherQuantity) {
    m_panel.Run([&] {
        Capture();
        m_panel.TapPlot(340, 344);  // just below the plot
        ExpectView(0, 98400, false);
        m_panel.Drag(340, 640);
        ExpectView(45000, 90000);
        m_panel.Tap(IDC_ZOOM_ALL);
        ExpectView(0, 98400, false);
        ASSERT_TRUE(m_panel.Select(IDC_DISPLAY_LIST, L"Position"));
        m_panel.Drag(340, 640);
        ExpectView(45001, 90000);
    });
}

TEST_F(FingerTest, LeavesNoBandBehind) {
    m_panel.Run([&] {
        Capture();
        const CWnd& plot = *m_panel.m_pDialog->GetControl(IDC_PLOT_1);
        const CBitmap before = Operator::TakePicture(plot);
        /// Expects the band from one column up to, not including, another.
        const auto expectBand = [&](int xFrom, int xTo) {
            const CBitmap during = Operator::TakePicture(plot);
            const int xFirst = Scaled(xFrom), xEnd = Scaled(xTo), y = Scaled(60);
            for (const int x : {xFirst - 1, xFirst, xEnd - 1, xEnd})
                EXPECT_EQ(during.GetPixel(x, y) != before.GetPixel(x, y), xFirst <= x && x < xEnd)
                    << x;
        };
        Operator::Press(*m_panel.m_pDialog, m_panel.AtPlot(340, 100));
        Operator::MoveTo(*m_panel.m_pDialog, m_panel.AtPlot(500, 100));
        expectBand(340, 500);
        m_panel.m_queue.push(MakeSamples(0, {}));  // a packet repaints the plot below the finger
        m_panel.Settle();
        Operator::MoveTo(*m_panel.m_pDialog, m_panel.AtPlot(400, 100));
        expectBand(340, 400);
        Operator::Release(*m_panel.m_pDialog, m_panel.AtPlot(340, 350));  // below the plot
        EXPECT_EQ(Plot().m_bZoomDrag, 0);
        m_panel.Tap(IDC_ZOOM_ALL);
        EXPECT_TRUE(Operator::TakePicture(plot).EncodePng() == before.EncodePng());
    });
}

TEST_F(FingerTest, ClampsAndFormatsEntries) {
    m_panel.Run([&] {
        const auto expect = [&](int nEdit, const wchar_t* pEntry, const wchar_t* pShown) {
            m_panel.Tap(nEdit);
            EXPECT_TRUE(EnterOnPad(nEdit == IDC_TRIGGER ? L"Enter sample Trigger (0-99.9%)"
                                                        : L"Enter sample time (1-60 seconds)",
                                   pEntry));
            EXPECT_EQ(m_panel.TextOf(nEdit), pShown);
        };
        m_panel.Tap(IDC_SAMPLE_TIME);
        Operator::PressKey(Operator::Key::Enter);  // the pad begins blank, which it refuses
        EXPECT_NE(Operator::ModalWindow(), m_panel.m_pDialog.get());
        Operator::Type(L"33");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(m_panel.TextOf(IDC_SAMPLE_TIME), L"3");
        expect(IDC_SAMPLE_TIME, L"0.4", L"1");
        expect(IDC_SAMPLE_TIME, L"7.6", L"8");
        expect(IDC_SAMPLE_TIME, L"75", L"60");
        expect(IDC_TRIGGER, L"100", L"99.9");
        expect(IDC_TRIGGER, L"-5", L"0.0");
        expect(IDC_TRIGGER, L"12.34", L"12.3");

        m_panel.Select(IDC_DISPLAY_LIST, L"F/V vs P");
        m_panel.Tap(IDC_START);  // 60 s, 32800 values per second, 12.3 percent, both values
        EXPECT_EQ(m_panel.m_view.m_images.back().substr(3, 9),
                  std::string("\x02\x60\xEA\x00\x20\x80\x7B\x00\x02", 9));
    });
}

TEST_F(FingerTest, EscapeAndEnterCloseTheScreen) {
    m_panel.RunUntilClosed([&] { Operator::PressKey(Operator::Key::Escape); });
    EXPECT_FALSE(m_panel.m_pDialog->GetHandle());
    m_panel.RunUntilClosed([&] { Operator::PressKey(Operator::Key::Enter); });
    EXPECT_FALSE(m_panel.m_pDialog->GetHandle());
}

TEST_F(FingerTest, EscapeAndEnterEndAnOpenListAlone) {
    using Operator::Key;
    m_panel.Run([&] {
        for (const auto& [key, pShown] :
             {std::pair{Key::Escape, L"Force/Voltage"}, {Key::Enter, L"Position"}}) {
            m_panel.Tap(IDC_DISPLAY_LIST);
            Operator::PressKey(Key::Down);
            Operator::PressKey(key);
            EXPECT_EQ(m_panel.TextOf(IDC_DISPLAY_LIST), pShown);
            ASSERT_TRUE(m_panel.m_pDialog->GetHandle());
        }
        EXPECT_EQ(Plot().m_nDisplay, 1);
        EXPECT_TRUE(m_panel.Tap(IDC_SETTINGS)) << "the list is closed";
        Operator::PressKey(Key::Escape);
    });
}

TEST_F(FingerTest, EveryOtherButtonAndMessage) {
    m_panel.Run([&] {
        m_panel.TapBar(Menu::ID_PASS_OUTPUT);
        ASSERT_EQ(m_panel.m_view.m_images.size(), 1u);
        EXPECT_EQ(m_panel.m_view.m_images[0].substr(0, 5), std::string("\x27\x01\x29\x03\x00", 5));
        EXPECT_FALSE(m_panel.TapBar(Menu::ID_TOOLS)) << "it is hidden";
        m_panel.TapBar(Menu::ID_EXPORT_CSV);  // nothing to export: no dialog
        EXPECT_EQ(Operator::ModalWindow(), m_panel.m_pDialog.get());

        m_panel.m_pDialog->PostMessage(WM_RT_BARCOMMAND, 999);
        m_panel.m_pDialog->PostMessage(WM_RT_SWITCHBAR, 999);
        Operator::RightClick(*m_panel.m_pDialog, m_panel.AtPlot(100, 100));
        m_panel.TapPlot(100);  // a plot without curves
        EXPECT_EQ(Plot().m_bZoomDrag, 0);
        EXPECT_EQ(Plot().m_nArmedAction, PLOTACT_NONE);
    });
}
