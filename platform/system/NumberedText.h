// Texts for the operator. Each has a string number in the language files and English words, which
// are shown where the language has no text of that number.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>

#include "platform/system/Export.h"

struct NumberedText {
    std::int32_t m_nString;
    const wchar_t* m_pEnglish;  ///< "%1" to "%9" stand for what is put in when it is shown

    explicit constexpr operator bool() const { return m_pEnglish != nullptr; }
};

constexpr NumberedText NO_TEXT{-1, nullptr};

/// The texts of the operator's language, lent as long as this object lives; of several sources the
/// youngest is asked.
class PLATFORM_API CTextSource {
  public:
    /// Gives the text of a string number, or null. Called on whatever thread a text is needed, one
    /// call at a time.
    using FindText = std::function<const std::wstring*(std::int32_t nString)>;

    explicit CTextSource(FindText findText);
    ~CTextSource();
    CTextSource(const CTextSource&) = delete;
    CTextSource& operator=(const CTextSource&) = delete;

    const FindText m_findText;
};

/// Words with the arguments put in for "%1" to "%9"; what has no argument stays.
PLATFORM_API std::wstring FillText(const std::wstring& strWords,
                                   std::span<const std::wstring> arguments);

/// The text in the operator's language, with the arguments put in. Any thread.
PLATFORM_API std::wstring GetText(const NumberedText& text,
                                  std::initializer_list<std::wstring> arguments = {});
