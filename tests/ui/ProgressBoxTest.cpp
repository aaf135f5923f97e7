#include <gtest/gtest.h>

#include "tests/support/Clock.h"
#include "tests/support/Controls.h"
#include "ui/ProgressBox.h"

namespace {

using enum CProgressBox::Control;

/// Works in ten steps of a second each, and looks at the box after each of them.
int Work(CProgressBox& progress, const std::function<void(int)>& look) {
    const CHastyClock clock(1000, [] {});
    int nStep = 0;
    while (nStep < 10 && progress.Advance(static_cast<std::uint64_t>(++nStep), 10)) look(nStep);
    return nStep;
}

}  // namespace

TEST(ProgressBox, ShowsHowFarTheWorkIs) {
    CProgressBox progress(L"Saving");
    {
        const CHastyClock clock(900, [] {});
        EXPECT_TRUE(progress.Advance(1, 10));  // within the first second
    }
    EXPECT_FALSE(progress.GetHandle());
    const int nSteps = Work(progress, [&](int nStep) {
        Operator::PressKey(Operator::Key::Enter);
        Operator::PressKey(Operator::Key::Space);
        EXPECT_EQ(Operator::ModalTitle(), L"Saving");
        EXPECT_EQ(Operator::ModalText(), L"Saving\n" + std::to_wstring(10 * nStep) + L" %");
        // A frame of a pixel, and 283 pixels that fill up.
        const CBitmap bar = Operator::TakePicture(*progress.GetControl(ID_BAR));
        ASSERT_EQ(bar.GetSize(), (CSize{285, 23}));
        int nDone = 0;
        for (int x = 0; x < 285; ++x) nDone += bar.GetPixel(x, 11) == RGB(38, 96, 164);
        EXPECT_EQ(nDone, 283 * nStep / 10);
        EXPECT_EQ(bar.GetPixel(283, 11) == RGB(255, 255, 255), nStep < 10);
    });
    EXPECT_EQ(nSteps, 10);
}

TEST(ProgressBox, CancelsByEscape) {
    CProgressBox progress(L"Saving");
    const auto cancel = [](int nStep) {
        if (nStep == 3) Operator::PressKey(Operator::Key::Escape);
    };
    EXPECT_EQ(Work(progress, cancel), 4);
    EXPECT_FALSE(progress.Advance(10, 10)) << "it stays cancelled";
}
