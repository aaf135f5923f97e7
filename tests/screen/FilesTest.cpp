// Captures saved, listed, loaded and exported through the screen's real controls.
#include <gtest/gtest.h>

#include "platform/system/Paths.h"
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

    TemporaryFolder m_folder;
};

}  // namespace

TEST_F(FilesTest, SavesWithinTheStoreAndLoadsOnThePanel) {
    TestPanel panel(1);
    panel.Run([&] {
        CaptureExample(panel);
        panel.SaveAs(L"../evil");
        EXPECT_EQ(Operator::ModalTitle(), L"Data Error");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(m_folder.CountEntries(), 1u);  // the folder of the language files
        for (int n = 0; n < 2; ++n) {            // the second replaces the first
            panel.SaveAs(L"run1");
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

TEST_F(FilesTest, AFailedLoadChangesOnlyWhatItsFileGave) {
    const auto whole =
        FileBytes().Long(4).Byte(1).Byte(0).Word(5000).Word(2500).Spans({4, 7, 1}).m_bytes;
    const auto older = FileBytes().Long(3).Byte(1).Byte(2).m_bytes;
    TestPanel panel(1);
    CRealTimeData& session = *panel.m_pSession;
    session.m_bDesktopMode = 1;
    session.m_nHostValueRate = 1000;
    panel.Run([&] {
        using Fields = std::array<int, 5>;  // value, graph and second rate, two spans
        const std::tuple<std::vector<std::uint8_t>, std::size_t, Fields> cases[] = {
            {whole, 0, {40000, 1000, 20000, 1, 1}},  {whole, 7, {40000, 1000, 20000, 1, 1}},
            {older, 5, {40000, 1000, 20000, 1, 1}},  {whole, 9, {5000, 5000, 20000, 1, 1}},
            {whole, 18, {5000, 5000, 2500, 4, 1}},   {whole, 23, {5000, 5000, 2500, 4, 7}},
            {older, 6, {32000, 32000, 16000, 4, 7}}, {whole, 0, {32000, 32000, 16000, 4, 7}},
        };
        for (const auto& [bytes, nLength, expected] : cases) {
            m_folder.Put("cut.rt3", std::string(bytes.begin(), bytes.end()).substr(0, nLength));
            Operator::DropFiles(*panel.m_pDialog, {m_folder.Path("cut.rt3")});
            EXPECT_TRUE(Operator::PressModalButton(L"OK"));
            EXPECT_EQ(
                (Fields{session.m_nValueRate, session.m_graph.m_nGraphRate, session.m_nAuxRate,
                        session.m_aPlots[0].m_nSpanValues, session.m_aPlots[1].m_nSpanValues}),
                expected)
                << nLength;
        }
    });
}

TEST_F(FilesTest, WorksWithFileDialogsOnADesktop) {
    m_folder.Put("seen.RT3", Example());
    TestPanel panel(1);
    panel.m_pSession->m_bDesktopMode = 1;
    panel.Run([&] {
        EXPECT_FALSE(panel.IsEnabled(IDC_START));
        panel.Tap(IDC_LOAD);
        panel.AnswerFileDialog(m_folder.Path("seen.RT3"));
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - seen.RT3");
        EXPECT_EQ(panel.ValuesOf(0).size(), 4u);

        panel.Tap(IDC_SAVE);
        panel.AnswerFileDialog(m_folder.Path("copy"));
        EXPECT_EQ(m_folder.Get("copy.rt3"), Example());

        panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        panel.AnswerFileDialog(m_folder.Path("out"));
        EXPECT_EQ(m_folder.Get("out.csv"), "Force, Distance\r\n0.100,-0.200\r\n0.300,-0.050");

        for (const bool bExport : {false, true}) {
            bExport ? panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV) : panel.Tap(IDC_SAVE);
            Operator::PressKey(Operator::Key::Escape);
            EXPECT_EQ(Operator::ModalWindow(), panel.m_pDialog.get()) << "and no error box";
        }
        EXPECT_EQ(m_folder.CountEntries(), 4u);  // those three and the language folder

        m_folder.Put("dropped.rt3", Example());
        Operator::DropFiles(*panel.m_pDialog, {m_folder.Path("dropped.rt3")});
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - dropped.rt3");
    });
}
