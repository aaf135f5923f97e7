// What every dialog looks like by itself, and drawing on its controls.
#include <gtest/gtest.h>

#include "platform/windows/Application.h"
#include "platform/windows/Dialog.h"
#include "platform/windows/PaintDC.h"
#include "platform/windows/WindowScale.h"
#include "tests/support/Controls.h"
#include "tests/support/ErrorOf.h"

namespace {

constexpr DialogItem ITEMS[] = {{9, ControlKind::Static, L"", 10, 10, 40, 10}};
constexpr DialogTemplate TEMPLATE{0, L"Dialog", 60, 30, L"MS Shell Dlg", 8, ITEMS};

/// How many pixels of a picture have another colour than the light blue of the dialogs.
int CountOthers(const CBitmap& picture) {
    int nOthers = 0;
    for (int y = 0; y < picture.GetSize().cy; ++y)
        for (int x = 0; x < picture.GetSize().cx; ++x)
            nOthers += picture.GetPixel(x, y) != RGB(211, 228, 250);
    return nOthers;
}

}  // namespace

TEST(Dialog, FillsItsBackgroundWhichShowsThroughItsLabels) {
    CDialog dialog(TEMPLATE);
    RunModal(dialog, [&] {
        const CBitmap empty = Operator::TakePicture(dialog);
        EXPECT_EQ(empty.GetSize(), (CSize{90, 49}));
        EXPECT_EQ(CountOthers(empty), 0);
        Operator::Ask([&] { dialog.SetControlText(9, L"iii"); });
        const int nInk = CountOthers(Operator::TakePicture(dialog));
        EXPECT_GT(nInk, 10);
        EXPECT_LT(nInk, 100) << "nothing but the letters";
    });
}

TEST(Dialog, CallsForItDoNotOutliveIt) {
    const auto spToken = std::make_shared<int>(1);
    const auto post = [&](CWnd& wnd) { wnd.PostCall([&, spToken] { *spToken *= 2; }); };
    CFrameWindow other;
    other.Create(L"");
    {
        CDialog dialog(TEMPLATE);
        dialog.Create(nullptr);
        post(dialog);
        post(other);
        post(dialog);
        EXPECT_EQ(spToken.use_count(), 4);
    }
    EXPECT_EQ(spToken.use_count(), 2) << "but for that of the other window";
    EXPECT_TRUE(Operator::WaitUntil([&] { return spToken.use_count() == 1; }, 5000));
    EXPECT_EQ(*spToken, 2);
}

TEST(Script, ThatWaitsInVainClosesItsWindowAndSaysForWhat) {
    CDialog dialog(TEMPLATE);
    const auto work = [] {
        Operator::WaitFor(
            "a box", [] { return false; }, 20);
    };
    EXPECT_EQ(ErrorOf<std::runtime_error>([&] { RunModal(dialog, work); }),
              "waited 20 ms in vain for a box; in front: Dialog: ");
}

/// The offscreen display has 800 x 800 pixels, of which one is kept in each direction.
TEST(WindowScale, FitsTheTighterDirectionWithinItsLimits) {
    EXPECT_DOUBLE_EQ(FindFittingScale({500, 340}), 799.0 / 500);
    EXPECT_DOUBLE_EQ(FindFittingScale({400, 900}), 799.0 / 900);
    EXPECT_EQ(FindFittingScale({100, 100}), 4);
    EXPECT_EQ(FindFittingScale({100, 9000}), 0.5);
}
