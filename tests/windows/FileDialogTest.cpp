#include <gtest/gtest.h>

#include "platform/operator/Operator.h"
#include "platform/windows/FileDialog.h"
#include "platform/windows/Messages.h"
#include "tests/support/TemporaryFolder.h"

using Operator::Key;
using Operator::PressKey;

namespace {

/// The name that a dialog for .rt3 files gives when the operator takes the first one that it offers
/// for a beginning; empty: none. The folder is read beside the dialog, in some milliseconds.
std::wstring TakeFirstOffered(const std::wstring& strBeginning, unsigned nMilliseconds) {
    CFileDialog dialog(true, L"", L"Real Time Files (*.rt3)|*.rt3||");
    Operator::CScript script([&] {
        const auto isOpen = [] { return !Operator::ModalTitle().empty(); };
        Operator::WaitFor("the dialog", isOpen);
        Operator::Type(strBeginning.substr(0, strBeginning.size() - 1));
        Operator::Wait(nMilliseconds);
        Operator::Type(strBeginning.substr(strBeginning.size() - 1));
        for (const Key key : {Key::Down, Key::Enter, Key::Enter}) PressKey(key);
        if (isOpen()) PressKey(Key::Escape);
    });
    const bool bTaken = dialog.DoModal() == IDOK;
    script.Join();
    return bTaken ? dialog.GetFileName() : std::wstring();
}

}  // namespace

TEST(FileDialog, OffersTheFilesOfItsPatternWithoutRegardToCase) {
    const TemporaryFolder folder;
    folder.Put("NA.TXT", "");
    folder.Put("NAME.RT3", "");
    std::wstring strTaken;
    for (unsigned nWait = 20; strTaken.empty() && nWait < 5000; nWait *= 2)
        strTaken = TakeFirstOffered(folder.Path("NA"), nWait);
    EXPECT_EQ(strTaken, L"NAME.RT3");
}
