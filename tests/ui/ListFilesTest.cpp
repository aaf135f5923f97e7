#include <gtest/gtest.h>

#include "Support.h"
#include "ui/DlgListFiles.h"

namespace {

constexpr int OK = 1, CAPTION = 1123, FILES = 1135, DOWN = 1136, UP = 1138;

int TopOf(const CDlgListFiles& dialog) {
    int nTop = -1;
    Operator::Ask([&] { nTop = static_cast<CListBox*>(dialog.GetDlgItem(FILES))->GetTopIndex(); });
    return nTop;
}

std::vector<std::wstring> RowsOf(const CDlgListFiles& dialog) {
    std::vector<std::wstring> rows;
    Operator::Ask([&] {
        const auto* pList = static_cast<CListBox*>(dialog.GetDlgItem(FILES));
        for (int n = 0; n < pList->GetCount(); ++n) rows.push_back(pList->GetText(n));
    });
    return rows;
}

}  // namespace

TEST(ListFiles, OpensTheRowThatWasTapped) {
    CDlgListFiles dialog;
    dialog.SetCaption(L"Pick one");
    dialog.SetFiles({L"zebra.rt3", L"run.2.RT3", L"Alpha.Rt3", L"bare"});
    EXPECT_EQ(RunModal(dialog,
                       [&] {
                           EXPECT_EQ(TextOf(dialog, CAPTION), L"Pick one");
                           EXPECT_EQ(RowsOf(dialog), (std::vector<std::wstring>{
                                                         L"Alpha", L"bare", L"run.2", L"zebra"}));
                           EXPECT_FALSE(IsEnabled(dialog, OK));
                           Operator::PressKey(Operator::Key::Enter);
                           EXPECT_EQ(Operator::ModalWindow(), &dialog);
                           EXPECT_TRUE(Operator::Select(*dialog.GetDlgItem(FILES), L"run.2"));
                           EXPECT_TRUE(Operator::Tap(dialog, OK));
                       }),
              IDOK);
    EXPECT_EQ(dialog.GetSelectedName(), L"run.2");
    EXPECT_EQ(dialog.GetSelectedIndex(), 1);
}

TEST(ListFiles, ArrowsMoveTheSelectionAndStopAtTheEnds) {
    CDlgListFiles dialog;
    dialog.SetFiles({L"c.rt3", L"b.rt3", L"a.rt3"});
    RunModal(dialog, [&] {
        Operator::Select(*dialog.GetDlgItem(FILES), L"b");
        Operator::Tap(dialog, UP);
        EXPECT_EQ(dialog.GetSelectedName(), L"a");
        Operator::Tap(dialog, UP);
        EXPECT_EQ(dialog.GetSelectedName(), L"a");
        EXPECT_EQ(dialog.GetSelectedIndex(), 2);
        for (int n = 0; n < 5; ++n) Operator::Tap(dialog, DOWN);
        EXPECT_EQ(dialog.GetSelectedName(), L"c");
        EXPECT_EQ(dialog.GetSelectedIndex(), 0);
    });
}

TEST(ListFiles, ArrowsScrollWhileNothingIsSelected) {
    CDlgListFiles dialog;
    std::vector<std::wstring> files;
    for (int n = 10; n < 50; ++n) files.push_back(std::to_wstring(n) + L".rt3");
    dialog.SetFiles(files);
    RunModal(dialog, [&] {
        Operator::Tap(dialog, UP);
        EXPECT_EQ(TopOf(dialog), 0);
        for (int n = 0; n < 3; ++n) Operator::Tap(dialog, DOWN);
        EXPECT_EQ(TopOf(dialog), 3);
        Operator::Tap(dialog, UP);
        EXPECT_EQ(TopOf(dialog), 2);
        EXPECT_FALSE(IsEnabled(dialog, OK));
        EXPECT_EQ(dialog.GetSelectedName(), L"");
    });
}

TEST(ListFiles, WithoutFilesCanOnlyBeCancelled) {
    CDlgListFiles dialog;
    EXPECT_EQ(RunModal(dialog,
                       [&] {
                           EXPECT_TRUE(Operator::Tap(dialog, UP));
                           EXPECT_TRUE(Operator::Tap(dialog, DOWN));
                           EXPECT_FALSE(Operator::Tap(dialog, OK));
                           EXPECT_TRUE(Operator::Tap(dialog, IDCANCEL));
                       }),
              IDCANCEL);
}
