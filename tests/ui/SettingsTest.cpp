#include <gtest/gtest.h>

#include "plot/RTGraphSettings.h"
#include "tests/support/Controls.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgSettings.h"
#include "ui/LanguageTable.h"

namespace {

using enum CDlgSettings::Control;

struct Settings {
    Settings() { m_dialog.m_pGraph = &m_graph; }
    RTGraphSettings m_graph;
    CDlgSettings m_dialog;

    /// Whether there is a picture in the middle of the button.
    bool IsShownOn() {
        const CBitmap face = Operator::TakePicture(*m_dialog.GetControl(ID_AUTO_ZOOM));
        const auto [cx, cy] = face.GetSize();
        bool bPicture = false;
        for (int x = cx / 4; x < cx * 3 / 4; ++x)
            bPicture = bPicture || face.GetPixel(x, cy / 2) != face.GetPixel(cx / 4 - 1, cy / 2);
        return bPicture;
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
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_LABEL), L"#1516");
        Operator::Tap(settings.m_dialog, ID_RANGE_MIN);
        EXPECT_TRUE(AwaitModal(L"#155"));
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MIN), L"-5000");
        EXPECT_TRUE(settings.IsShownOn());
        Operator::Tap(settings.m_dialog, ID_AUTO_ZOOM);
        EXPECT_EQ(settings.m_graph.m_bAutoZoom, 0);
        EXPECT_FALSE(settings.IsShownOn());
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
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MIN), L"-5000");
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MAX), L"5000");
        enter(ID_RANGE_MAX, L"250.7");
        EXPECT_EQ(settings.m_graph.m_nRangeMax, 250);
        EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MAX), L"250.7");
        for (const wchar_t* pNumber : {L"-20000.5", L"70000.1"}) {
            enter(ID_RANGE_MIN, pNumber);
            EXPECT_TRUE(AwaitModal(L"Data Error"));
            EXPECT_EQ(Operator::ModalText(), L"Parameter must be within range: -20000 to 70000");
            EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), CBigMessageBox::ID_OK_CENTRE));
            EXPECT_EQ(TextOf(settings.m_dialog, ID_RANGE_MIN), L"-5000");
            EXPECT_EQ(settings.m_graph.m_nRangeMin, -5000);
        }
        enter(ID_RANGE_MIN, L"-20000");
        EXPECT_EQ(settings.m_graph.m_nRangeMin, -20000);
        enter(ID_RANGE_MIN, L"70000");  // above the upper end
        EXPECT_EQ(settings.m_graph.m_nRangeMin, 70000);
    });
}
