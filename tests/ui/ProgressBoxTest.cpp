#include <gtest/gtest.h>

#include <cwchar>

#include "platform/system/Threads.h"
#include "platform/windows/Application.h"
#include "tests/support/Controls.h"
#include "ui/ProgressBox.h"

namespace {

constexpr DialogItem ITEMS[] = {{9, ControlKind::PushButton, L"Behind", 0, 0, 50, 14}};
constexpr DialogTemplate TEMPLATE{0, L"Behind", 300, 180, L"MS Shell Dlg", 8, ITEMS};

/// A screen that works for a time when its button is pressed.
class CWorking : public CDialog {
  public:
    explicit CWorking(unsigned nMilliseconds) : CDialog(TEMPLATE), m_nMilliseconds(nMilliseconds) {}

    int m_nStarted = 0;
    bool m_bFinished = false;

  protected:
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override {
        if (nMessage == WM_COMMAND && wParam == CommandParam(9, BN_CLICKED)) Work();
        return CDialog::WindowProc(nMessage, wParam, lParam);
    }

  private:
    void Work() {
        ++m_nStarted;
        CProgressBox progress(L"Saving");
        const std::uint64_t nBegin = TickMilliseconds();
        while (TickMilliseconds() < nBegin + m_nMilliseconds) {
            if (!progress.Advance(TickMilliseconds() - nBegin, m_nMilliseconds)) return;
            SleepMilliseconds(2);
        }
        m_bFinished = true;
    }

    const unsigned m_nMilliseconds;
};

}  // namespace

TEST(ProgressBox, AppearsAfterASecondAndCancels) {
    CWorking screen(20000);
    RunModal(screen, [&] {
        const std::uint64_t nBegin = TickMilliseconds();
        Operator::After(0, [&] { Operator::Tap(screen, 9); });
        EXPECT_TRUE(AwaitModal(L"Saving"));
        EXPECT_GE(TickMilliseconds() - nBegin, 900u);
        EXPECT_FALSE(Operator::Tap(screen, 9));
        int nPercent = 0;  // one of them takes 200 ms
        const auto isFarther = [&] {
            return std::swscanf(Operator::ModalText().c_str(), L"Saving\n%d %%", &nPercent) == 1 &&
                   nPercent > 5;
        };
        EXPECT_TRUE(Operator::WaitUntil(isFarther, 3000));
        EXPECT_LT(nPercent, 20);
        EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), IDCANCEL));
        EXPECT_TRUE(Operator::WaitUntil([&] { return Operator::ModalWindow() == &screen; }, 2000));
    });
    EXPECT_EQ(screen.m_nStarted, 1);
    EXPECT_FALSE(screen.m_bFinished);
}

TEST(ProgressBox, GoesWithTheWork) {
    CWorking screen(1300);
    RunModal(screen, [&] {
        Operator::After(0, [&] { Operator::Tap(screen, 9); });
        EXPECT_TRUE(AwaitModal(L"Saving"));
        Operator::PressKey(Operator::Key::Enter);
        EXPECT_TRUE(Operator::WaitUntil([&] { return screen.m_bFinished; }, 3000));
        EXPECT_EQ(Operator::ModalWindow(), &screen);
    });
}
