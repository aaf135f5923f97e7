// Words about the link: in English for what is logged, in the operator's language for what is
// shown.
#pragma once

#include <initializer_list>
#include <string>

#include "platform/system/NumberedText.h"

struct LinkText {
    std::string m_strEnglish;
    std::wstring m_strShown;

    LinkText() = default;
    LinkText(const NumberedText& text, std::initializer_list<std::string> arguments = {});
    /// What is the same in every language, or known only as it is: a name, the system's words.
    explicit LinkText(const std::string& strText);

    bool IsEmpty() const { return m_strEnglish.empty(); }
    /// Adds a text behind what there is; nothing stands in front of the first.
    void Add(const char* pSeparator, const LinkText& text);
    friend bool operator==(const LinkText&, const LinkText&) = default;
};
