#include <gtest/gtest.h>

#include "tests/support/Controls.h"
#include "ui/DlgListFiles.h"

namespace {

using enum CDlgListFiles::Control;

int TopOf(const CDlgListFiles& dialog) {
    int nTop = -1;
    Operator::Ask(
        [&] { nTop = static_cast<CListBox*>(dialog.GetControl(ID_FILES))->GetTopIndex(); });
    return nTop;
}

}  // namespace

TEST(ListFiles, ArrowsScrollUntilARowIsSelectedAndMoveThatToTheEnds) {
    CDlgListFiles dialog;
    std::vector<std::wstring> files;
    for (int n = 49; n >= 10; --n)
        files.push_back((n % 2 ? L"run " : L"Run ") + std::to_wstring(n) + L".rt3");
    files.push_back(L"Run 48.RT3");  // as another is called, apart from its extension
    dialog.SetFiles(files);
    const int nResult = RunModal(dialog, [&] {
        Operator::Tap(dialog, ID_UP);
        EXPECT_EQ(TopOf(dialog), 0);
        for (int n = 0; n < 3; ++n) Operator::Tap(dialog, ID_DOWN);
        EXPECT_EQ(TopOf(dialog), 3);
        Operator::Tap(dialog, ID_UP);
        EXPECT_EQ(TopOf(dialog), 2);
        EXPECT_FALSE(IsEnabled(dialog, IDOK));
        EXPECT_EQ(dialog.GetSelectedName(), L"");

        Operator::Select(*dialog.GetControl(ID_FILES), L"run 11");
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, ID_UP);
            EXPECT_EQ(dialog.GetSelectedName(), L"Run 10");
            EXPECT_EQ(dialog.GetSelectedIndex(), 39);
        }
        Operator::Select(*dialog.GetControl(ID_FILES), L"Run 48.RT3");
        EXPECT_EQ(dialog.GetSelectedIndex(), 40);
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, ID_DOWN);
            EXPECT_EQ(dialog.GetSelectedName(), L"run 49");
            EXPECT_EQ(dialog.GetSelectedIndex(), 0);
        }
        EXPECT_TRUE(Operator::Tap(dialog, IDOK));
    });
    EXPECT_EQ(nResult, IDOK);
}
