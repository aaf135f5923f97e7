#include <gtest/gtest.h>

#include "tests/support/Controls.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/LanguageTable.h"

namespace {

using enum CDlgBarInfo::Control;

constexpr DialogTemplate TEMPLATE{0, L"Screen", 480, 60, L"MS Shell Dlg", 8, {}};

/// Shows the info bar and writes down what it posts, as message numbers and wParams.
class CScreen : public CDialog {
  public:
    CScreen() : CDialog(TEMPLATE), m_bar(this) {}

    CDlgBarInfo m_bar;
    std::vector<std::pair<UINT, WPARAM>> m_posted;

  protected:
    bool OnInitDialog() override {
        m_bar.Create(this);
        m_bar.ShowWindow(true);
        return true;
    }
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override {
        if (nMessage >= WM_RT_BARCOMMAND) m_posted.emplace_back(nMessage, wParam);
        return CDialog::WindowProc(nMessage, wParam, lParam);
    }
};

}  // namespace

TEST(InfoBar, PostsItsCommands) {
    CScreen screen;
    RunModal(screen, [&] {
        for (const int nID :
             {ID_MARKER_A, ID_MARKER_B, ID_CLEAR_MARKERS, ID_TRIGGER, ID_CLEAR_TRIGGER, ID_BACK})
            EXPECT_TRUE(Operator::Tap(screen.m_bar, nID)) << nID;
    });
    EXPECT_EQ(screen.m_posted,
              (std::vector<std::pair<UINT, WPARAM>>{
                  {1264, 200}, {1264, 201}, {1264, 202}, {1264, 203}, {1264, 204}, {1265, 210}}));
}

TEST(InfoBar, ShowsItsNumbersAndTheLanguageAsFarAsItGoes) {
    CLanguageTable table;
    for (const int nString : {1507, 1517, 1520}) table.Set(nString, std::to_wstring(nString));
    table.Set(1519, L"");
    CScreen screen;
    screen.m_bar.m_pLangTable = &table;
    RunModal(screen, [&] {
        const std::pair<int, const wchar_t*> texts[] = {
            {ID_CLEAR_MARKERS, L"1507"},
            {ID_CLEAR_TRIGGER, L"1507"},
            {ID_TRIGGER, L"1517"},
            {ID_LEVEL_LABEL, L"1520"},
            {ID_MARKER_LABEL, L"Time Marker (Information only)"},
            {ID_DISTANCE_LABEL, L"Time distance:"},
            {ID_TIME_DISTANCE, L"0"},
            {ID_TRIGGER_PERCENT, L"0"}};
        for (const auto& [nID, pText] : texts) EXPECT_EQ(TextOf(screen.m_bar, nID), pText) << nID;
        Operator::Ask([&] {
            screen.m_bar.m_nTimeDistance = -1250;
            screen.m_bar.m_nTriggerPercent = 40;
            screen.m_bar.UpdateData(false);
        });
        EXPECT_EQ(TextOf(screen.m_bar, ID_TRIGGER_PERCENT), L"40");
        Operator::Tap(screen.m_bar, ID_TIME_DISTANCE);
        Operator::Type(L"9");  // which only shows
        EXPECT_EQ(TextOf(screen.m_bar, ID_TIME_DISTANCE), L"-1250");
    });
}
