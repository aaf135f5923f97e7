#include <gtest/gtest.h>

#include "Support.h"
#include "ui/DlgListFiles.h"

namespace {

constexpr int OK = 1, FILES = 1135, DOWN = 1136, UP = 1138;

int TopOf(const CDlgListFiles& dialog) {
    int nTop = -1;
    Operator::Ask([&] { nTop = static_cast<CListBox*>(dialog.GetControl(FILES))->GetTopIndex(); });
    return nTop;
}

}  // namespace

TEST(ListFiles, ArrowsScrollUntilARowIsSelectedAndMoveThatToTheEnds) {
    CDlgListFiles dialog;
    std::vector<std::wstring> files;
    for (int n = 49; n >= 10; --n)
        files.push_back((n % 2 ? L"run " : L"Run ") + std::to_wstring(n) + L".rt3");
    dialog.SetFiles(files);
    const int nResult = RunModal(dialog, [&] {
        Operator::Tap(dialog, UP);
        EXPECT_EQ(TopOf(dialog), 0);
        for (int n = 0; n < 3; ++n) Operator::Tap(dialog, DOWN);
        EXPECT_EQ(TopOf(dialog), 3);
        Operator::Tap(dialog, UP);
        EXPECT_EQ(TopOf(dialog), 2);
        EXPECT_FALSE(IsEnabled(dialog, OK));
        EXPECT_EQ(dialog.GetSelectedName(), L"");
        Operator::PressKey(Operator::Key::Enter);
        EXPECT_EQ(Operator::ModalWindow(), &dialog);

        Operator::Select(*dialog.GetControl(FILES), L"run 11");
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, UP);
            EXPECT_EQ(dialog.GetSelectedName(), L"Run 10");
            EXPECT_EQ(dialog.GetSelectedIndex(), 39);
        }
        Operator::Select(*dialog.GetControl(FILES), L"Run 48");
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, DOWN);
            EXPECT_EQ(dialog.GetSelectedName(), L"run 49");
            EXPECT_EQ(dialog.GetSelectedIndex(), 0);
        }
        EXPECT_TRUE(Operator::Tap(dialog, OK));
    });
    EXPECT_EQ(nResult, IDOK);
}
