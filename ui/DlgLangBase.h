// The base of every dialog that takes its texts from the language table.
#pragma once

#include <string>

#include "platform/windows/Dialog.h"

class CLanguageTable;

/// The two operations on texts belong to the screen and are not for hosts.
class CDlgLangBase : public CDialogEx {
  public:
    using CDialogEx::CDialogEx;

    /// Called by the screen right after it has handed a bar or dialog the language table.
    virtual void InitLanguage() {}

    /// Gives a control the table's text for a string number, else the fallback.
    /// @return false, with the control unchanged, when there is no such control, no table, or only
    ///         an empty text
    bool SetLangText(int nControl, std::int32_t nString, const std::wstring& strFallback);

    /// The table's text for a string number, else the built-in text.
    std::wstring GetLangText(std::int32_t nString, const std::wstring& strBuiltIn) const;

    CLanguageTable* m_pLangTable = nullptr;  ///< borrowed, or null
};
