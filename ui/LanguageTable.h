// The texts of the instrument's language by their string numbers.
//
// The screen makes one table at its set-up, fills it, and lends it to its bars and dialogs. After
// that nobody changes it.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

class CLanguageTable {
  public:
    /// The text of a string number, or null when the language has none. The text stays where it is
    /// until the table is changed.
    const std::wstring* Find(std::int32_t nString) const;

    /// Replaces the text that the number had.
    void Set(std::int32_t nString, std::wstring strText);

    void Clear() { m_texts.clear(); }
    std::size_t GetCount() const { return m_texts.size(); }

  private:
    std::unordered_map<std::int32_t, std::wstring> m_texts;
};
