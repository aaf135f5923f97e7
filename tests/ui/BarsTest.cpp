#include <gtest/gtest.h>

#include "Support.h"
#include "ui/DlgBarInfo.h"
#include "ui/LanguageTable.h"

namespace {

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
        if (nMessage > WM_USER) m_posted.emplace_back(nMessage, wParam);
        return CDialog::WindowProc(nMessage, wParam, lParam);
    }
};

}  // namespace

TEST(InfoBar, PostsItsCommands) {
    CScreen screen;
    RunModal(screen, [&] {
        for (const int nID : {1028, 1027, 1012, 1030, 1013, 1036})
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
        const std::pair<int, const wchar_t*> texts[] = {{1012, L"1507"},
                                                        {1013, L"1507"},
                                                        {1030, L"1517"},
                                                        {1034, L"1520"},
                                                        {1032, L"Time Marker (Information only)"},
                                                        {1033, L"Time distance:"},
                                                        {1029, L"0"},
                                                        {1031, L"0"}};
        for (const auto& [nID, pText] : texts) EXPECT_EQ(TextOf(screen.m_bar, nID), pText) << nID;
        Operator::Ask([&] {
            screen.m_bar.m_nTimeDistance = -1250;
            screen.m_bar.m_nTriggerPercent = 40;
            screen.m_bar.UpdateData(false);
        });
        EXPECT_EQ(TextOf(screen.m_bar, 1031), L"40");
        Operator::Tap(screen.m_bar, 1029);
        Operator::Type(L"9");  // which only shows
        EXPECT_EQ(TextOf(screen.m_bar, 1029), L"-1250");
    });
}
