// What assistive technology is told of every window: each control has a name, in the panel's
// language.
#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>

#include "platform/system/NumberedText.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/FingerFileDialog.h"
#include "siblings/KeyboardWindow.h"
#include "siblings/NumberPadWindow.h"
#include "tests/screen/LanguagePanel.h"
#include "tests/support/FileBytes.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"
#include "ui/DlgSettings.h"
#include "ui/ProgressBox.h"

namespace {

/// Looks at the front window, whose texts are their numbers.
/// @param nControls how many buttons, edits, lists and pictures it shows
void ExpectNames(const char* pWindow, int nControls) {
    SCOPED_TRACE(pWindow);
    int nFound = 0;
    for (const auto& [strKind, strName] : Operator::ListAccessible(*Operator::ModalWindow())) {
        EXPECT_FALSE(strName.empty()) << strKind;
        if (strKind == "text" || strKind == "row") continue;
        ++nFound;
        const bool bTranslated = std::any_of(strName.begin(), strName.end(), std::iswdigit);
        EXPECT_TRUE(bTranslated || strName.size() == 1) << strKind << ToUtf8(strName);
        EXPECT_NE(strKind, "other") << ToUtf8(strName);
    }
    EXPECT_EQ(nFound, nControls);
}

TEST(Accessible, EveryControlHasANameInTheLanguageOfThePanel) {
    LanguagePanel language(true, 1, 0);
    TestPanel& panel = *language.m_pPanel;
    std::filesystem::create_directory(language.m_folder.GetPath() / "RealTimeFiles");
    language.m_folder.Put("RealTimeFiles/a.rt3", FileBytes{FileBytes::SmallCapture()}.Text());
    const auto close = [] { Operator::PressKey(Operator::Key::Escape); };
    panel.Run([&] {
        ExpectNames("screen", 13 + 4);
        panel.TapBar(CDlgBarMainMenu::ID_INFO);
        ExpectNames("screen with the info bar", 13 + 8);
        panel.TapBar(CDlgBarInfo::ID_BACK);
        panel.Tap(IDC_SAMPLE_TIME);
        ExpectNames("number pad", 17);
        close();
        panel.Tap(IDC_SETTINGS);
        ExpectNames("settings", 4);
        Operator::Tap(*Operator::ModalWindow(), CDlgSettings::ID_RANGE_MIN);
        EnterOnPad(L"155", L"99999");
        ExpectNames("message box", 1);
        for (int n = 0; n < 2; ++n) close();
        panel.Tap(IDC_SAVE);
        ExpectNames("keyboard", CHARACTER_KEYS + 8);
        close();
        panel.Tap(IDC_LOAD);
        ExpectNames("file list", 5);
        Operator::Select(*Operator::ModalWindow()->GetControl(CDlgListFiles::ID_FILES), L"a");
        Operator::Tap(*Operator::ModalWindow(), IDOK);
        panel.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        ExpectNames("file dialog", 7);
        close();
        panel.m_pDialog->PostCall([] { ShowErrorBox(GetText({3101, L""})); });
        Operator::Ask([] {});
        EXPECT_EQ(Operator::ModalText(), L"3101");
        ExpectNames("error box", 1);
        close();
        panel.m_pDialog->PostCall([] {
            CProgressBox progress(L"1510");
            progress.CreateModal(nullptr);
            ExpectNames("progress box", 2);
        });
        Operator::Ask([] {});
    });
}

}  // namespace
