// Saving, loading and exporting that take long: what the operator sees, and what is left when he
// cancels.
#include <gtest/gtest.h>

#include "tests/screen/LanguagePanel.h"
#include "tests/support/Clock.h"
#include "tests/support/FileBytes.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"

namespace {

class Cancelled : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Work, Cancelled, ::testing::Bool());

}  // namespace

TEST_P(Cancelled, LeavesNothingHalfDone) {
    LanguagePanel language(GetParam(), 1, 0);
    TestPanel& panel = *language.m_pPanel;
    const TemporaryFolder& folder = language.m_folder;
    const FileBytes small{FileBytes::SmallCapture()};
    std::filesystem::create_directory(folder.GetPath() / "RealTimeFiles");
    folder.Put("RealTimeFiles/small.rt3", small.Text());
    panel.m_pSession->m_nHostValueRate = 65535;
    panel.Run([&] {
        panel.Tap(IDC_START);
        for (int n = 0; n < 4; ++n)
            panel.m_queue.push(MakeSamples(0, std::vector<std::int16_t>(65534, 1)));
        panel.Settle();
        /// Confirms an entry, and cancels the work that begins then as soon as it is shown.
        const auto cancel = [&](int nString, const wchar_t* pEnglish, const auto& confirm) {
            const std::wstring strTitle = language.Text(nString, pEnglish);
            int nShown = 0;
            {
                const CHastyClock clock(1000, [&] {
                    if (Operator::ModalText().find(L'%') == std::wstring::npos) return;
                    if (Operator::ModalTitle() != strTitle) return;
                    ++nShown;
                    Operator::Tap(*Operator::ModalWindow(), IDCANCEL);
                });
                confirm();
                Operator::WaitUntil(
                    [&] { return Operator::ModalWindow() == panel.m_pDialog.get(); }, 60000);
            }
            EXPECT_EQ(nShown, 1) << pEnglish;
        };
        const auto enter = [] { Operator::PressKey(Operator::Key::Enter); };

        panel.Tap(IDC_SAVE);
        Operator::Type(L"small");
        cancel(1510, L"Save", enter);
        EXPECT_EQ(folder.Get("RealTimeFiles/small.rt3").size(), small.m_bytes.size())
            << "the old file";

        panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        Operator::Type(L"out");
        cancel(1533, L"Export to csv...", enter);
        EXPECT_FALSE(std::filesystem::exists(folder.GetPath() / "RealTimeFiles/out.csv"));
        EXPECT_EQ(panel.ValuesOf(0).size(), 196605u);

        panel.Tap(IDC_LOAD);
        CWnd* pList = Operator::ModalWindow();
        Operator::Select(*pList->GetControl(CDlgListFiles::ID_FILES), L"small");
        cancel(1509, L"Load", [&] { Operator::Tap(*pList, IDOK); });
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode - small");
        EXPECT_EQ(panel.CurveCount(0), 0u);
        EXPECT_TRUE(panel.Tap(IDC_ZOOM_ALL));
        EXPECT_TRUE(panel.IsEnabled(IDC_LOAD));
    });
}
