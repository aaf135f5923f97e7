#include "link/LinkText.h"

#include <vector>

#include "platform/system/Text.h"

LinkText::LinkText(const NumberedText& text, std::initializer_list<std::string> arguments) {
    std::vector<std::wstring> fillings;
    for (const std::string& strArgument : arguments) fillings.push_back(FromUtf8(strArgument));
    m_strEnglish = ToUtf8(FillText(text.m_pEnglish, fillings));
    m_strShown = FillText(GetText(text), fillings);
}

LinkText::LinkText(const std::string& strText)
    : m_strEnglish(strText), m_strShown(FromUtf8(strText)) {}

void LinkText::Add(const char* pSeparator, const LinkText& text) {
    if (!IsEmpty()) {
        m_strEnglish += pSeparator;
        m_strShown += FromUtf8(pSeparator);
    }
    m_strEnglish += text.m_strEnglish;
    m_strShown += text.m_strShown;
}
