#include "ui/LanguageTable.h"

const std::wstring* CLanguageTable::Find(std::int32_t nString) const {
    const auto found = m_texts.find(nString);
    return found == m_texts.end() ? nullptr : &found->second;
}

void CLanguageTable::Set(std::int32_t nString, std::wstring strText) {
    m_texts.insert_or_assign(nString, std::move(strText));
}
