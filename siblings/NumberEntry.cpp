#include "siblings/NumberEntry.h"

#include <algorithm>
#include <charconv>

namespace {

bool IsDigit(wchar_t ch) { return ch >= L'0' && ch <= L'9'; }

bool IsNegative(const std::wstring& strText) { return !strText.empty() && strText[0] == L'-'; }

bool HasDigit(const std::wstring& strText) {
    return std::any_of(strText.begin(), strText.end(), IsDigit);
}

bool IsEntry(const std::wstring& strText, int nMaxDecimals) {
    int nDigits = 0;
    int nDecimals = 0;
    bool bPoint = false;
    for (std::size_t i = IsNegative(strText) ? 1 : 0; i < strText.size(); ++i) {
        if (IsDigit(strText[i])) {
            ++nDigits;
            nDecimals += bPoint ? 1 : 0;
        } else if (strText[i] == L'.' && !bPoint) {
            bPoint = true;
        } else {
            return false;
        }
    }
    return nDigits <= CNumberEntry::MAX_DIGITS && nDecimals <= nMaxDecimals;
}

/// Removes zeros in front of another digit.
void StripLeadingZeros(std::wstring& strText) {
    const std::size_t nFirst = IsNegative(strText) ? 1 : 0;
    std::size_t nEnd = nFirst;
    while (nEnd + 1 < strText.size() && strText[nEnd] == L'0' && IsDigit(strText[nEnd + 1])) ++nEnd;
    strText.erase(nFirst, nEnd - nFirst);
}

}  // namespace

CNumberEntry::CNumberEntry(const std::wstring& strInitial, int nMaxDecimals)
    : m_nMaxDecimals(nMaxDecimals) {
    const std::size_t nFirst = strInitial.find_first_not_of(L' ');
    if (nFirst == std::wstring::npos) return;
    const std::size_t nLast = strInitial.find_last_not_of(L' ');
    if (Accept(strInitial.substr(nFirst, nLast + 1 - nFirst), MAX_DIGITS) && HasDigit(m_strText))
        m_bUntouched = true;
    else
        m_strText.clear();
}

void CNumberEntry::Press(wchar_t chKey) {
    if (chKey == L'-') {
        m_bSignTurned = m_bUntouched;
        Accept(IsNegative(m_strText) ? m_strText.substr(1) : L'-' + m_strText, MAX_DIGITS);
        return;
    }
    if (!m_bUntouched) {
        Accept(m_strText + chKey, m_nMaxDecimals);
        return;
    }
    const bool bKeepSign = m_bSignTurned && IsNegative(m_strText);
    if (Accept((bKeepSign ? L"-" : L"") + std::wstring(1, chKey), m_nMaxDecimals))
        m_bUntouched = false;
}

void CNumberEntry::Backspace() {
    m_bUntouched = false;
    if (!m_strText.empty()) m_strText.pop_back();
}

void CNumberEntry::Clear() {
    m_bUntouched = false;
    m_strText.clear();
}

bool CNumberEntry::TakeTyped(const std::wstring& strText) {
    // A text that was given with more decimals can still be shortened.
    const bool bShorter = strText.size() < m_strText.size();
    if (!Accept(strText, bShorter ? MAX_DIGITS : m_nMaxDecimals)) return false;
    m_bUntouched = false;
    return true;
}

bool CNumberEntry::Accept(std::wstring strText, int nMaxDecimals) {
    std::replace(strText.begin(), strText.end(), L',', L'.');
    StripLeadingZeros(strText);
    if (!IsEntry(strText, nMaxDecimals)) return false;
    m_strText = std::move(strText);
    return true;
}

std::optional<CNumberEntry::Value> CNumberEntry::GetValue() const {
    if (!HasDigit(m_strText)) return std::nullopt;
    Value value{m_strText, 0.0};
    if (value.m_strText.back() == L'.') value.m_strText.pop_back();
    const std::size_t nFirst = IsNegative(value.m_strText) ? 1 : 0;
    if (value.m_strText[nFirst] == L'.') value.m_strText.insert(nFirst, 1, L'0');

    const std::string strPlain(value.m_strText.begin(), value.m_strText.end());
    std::from_chars(strPlain.data(), strPlain.data() + strPlain.size(), value.m_dNumber);
    if (value.m_dNumber == 0.0 && nFirst == 1) {
        // There is no minus zero on an instrument.
        value.m_strText.erase(0, 1);
        value.m_dNumber = 0.0;
    }
    return value;
}
