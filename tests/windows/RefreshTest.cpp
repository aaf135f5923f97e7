// A control that draws itself: when it is asked to, and what of its picture reaches the screen.
#include <atomic>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/windows/Application.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"
#include "platform/windows/PaintDC.h"
#include "tests/support/Controls.h"

namespace {

using std::chrono::steady_clock;

constexpr DialogItem ITEMS[] = {{9, ControlKind::Static, L"", 0, 0, 60, 30}};
constexpr DialogTemplate TEMPLATE{0, L"Dialog", 60, 30, L"MS Shell Dlg", 8, ITEMS};
constexpr unsigned PAUSE_MS = 30;  ///< longer than the time from one refresh to the next
constexpr unsigned PATIENCE_MS = 10000;

/// Fills itself with a colour.
class CFilled : public CStatic {
  public:
    std::atomic<COLORREF> m_color = RGB(0, 0, 255);
    std::optional<CRect> m_changed;   ///< what a paint says that it has changed
    std::function<void()> m_atPaint;  ///< called once, in the middle of a paint
    COLORREF m_crPainted = NO_COLOR;  ///< by the last paint
    std::vector<bool> m_kept;         ///< of each paint: whether it found the picture kept

  private:
    void OnPaint() {
        m_crPainted = m_color;
        if (m_atPaint) std::exchange(m_atPaint, {})();
        CPaintDC dc(this);
        m_kept.push_back(dc.IsKept());
        dc.FillSolidRect(GetClientRect(), m_crPainted);
        if (m_changed) dc.SetChanged(*m_changed);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CFilled, CStatic)
ON_WM_PAINT()
END_MESSAGE_MAP()

struct Refresh : testing::Test {
    Refresh() {
        m_dialog.Create(nullptr);
        m_control.AttachControl(9, &m_dialog);
        m_dialog.ShowWindow(true);
        EXPECT_TRUE(AwaitPaint(m_control.m_color));
        Operator::Wait(PAUSE_MS);
    }
    void FillFromThread(COLORREF color) {
        m_control.m_color = color;
        std::thread([this] { m_control.Invalidate(); }).join();
    }
    bool AwaitPaint(COLORREF color) {
        return Operator::WaitUntil([&] { return m_control.m_crPainted == color; }, PATIENCE_MS);
    }
    std::size_t CountPaints() const { return m_control.m_kept.size(); }

    CDialog m_dialog{TEMPLATE};
    CFilled m_control;
};

TEST_F(Refresh, ComesAtOnceThenAtMostSixtyTimesASecondAndAfterTheLastRequest) {
    // Before the event loop has waited for anything: one turn takes the request, one follows it.
    FillFromThread(RGB(1, 0, 0));
    PumpMessages();
    PumpMessages();
    EXPECT_EQ(m_control.m_crPainted, RGB(1, 0, 0));

    Operator::Wait(PAUSE_MS);
    const std::size_t nBefore = CountPaints();
    const auto begin = steady_clock::now();
    std::atomic<bool> bOver = false;
    std::thread flood([&] {
        while (steady_clock::now() - begin < std::chrono::milliseconds(500)) {
            ++m_control.m_color;
            m_control.Invalidate();
        }
        bOver = true;
    });
    EXPECT_TRUE(Operator::WaitUntil([&] { return bOver.load(); }, PATIENCE_MS));
    flood.join();
    EXPECT_TRUE(AwaitPaint(m_control.m_color));
    const double dSeconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
    EXPECT_LE(CountPaints() - nBefore, static_cast<std::size_t>(dSeconds * 60) + 1);

    // A request in the middle of a paint is of what that has not seen.
    m_control.m_atPaint = [&] { FillFromThread(RGB(3, 0, 0)); };
    FillFromThread(RGB(2, 0, 0));
    EXPECT_TRUE(AwaitPaint(RGB(3, 0, 0)));

    // What is hidden waits until it appears, and is refreshed as before from then on.
    m_dialog.ShowWindow(false);
    const std::size_t nHidden = CountPaints();
    FillFromThread(RGB(4, 0, 0));
    Operator::Wait(PAUSE_MS);
    EXPECT_EQ(CountPaints(), nHidden);
    m_dialog.ShowWindow(true);
    EXPECT_TRUE(AwaitPaint(RGB(4, 0, 0)));
    FillFromThread(RGB(5, 0, 0));
    EXPECT_TRUE(AwaitPaint(RGB(5, 0, 0)));
}

TEST_F(Refresh, ShowsOnlyWhatHasChangedInAKeptPicture) {
    const COLORREF crOld = m_control.m_color;
    const COLORREF crNew = RGB(255, 0, 0);
    const auto refresh = [&] {
        const std::size_t nBefore = CountPaints();
        m_control.Invalidate();
        EXPECT_TRUE(Operator::WaitUntil([&] { return CountPaints() > nBefore; }, PATIENCE_MS));
    };
    const auto colorAt = [&](int x) {
        return Operator::TakeScreenPicture(m_control).GetPixel(x, 5);
    };
    EXPECT_EQ(m_control.m_kept, std::vector{false}) << "shown, and painted once";
    m_control.m_color = crNew;
    m_control.m_changed = CRect{10, 0, 20, 49};
    refresh();
    EXPECT_TRUE(m_control.m_kept.back());
    EXPECT_EQ(colorAt(9), crOld);
    EXPECT_EQ(colorAt(10), crNew);
    EXPECT_EQ(colorAt(19), crNew);
    EXPECT_EQ(colorAt(20), crOld);
    {
        CClientDC dc(&m_control);
        dc.SetChanged({30, 0, 40, 49});
    }
    EXPECT_TRUE(Operator::WaitUntil([&] { return colorAt(39) == crNew; }, PATIENCE_MS));
    EXPECT_EQ(colorAt(29), crOld);
    m_control.m_changed.reset();
    refresh();
    EXPECT_EQ(colorAt(50), crNew);

    // A picture that is taken of a stale window is of its state, and the window follows.
    m_control.m_color = crOld;
    m_control.Invalidate();
    EXPECT_EQ(Operator::TakePicture(m_control).GetPixel(50, 5), crOld);
    EXPECT_TRUE(Operator::WaitUntil([&] { return colorAt(50) == crOld; }, PATIENCE_MS));
}

}  // namespace
