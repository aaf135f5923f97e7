// Captures saved, listed, loaded and exported through the screen's real controls.
#include <gtest/gtest.h>

#include "tests/screen/LanguagePanel.h"
#include "tests/support/FileBytes.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"

namespace {

const std::string SMALL = FileBytes{FileBytes::SmallCapture()}.Text();

struct Files : ::testing::Test {
    LanguagePanel m_language{false, 1, 0};
    TestPanel& m_panel = *m_language.m_pPanel;
    const TemporaryFolder& m_folder = m_language.m_folder;
};

}  // namespace

TEST_F(Files, AreSavedWithinTheStoreAndLoadedOnThePanel) {
    m_panel.Run([&] {
        m_panel.Tap(IDC_START);
        m_panel.m_queue.push(MakeSamples(5, {100, -200, 300, -50}));
        m_panel.m_queue.push(MakeIdleReport());
        m_panel.Settle();
        m_panel.SaveAs(L"../evil");
        EXPECT_EQ(Operator::ModalTitle(), L"Data Error");
        EXPECT_EQ(Operator::ModalText(), L"../evil\ncannot be used as a file name.");
        Operator::PressKey(Operator::Key::Escape);
        EXPECT_EQ(m_folder.CountEntries(), 1u);  // the folder of the language files
        for (int n = 0; n < 2; ++n) {            // the second replaces the first
            m_panel.SaveAs(L"run1");
            EXPECT_EQ(m_folder.Get("RealTimeFiles/run1.rt3").size(), SMALL.size());
        }

        std::filesystem::create_directory(m_folder.GetPath() / "RealTimeFiles/folder.RT3");
        m_folder.Put("RealTimeFiles/Apple.RT3", SMALL);
        m_folder.Put("RealTimeFiles/Apple.rt3", "");  // called the same but for its extension
        m_panel.Tap(IDC_LOAD);
        CWnd* pList = Operator::ModalWindow();
        const CWnd* pRows = pList->GetControl(CDlgListFiles::ID_FILES);
        EXPECT_FALSE(Operator::Select(*pRows, L"folder"));
        EXPECT_TRUE(Operator::Select(*pRows, L"Apple.RT3"));
        EXPECT_TRUE(Operator::Tap(*pList, IDOK));
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - Apple.RT3");
        EXPECT_EQ(m_panel.ValuesOf(0), (std::vector<std::int16_t>{100, -200, 300, -50}));

        m_panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        Operator::Type(L"out");
        Operator::PressKey(Operator::Key::Enter);
        EXPECT_TRUE(m_folder.Get("RealTimeFiles/out.csv").starts_with("Force, Distance\r\n0.100,"));
    });
}

TEST_F(Files, AreChosenInDialogsOrDroppedOnADesktop) {
    const auto strWhole =
        FileBytes().Long(4).Byte(1).Byte(0).Word(5000).Word(2500).Spans({4, 7, 1}).Text();
    const auto strOlder = FileBytes().Long(3).Byte(1).Byte(2).Text();
    CRealTimeData& session = *m_panel.m_pSession;
    session.m_bDesktopMode = 1;
    session.m_nHostValueRate = 1000;
    m_folder.Put("seen.RT3", SMALL);
    m_panel.Run([&] {
        // A failed load changes only what its file gave.
        using Fields = std::array<int, 5>;  // value, graph and second rate, two spans
        const std::tuple<std::string, std::size_t, Fields> cases[] = {
            {strWhole, 0, {40000, 1000, 20000, 1, 1}},  {strWhole, 7, {40000, 1000, 20000, 1, 1}},
            {strOlder, 5, {40000, 1000, 20000, 1, 1}},  {strWhole, 9, {5000, 5000, 20000, 1, 1}},
            {strWhole, 18, {5000, 5000, 2500, 4, 1}},   {strWhole, 23, {5000, 5000, 2500, 4, 7}},
            {strOlder, 6, {32000, 32000, 16000, 4, 7}}, {strWhole, 0, {32000, 32000, 16000, 4, 7}},
            {SMALL, 106, {40000, 40000, 20000, 4, 1}},
        };
        for (const auto& [strFile, nLength, expected] : cases) {
            m_folder.Put("cut.rt3", strFile.substr(0, nLength));
            Operator::DropFiles(*m_panel.m_pDialog,
                                {m_folder.Path("cut.rt3"), m_folder.Path("seen.RT3")});
            EXPECT_NE(Operator::ModalText().find(L"cut.rt3"), std::wstring::npos);
            EXPECT_TRUE(Operator::PressModalButton(L"OK"));
            EXPECT_EQ(
                (Fields{session.m_nValueRate, session.m_graph.m_nGraphRate, session.m_nAuxRate,
                        session.m_aPlots[0].m_nSpanValues, session.m_aPlots[1].m_nSpanValues}),
                expected)
                << nLength;
        }
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - cut.rt3");
        EXPECT_EQ(m_panel.ValuesOf(0).size(), 4u) << "the one curve that was whole";

        m_panel.Tap(IDC_LOAD);
        m_panel.AnswerFileDialog(m_folder.Path("seen.RT3"));
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - seen.RT3");
        m_panel.Tap(IDC_SAVE);
        m_panel.AnswerFileDialog(m_folder.Path("copy"));
        EXPECT_EQ(m_folder.Get("copy.rt3"), SMALL);
        for (const bool bExport : {false, true}) {
            bExport ? m_panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV) : m_panel.Tap(IDC_SAVE);
            Operator::PressKey(Operator::Key::Escape);
            EXPECT_EQ(Operator::ModalWindow(), m_panel.m_pDialog.get()) << "and no error box";
        }
        EXPECT_EQ(m_folder.CountEntries(), 4u);  // those three and the language folder
    });
}
