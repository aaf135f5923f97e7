#include <gtest/gtest.h>

#include "Support.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/LanguageTable.h"

namespace {

constexpr DialogTemplate TEMPLATE{0, L"Screen", 480, 60, L"MS Shell Dlg", 8, {}};

/// Shows one bar and writes down what the bar posts.
template <class Bar>
class CScreen : public CDialog {
  public:
    struct Message {
        UINT nMessage;
        WPARAM wParam;
        LPARAM lParam;
        friend bool operator==(const Message&, const Message&) = default;
    };

    CScreen() : CDialog(TEMPLATE), m_bar(this) {}

    /// What a tap on a button of the bar posts.
    std::vector<Message> Tap(int nButton) {
        m_messages.clear();
        EXPECT_TRUE(Operator::Tap(m_bar, nButton)) << nButton;
        return m_messages;
    }

    Bar m_bar;

  protected:
    bool OnInitDialog() override {
        m_bar.Create(this);
        m_bar.ShowWindow(true);
        return true;
    }
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override {
        if (nMessage > WM_USER || nMessage == WM_CLOSE) {
            m_messages.push_back({nMessage, wParam, lParam});
            return 0;
        }
        return CDialog::WindowProc(nMessage, wParam, lParam);
    }

  private:
    std::vector<Message> m_messages;
};

template <class Bar>
using Messages = std::vector<typename CScreen<Bar>::Message>;

}  // namespace

TEST(Bars, MainMenuPostsItsCommands) {
    CScreen<CDlgBarMainMenu> screen;
    using Posted = Messages<CDlgBarMainMenu>;
    RunModal(screen, [&] {
        EXPECT_EQ(screen.Tap(2), (Posted{{1265, 211, 0}}));
        EXPECT_EQ(screen.Tap(1047), (Posted{{1314, 0, 0}}));
        EXPECT_EQ(screen.Tap(4), (Posted{{1315, 0, 0}}));
        EXPECT_FALSE(Operator::Tap(screen.m_bar, 1203));
        EXPECT_EQ(screen.Tap(1), (Posted{{WM_CLOSE, 0, 0}}));
    });
}

TEST(Bars, InfoPostsItsCommands) {
    CScreen<CDlgBarInfo> screen;
    using Posted = Messages<CDlgBarInfo>;
    RunModal(screen, [&] {
        EXPECT_EQ(screen.Tap(1028), (Posted{{1264, 200, 0}}));
        EXPECT_EQ(screen.Tap(1027), (Posted{{1264, 201, 0}}));
        EXPECT_EQ(screen.Tap(1012), (Posted{{1264, 202, 0}}));
        EXPECT_EQ(screen.Tap(1030), (Posted{{1264, 203, 0}}));
        EXPECT_EQ(screen.Tap(1013), (Posted{{1264, 204, 0}}));
        EXPECT_EQ(screen.Tap(1036), (Posted{{1265, 210, 0}}));
    });
}

TEST(Bars, InfoShowsItsNumbers) {
    CScreen<CDlgBarInfo> screen;
    RunModal(screen, [&] {
        EXPECT_EQ(TextOf(screen.m_bar, 1029), L"0");
        EXPECT_EQ(TextOf(screen.m_bar, 1031), L"0");
        Operator::Ask([&] {
            screen.m_bar.m_nTimeDistance = -1250;
            screen.m_bar.m_nTriggerPercent = 40;
            screen.m_bar.UpdateData(false);
        });
        EXPECT_EQ(TextOf(screen.m_bar, 1029), L"-1250");
        EXPECT_EQ(TextOf(screen.m_bar, 1031), L"40");
        Operator::Tap(screen.m_bar, 1029);
        Operator::Type(L"9");
        EXPECT_EQ(TextOf(screen.m_bar, 1029), L"-1250");
    });
}

TEST(Bars, SpeakTheLanguageAsFarAsItGoes) {
    CLanguageTable table;
    for (const int nString : {1507, 1512, 1517, 1520, 1532})
        table.Set(nString, std::to_wstring(nString));
    table.Set(1519, L"");

    CScreen<CDlgBarInfo> info;
    info.m_bar.m_pLangTable = &table;
    RunModal(info, [&] {
        for (const auto& [nID, pText] : std::initializer_list<std::pair<int, const wchar_t*>>{
                 {1012, L"1507"},
                 {1013, L"1507"},
                 {1030, L"1517"},
                 {1034, L"1520"},
                 {1032, L"Time Marker (Information only)"},
                 {1033, L"Time distance:"}})
            EXPECT_EQ(TextOf(info.m_bar, nID), pText);
    });

    CScreen<CDlgBarMainMenu> menu;
    menu.m_bar.m_pLangTable = &table;
    RunModal(menu, [&] {
        EXPECT_EQ(TextOf(menu.m_bar, 2), L"1512");
        EXPECT_EQ(TextOf(menu.m_bar, 4), L"1532");
        EXPECT_EQ(TextOf(menu.m_bar, 1047), L"Export to csv...");
    });
}
