// A panel that speaks a language of the test's.
#pragma once

#include "platform/system/Paths.h"
#include "platform/windows/Controls.h"
#include "tests/support/Panel.h"

/// A panel with a language whose texts are their numbers, or with none.
struct LanguagePanel {
    LanguagePanel(bool bNumbers, std::uint8_t nMode, std::uint8_t nPositionInput)
        : m_bNumbers(bNumbers) {
        std::filesystem::create_directory(m_folder.GetPath() / "lang");
        std::string text;
        for (int n = 0; bNumbers && n < 3300; ++n)
            for (const char ch : "11\t\t" + std::to_string(n) + "\t\t" + std::to_string(n) + "\n")
                text += {ch, '\0'};
        m_folder.Put("lang/English.txt", text);
        SetProgramFolder(m_folder.Path(""));
        m_pPanel = std::make_unique<TestPanel>(nMode, nPositionInput);
    }
    ~LanguagePanel() { SetProgramFolder(L""); }

    std::wstring Text(int nString, const wchar_t* pEnglish) const {
        return m_bNumbers ? std::to_wstring(nString) : pEnglish;
    }
    std::vector<std::wstring> TextsOf(int nList) {
        std::vector<std::wstring> texts;
        Operator::Ask([&] {
            auto* pList = static_cast<CComboBox*>(m_pPanel->m_pDialog->GetControl(nList));
            for (int i = 0; i < pList->GetCount(); ++i) texts.push_back(pList->GetItemText(i));
        });
        return texts;
    }

    bool m_bNumbers;
    TemporaryFolder m_folder;
    std::unique_ptr<TestPanel> m_pPanel;
};
