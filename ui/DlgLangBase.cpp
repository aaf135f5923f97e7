#include "ui/DlgLangBase.h"

#include "ui/LanguageTable.h"

std::wstring CDlgLangBase::GetLangText(std::int32_t nString, const std::wstring& strBuiltIn) const {
    const std::wstring* pText = m_pLangTable ? m_pLangTable->Find(nString) : nullptr;
    return pText ? *pText : strBuiltIn;
}

bool CDlgLangBase::SetLangText(int nControl, std::int32_t nString,
                               const std::wstring& strFallback) {
    CWnd* pControl = GetControl(nControl);
    if (!pControl || !m_pLangTable) return false;
    const std::wstring strText = GetLangText(nString, strFallback);
    if (strText.empty()) return false;
    pControl->SetWindowText(strText);
    return true;
}
