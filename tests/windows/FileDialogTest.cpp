// The file dialogs: that of a panel by finger, and that of a desktop.
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/operator/Operator.h"
#include "platform/windows/FileDialog.h"
#include "platform/windows/FingerFileDialog.h"
#include "platform/windows/NoticeBox.h"
#include "tests/support/Controls.h"
#include "tests/support/TemporaryFolder.h"

using Operator::Key;
using Operator::PressKey;

namespace {

using enum CFingerFileDialog::Control;

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
    CFileDialog::SetKind(DisplayKind::Desktop);
    const bool bTaken = dialog.DoModal() == IDOK;
    script.Join();
    return bTaken ? dialog.GetFileName() : std::wstring();
}

/// A panel's dialog that begins in the folder of the test.
struct FingerDialog : ::testing::Test {
    /// @return the path that was chosen; empty when it was cancelled
    std::wstring Work(bool bOpen, const std::function<void()>& work,
                      const std::string& strFolder = "store") {
        CFileDialog dialog(bOpen, bOpen ? L"" : L".csv", L"Text File (*.csv)|*.csv||");
        dialog.SetFolder(m_folder.Path(strFolder));
        Operator::CScript script([&] {
            Operator::WaitFor("the dialog", &IsOpen);
            work();
            if (IsOpen()) PressKey(Key::Escape);
        });
        const bool bTaken = dialog.DoModal() == IDOK;
        script.Join();
        return bTaken ? dialog.GetPathName() : std::wstring();
    }
    static bool IsOpen() {
        return dynamic_cast<CFingerFileDialog*>(Operator::ModalWindow()) != nullptr;
    }
    /// A script that finds the dialog closed too early ends there.
    static CFingerFileDialog& Front() {
        CWnd* pFront = Operator::ModalWindow();
        if (!pFront) throw std::runtime_error("nothing is open");
        return dynamic_cast<CFingerFileDialog&>(*pFront);
    }
    static CListBox& Rows() {
        CWnd* pRows = nullptr;
        CFingerFileDialog& dialog = Front();
        Operator::Ask([&] { pRows = dialog.GetControl(ID_ROWS); });
        return dynamic_cast<CListBox&>(*pRows);
    }
    static std::wstring Listed() {
        std::wstring strRows;
        CListBox& rows = Rows();
        Operator::Ask([&] {
            for (int n = 0; n < rows.GetCount(); ++n) strRows += rows.GetText(n) + L"|";
        });
        return strRows;
    }
    static int TopRow() {
        int nTop = -1;
        CListBox& rows = Rows();
        Operator::Ask([&] { nTop = rows.GetTopIndex(); });
        return nTop;
    }
    /// Types a name, confirms it, and gives what is told or asked then, which is answered.
    static std::wstring Enter(const wchar_t* pName, int nAnswer = CNoticeBox::ID_OK_CENTRE) {
        Operator::Type(pName);
        PressKey(Key::Enter);
        if (!Operator::ModalWindow() || IsOpen()) return {};
        std::wstring strText = Operator::ModalText();
        EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), nAnswer));
        return strText;
    }

    FingerDialog() {
        std::filesystem::create_directories(m_folder.GetPath() / "store/Zoo");
        std::filesystem::create_directories(m_folder.GetPath() / "store/ape.csv");
        std::filesystem::create_directories(m_folder.GetPath() / "store/.hidden");
        for (const char* pName : {"b.csv", "A.CSV", "c.rt3", ".d.csv", "Zoo/bear.csv"})
            m_folder.Put(std::string("store/") + pName, "");
    }
    const TemporaryFolder m_folder;
};

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

TEST_F(FingerDialog, ShowsWhatAFolderHoldsAndGoesToOthers) {
    const std::wstring strPath = Work(true, [&] {
        EXPECT_EQ(Operator::ModalTitle(), L"Open");
        EXPECT_EQ(Listed(), L"ape.csv|Zoo|A.CSV|b.csv|");
        EXPECT_FALSE(IsEnabled(Front(), IDOK));
        Operator::Select(Rows(), L"b.csv");
        EXPECT_EQ(TextOf(Front(), ID_NAME), L"b.csv");
        EXPECT_TRUE(IsEnabled(Front(), IDOK));
        Operator::Select(Rows(), L"Zoo");
        EXPECT_EQ(Listed(), L"bear.csv|");
        EXPECT_TRUE(Operator::Tap(Front(), ID_FOLDER_UP));
        EXPECT_EQ(Listed(), L"ape.csv|Zoo|A.CSV|b.csv|");
        for (int n = 0; n < 2; ++n) {  // a row can be picked again
            Operator::Select(Rows(), L"b.csv");
            EXPECT_EQ(TextOf(Front(), ID_NAME), L"b.csv");
            Operator::Type(L"x");
        }

        // One that has gone is told, and the other one stays.
        std::filesystem::remove(m_folder.GetPath() / "store/ape.csv");
        Operator::Select(Rows(), L"ape.csv");
        EXPECT_TRUE(Operator::ModalText().starts_with(L"The folder cannot be opened.\n"));
        PressKey(Key::Enter);
        EXPECT_EQ(Listed(), L"ape.csv|Zoo|A.CSV|b.csv|");

        EXPECT_TRUE(Enter(L"none").ends_with(L"none.csv\nNo such file or directory."));
        Operator::Select(Rows(), L"b.csv");
        Operator::Tap(Front(), IDOK);
    });
    EXPECT_EQ(strPath, m_folder.Path("store/b.csv"));
    EXPECT_EQ(Work(true, [] { Enter(L"a"); }), m_folder.Path("store/A.CSV"));

    Work(true, [] {
        for (int n = 0; n < 100 && IsEnabled(Front(), ID_FOLDER_UP); ++n)
            Operator::Tap(Front(), ID_FOLDER_UP);
        EXPECT_EQ(Front().GetFolder(), L"/");
    });
}

