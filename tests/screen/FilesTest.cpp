// Captures saved, listed, loaded and exported through the screen's real controls.
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/resource.h>

#include "platform/system/Paths.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/FileBytes.h"
#include "tests/support/Panel.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"

namespace {

class FilesTest : public ::testing::Test {
  protected:
    FilesTest() { SetProgramFolder(m_folder.Path("")); }
    ~FilesTest() override { SetProgramFolder(L""); }

    static std::string Example() {
        const std::vector<std::uint8_t> bytes = FileBytes::SmallCapture();
        return {bytes.begin(), bytes.end()};
    }

    /// A capture of the four values and one pulse of the small capture: capacity 4 at a rate of 4
    /// values in one second.
    static void CaptureExample(TestPanel& panel) {
        panel.m_pSession->m_nHostValueRate = 4;
        panel.Tap(IDC_SAMPLE_TIME);
        EXPECT_TRUE(EnterOnPad(L"Enter sample time (1-60 seconds)", L"1"));
        panel.Tap(IDC_START);
        panel.m_queue.push(MakeSamples(5, {100, -200, 300, -50}));
        panel.Settle();
    }
    /// What a save of that capture holds: the small capture with a value rate of 4.
    static std::string SavedExample() {
        std::string bytes = Example();
        bytes[6] = 4;
        bytes[7] = 0;
        return bytes;
    }

    static void SaveAs(TestPanel& panel, const std::wstring& strName) {
        panel.Tap(IDC_SAVE);
        ASSERT_TRUE(AwaitModal(L"Real Time file name"));
        Operator::Type(strName);
        Operator::PressKey(Operator::Key::Enter);
        Operator::Wait(30);
    }
    static void AnswerFileDialog(const TestPanel& panel, const std::wstring& strPath) {
        Operator::AnswerFileDialog(strPath);
        Operator::WaitFor("the screen",
                          [&] { return Operator::ModalWindow() == panel.m_pDialog.get(); });
    }

    TemporaryFolder m_folder;
};

}  // namespace

TEST_F(FilesTest, SavesWithinTheStoreAndLoadsOnThePanel) {
    TestPanel panel(1);
    panel.Run([&] {
        CaptureExample(panel);
        SaveAs(panel, L"../evil");
        EXPECT_EQ(Operator::ModalTitle(), L"Data Error");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(m_folder.CountEntries(), 1u);  // the folder of the language files
        for (int n = 0; n < 2; ++n) {            // the second replaces the first
            SaveAs(panel, L"run1");
            EXPECT_EQ(m_folder.Get("RealTimeFiles/run1.rt3"), SavedExample());
        }

        std::filesystem::create_directory(m_folder.GetPath() / "RealTimeFiles/folder.RT3");
        m_folder.Put("RealTimeFiles/Apple.RT3", Example());
        panel.Tap(IDC_LOAD);
        CWnd* pList = Operator::ModalWindow();
        ASSERT_TRUE(pList);
        EXPECT_EQ(Operator::ModalText(), L"Select Real Time file to open");
        EXPECT_FALSE(Operator::Tap(*pList, IDOK));
        CWnd* pRows = pList->GetControl(CDlgListFiles::ID_FILES);
        EXPECT_FALSE(Operator::Select(*pRows, L"folder"));
        EXPECT_TRUE(Operator::Select(*pRows, L"Apple"));
        EXPECT_TRUE(Operator::Tap(*pList, IDOK));
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - Apple");
        EXPECT_EQ(panel.ValuesOf(0), (std::vector<std::int16_t>{100, -200, 300, -50}));
        EXPECT_EQ(panel.m_pSession->m_nValueRate, 40000);
        EXPECT_EQ(int{panel.m_pSession->m_graph.m_nGraphRate}, 40000);
        EXPECT_EQ(panel.m_pSession->m_aPlots[0].m_nViewEnd, 4);
    });
}

TEST_F(FilesTest, ReportsASaveThatFailsAndKeepsTheOldFile) {
    TestPanel panel(1);
    panel.Run([&] {
        CaptureExample(panel);
        SaveAs(panel, L"run1");

        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit tight{50, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
        panel.Tap(IDC_START);
        panel.m_queue.push(MakeSamples(5, {1, 2, 3, 4}));
        panel.Settle();
        SaveAs(panel, L"run1");
        const std::wstring strText = Operator::ModalText();
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_NE(strText.find(L"run1.rt3"), std::wstring::npos);
        EXPECT_NE(strText.find(FromUtf8(std::strerror(EFBIG))), std::wstring::npos);
        Operator::PressModalButton(L"OK");

        EXPECT_EQ(m_folder.Get("RealTimeFiles/run1.rt3"), SavedExample());
        EXPECT_EQ(
            std::distance(std::filesystem::directory_iterator(m_folder.GetPath() / "RealTimeFiles"),
                          std::filesystem::directory_iterator()),
            1);
        EXPECT_TRUE(panel.IsEnabled(IDC_START));
    });
}

TEST_F(FilesTest, ReportsALoadThatFails) {
    std::filesystem::create_directory(m_folder.GetPath() / "RealTimeFiles");
    m_folder.Put("RealTimeFiles/short.rt3", Example().substr(0, 106));
    TestPanel panel(1);
    panel.Run([&] {
        CaptureExample(panel);
        panel.Tap(IDC_LOAD);
        CWnd* pList = Operator::ModalWindow();
        Operator::Select(*pList->GetControl(CDlgListFiles::ID_FILES), L"short");
        Operator::Tap(*pList, IDOK);
        EXPECT_NE(Operator::ModalText().find(L"short.rt3"), std::wstring::npos);
        EXPECT_TRUE(Operator::PressModalButton(L"OK"));
        // the new title, the one curve that was whole, and a screen that goes on
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - short");
        EXPECT_EQ(panel.CurveCount(0), 1u);
        EXPECT_EQ(panel.ValuesOf(0).size(), 4u);
        EXPECT_TRUE(panel.Tap(IDC_CLEAR));
    });
}

TEST_F(FilesTest, WorksWithFileDialogsOnADesktop) {
    m_folder.Put("seen.RT3", Example());
    TestPanel panel(1);
    panel.m_pSession->m_bDesktopMode = 1;
    panel.Run([&] {
        EXPECT_FALSE(panel.IsEnabled(IDC_START));
        panel.Tap(IDC_LOAD);
        AnswerFileDialog(panel, m_folder.Path("seen.RT3"));
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - seen.RT3");
        EXPECT_EQ(panel.ValuesOf(0).size(), 4u);

        panel.Tap(IDC_SAVE);
        AnswerFileDialog(panel, m_folder.Path("copy"));
        EXPECT_EQ(m_folder.Get("copy.rt3"), Example());

        panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        AnswerFileDialog(panel, m_folder.Path("out"));
        EXPECT_EQ(m_folder.Get("out.csv"), "Force, Distance\r\n0.100,-0.200\r\n0.300,-0.050");

        panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(m_folder.CountEntries(), 4u);  // those three and the language folder

        m_folder.Put("dropped.rt3", Example());
        Operator::DropFiles(*panel.m_pDialog, {m_folder.Path("dropped.rt3")});
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - dropped.rt3");
    });
}
