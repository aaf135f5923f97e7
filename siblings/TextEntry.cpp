#include "siblings/TextEntry.h"

#include <algorithm>

namespace {

/// The control characters proper, and the line and paragraph separators.
bool IsControl(wchar_t ch) {
    return ch < 0x20 || (ch >= 0x7F && ch < 0xA0) || ch == 0x2028 || ch == 0x2029;
}

int LengthOf(const std::wstring& strText) { return static_cast<int>(strText.size()); }

}  // namespace

CTextEntry::CTextEntry(const std::wstring& strInitial) : m_strText(strInitial) {
    std::erase_if(m_strText, IsControl);
    if (LengthOf(m_strText) > MAX_LENGTH) m_strText.resize(MAX_LENGTH);
    m_nStart = m_nEnd = LengthOf(m_strText);
}

void CTextEntry::Select(int nStart, int nEnd) {
    m_nStart = std::clamp(nStart, 0, LengthOf(m_strText));
    m_nEnd = std::clamp(nEnd, m_nStart, LengthOf(m_strText));
}

void CTextEntry::Insert(wchar_t ch) {
    if (LengthOf(m_strText) - (m_nEnd - m_nStart) >= MAX_LENGTH) return;
    Replace(m_nStart, m_nEnd, std::wstring(1, ch));
}

void CTextEntry::Backspace() {
    Replace(m_nStart == m_nEnd ? std::max(m_nStart - 1, 0) : m_nStart, m_nEnd, {});
}

void CTextEntry::Clear() { Replace(0, LengthOf(m_strText), {}); }

bool CTextEntry::TakeTyped(const std::wstring& strText) {
    if (LengthOf(strText) > MAX_LENGTH || std::any_of(strText.begin(), strText.end(), IsControl))
        return false;
    m_strText = strText;
    m_nStart = m_nEnd = LengthOf(m_strText);
    return true;
}

void CTextEntry::Replace(int nStart, int nEnd, const std::wstring& strNew) {
    m_strText.replace(static_cast<std::size_t>(nStart), static_cast<std::size_t>(nEnd - nStart),
                      strNew);
    m_nStart = m_nEnd = nStart + LengthOf(strNew);
}