TEST_F(FingerDialog, SavesWithinTheFolderAndAsksBeforeItReplaces) {
    EXPECT_EQ(Work(false,
                   [&] {
                       EXPECT_EQ(Operator::ModalTitle(), L"Save as");
                       for (const wchar_t* pName : {L"../b", L"a/b", L"/tmp/b", L"a\\b", L".."})
                           EXPECT_EQ(Enter(pName), std::wstring(L"This cannot be used as a file "
                                                                L"name.\n") +
                                                       pName);
                       EXPECT_EQ(Enter(L"B", IDCANCEL),
                                 L"There is a file of this name. Replace it?\nb.csv");
                   }),
              L"");
    EXPECT_EQ(Work(false, [] { EXPECT_EQ(Enter(L" probe 1.5 "), L""); }),
              m_folder.Path("store/probe 1.5.csv"));
    EXPECT_EQ(Work(false, [] { EXPECT_EQ(Enter(L"new.CSV"), L""); }),
              m_folder.Path("store/new.CSV"));
    EXPECT_EQ(Work(false, [] { Enter(L"a", IDOK); }), m_folder.Path("store/A.CSV"));
    EXPECT_EQ(m_folder.CountEntries(), 1u);
    EXPECT_EQ(Work(
                  false, [] { EXPECT_EQ(Listed(), L""); }, "missing"),
              L"");
    EXPECT_EQ(m_folder.CountEntries(), 1u);
    EXPECT_EQ(Work(
                  false, [] { Enter(L"x"); }, "missing"),
              m_folder.Path("missing/x.csv"));
    EXPECT_TRUE(std::filesystem::is_directory(m_folder.GetPath() / "missing"));
}

TEST_F(FingerDialog, IsWorkedByFingerAlone) {
    std::filesystem::create_directory(m_folder.GetPath() / "many");
    for (int n = 10; n < 60; ++n) m_folder.Put("many/" + std::to_string(n) + ".csv", "");
    const auto work = [&] {
        const CFingerFileDialog& dialog = Front();
        Operator::Ask([&dialog] {
            const CRect client = dialog.GetClientRect();
            EXPECT_TRUE(client.Width() <= 780 && client.Height() <= 420);
            for (const int nID :
                 {+ID_FOLDER_UP, +ID_PAGE_UP, +ID_PAGE_DOWN, +ID_NAME, IDOK, IDCANCEL}) {
                CRect rect = dialog.GetControl(nID)->GetWindowRect();
                dialog.ScreenToClient(rect);
                EXPECT_TRUE(rect.Width() >= 40 && rect.Height() >= 40) << nID;
                EXPECT_TRUE(rect.right <= client.right && rect.bottom <= client.bottom) << nID;
            }
        });
        const auto drag = [](int nFrom, int nTo) {
            Operator::Press(Rows(), {200, nFrom});
            for (int n = 1; n <= 10; ++n) {
                Operator::Wait(15);
                Operator::MoveTo(Rows(), {200, nFrom + (nTo - nFrom) * n / 10});
            }
            EXPECT_TRUE(nFrom < nTo || TopRow() == 4) << "180 pixels are four rows";
            Operator::Release(Rows(), {200, nTo});
        };
        drag(240, 60);
        EXPECT_TRUE(Operator::WaitUntil([] { return TopRow() > 4; }, 5000));
        EXPECT_EQ(TextOf(Front(), ID_NAME), L"") << "a drag selects nothing";
        Operator::Wait(400);  // it moves on for a while
        drag(20, 260);
        Operator::Wait(400);
        for (int n = 0; n < 12; ++n) Operator::Tap(Front(), ID_PAGE_UP);
        EXPECT_EQ(TopRow(), 0);
        Operator::Tap(Front(), ID_PAGE_DOWN);
        EXPECT_EQ(TopRow(), 6);
        // The third row on show: rows are 44 pixels high.
        Operator::Press(Rows(), {200, 2 * 44 + 22});
        Operator::Release(Rows(), {200, 2 * 44 + 22});
        EXPECT_EQ(TextOf(Front(), ID_NAME), L"18.csv");

        EXPECT_TRUE(Operator::Tap(Front(), ID_NAME));
        EXPECT_TRUE(AwaitModal(L"File name"));
        EXPECT_TRUE(Operator::PressModalButton(L"k"));
        Operator::Tap(*Operator::ModalWindow(), IDOK);
        EXPECT_EQ(TextOf(Front(), ID_NAME), L"18.csvk");
        EXPECT_TRUE(Operator::Tap(Front(), IDOK));
    };
    EXPECT_EQ(Work(false, work, "many"), m_folder.Path("many/18.csvk.csv"));
}
