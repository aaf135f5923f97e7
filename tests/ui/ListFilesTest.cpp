#include <gtest/gtest.h>

#include "tests/support/Controls.h"
#include "ui/DlgListFiles.h"

using enum CDlgListFiles::Control;

TEST(ListFiles, ArrowsScrollUntilARowIsSelectedAndMoveThatToTheEnds) {
    CDlgListFiles dialog;
    std::vector<std::wstring> files;
    for (int n = 49; n >= 10; --n)
        files.push_back((n % 2 ? L"run " : L"Run ") + std::to_wstring(n) + L".rt3");
    files.push_back(L"Run 48.RT3");  // as another is called, apart from its extension
    dialog.SetFiles(files);
    const int nResult = RunModal(dialog, [&] {
        const auto* pFiles = static_cast<CListBox*>(dialog.GetControl(ID_FILES));
        for (const auto& [nArrow, nTop] :
             {std::pair{ID_UP, 0}, {ID_DOWN, 1}, {ID_DOWN, 2}, {ID_DOWN, 3}, {ID_UP, 2}}) {
            Operator::Tap(dialog, nArrow);
            Operator::Ask([&, nTop = nTop] { EXPECT_EQ(pFiles->GetTopIndex(), nTop); });
        }
        EXPECT_FALSE(IsEnabled(dialog, IDOK));
        EXPECT_EQ(dialog.GetSelectedName(), L"");

        Operator::Select(*pFiles, L"run 11");
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, ID_UP);
            EXPECT_EQ(dialog.GetSelectedName(), L"Run 10");
        }
        Operator::Tap(dialog, ID_DOWN);
        EXPECT_EQ(dialog.GetSelectedName(), L"run 11");
        Operator::Select(*pFiles, L"Run 48.RT3");
        EXPECT_EQ(dialog.GetSelectedIndex(), 40);
        for (int n = 0; n < 2; ++n) {
            Operator::Tap(dialog, ID_DOWN);
            EXPECT_EQ(dialog.GetSelectedName(), L"run 49");
        }
        EXPECT_TRUE(Operator::Tap(dialog, IDOK));
    });
    EXPECT_EQ(nResult, IDOK);
}
