#include <gtest/gtest.h>

#include "Support.h"
#include "platform/Controls.h"
#include "plot/RTGraphSettings.h"
#include "ui/DlgSettings.h"
#include "ui/LanguageTable.h"

namespace {

constexpr int RANGE_MIN = 1043, RANGE_MAX = 1044, RANGE_LABEL = 1045, AUTO_ZOOM = 1222;

struct Settings {
    Settings() { dialog.m_pGraph = &graph; }
    RTGraphSettings graph;
    CDlgSettings dialog;

    bool IsShownOn() {
        bool bChecked = false;
        Operator::Ask(
            [&] { bChecked = static_cast<CButton*>(dialog.GetDlgItem(AUTO_ZOOM))->GetCheck(); });
        return bChecked;
    }
    /// The colour in the middle of the auto zoom button's picture.
    COLORREF PictureColor() {
        CBitmap picture;
        Operator::Ask([&] { picture = Operator::TakePicture(*dialog.GetDlgItem(AUTO_ZOOM)); });
        return picture.GetPixel(15, 20);
    }
};

}  // namespace

TEST(Settings, ShowsTheRecord) {
    Settings settings;
    RunModal(settings.dialog, [&] {
        EXPECT_EQ(TextOf(settings.dialog, RANGE_MIN), L"-5000");
        EXPECT_EQ(TextOf(settings.dialog, RANGE_MAX), L"5000");
        EXPECT_TRUE(settings.IsShownOn());
        EXPECT_EQ(Operator::ModalTitle(), L"Settings");
        EXPECT_EQ(ColorAt(settings.dialog, {3, 3}), RGB(211, 228, 250));
    });
}

TEST(Settings, TogglesAutoZoom) {
    Settings settings;
    RunModal(settings.dialog, [&] {
        const COLORREF on = settings.PictureColor();
        Operator::Tap(settings.dialog, AUTO_ZOOM);
        EXPECT_EQ(settings.graph.m_bAutoZoom, 0);
        EXPECT_FALSE(settings.IsShownOn());
        EXPECT_NE(settings.PictureColor(), on);
        Operator::Tap(settings.dialog, AUTO_ZOOM);
        EXPECT_EQ(settings.graph.m_bAutoZoom, 1);
        EXPECT_TRUE(settings.IsShownOn());
        Operator::Tap(settings.dialog, AUTO_ZOOM);
        Operator::PressKey(Operator::Key::Escape);
    });
    EXPECT_EQ(settings.graph.m_bAutoZoom, 0);
}

TEST(Settings, StoresRangesAsWholeNumbers) {
    Settings settings;
    EXPECT_EQ(RunModal(settings.dialog,
                       [&] {
                           Operator::Tap(settings.dialog, RANGE_MAX);
                           EXPECT_TRUE(EnterOnPad(L"Current Value", L"250.7"));
                           EXPECT_EQ(settings.graph.m_nRangeMax, 250);
                           EXPECT_EQ(TextOf(settings.dialog, RANGE_MAX), L"250.7");

                           Operator::Tap(settings.dialog, RANGE_MIN);
                           EXPECT_TRUE(EnterOnPad(L"Current Value", L"70000"));
                           EXPECT_EQ(settings.graph.m_nRangeMin, 70000);

                           Operator::Tap(settings.dialog, RANGE_MAX);
                           EXPECT_TRUE(AwaitModal(L"Current Value"));
                           Operator::Type(L"1");
                           Operator::PressKey(Operator::Key::Escape);
                           EXPECT_EQ(TextOf(settings.dialog, RANGE_MAX), L"250.7");
                           Operator::Tap(settings.dialog, IDOK);
                       }),
              IDOK);
    EXPECT_EQ(settings.graph.m_nRangeMin, 70000);
    EXPECT_EQ(settings.graph.m_nRangeMax, 250);
}

TEST(Settings, RefusesNumbersOutOfRange) {
    Settings settings;
    RunModal(settings.dialog, [&] {
        for (const wchar_t* pNumber : {L"-20000.5", L"70000.1"}) {
            Operator::Tap(settings.dialog, RANGE_MIN);
            EXPECT_TRUE(EnterOnPad(L"Current Value", pNumber));
            EXPECT_TRUE(AwaitModal(L"Data Error"));
            EXPECT_EQ(Operator::ModalText(), L"Parameter must be within range: -20000 to 70000");
            EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), 3));
            EXPECT_EQ(TextOf(settings.dialog, RANGE_MIN), L"-5000");
        }
        EXPECT_EQ(settings.graph.m_nRangeMin, -5000);
        Operator::Tap(settings.dialog, RANGE_MIN);
        EXPECT_TRUE(EnterOnPad(L"Current Value", L"-20000"));
        EXPECT_EQ(settings.graph.m_nRangeMin, -20000);
    });
}

TEST(Settings, SpeaksTheLanguage) {
    CLanguageTable table;
    for (const int nString : {155, 1511, 1516}) table.Set(nString, L"#" + std::to_wstring(nString));
    Settings settings;
    settings.dialog.m_pLangTable = &table;
    RunModal(settings.dialog, [&] {
        EXPECT_EQ(Operator::ModalTitle(), L"#1511");
        EXPECT_EQ(TextOf(settings.dialog, RANGE_LABEL), L"#1516");
        Operator::Tap(settings.dialog, RANGE_MIN);
        EXPECT_TRUE(AwaitModal(L"#155"));
        Operator::PressKey(Operator::Key::Escape);
    });
}
