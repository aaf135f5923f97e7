// What the keyboard's keys do to the text that is entered. No window is involved.
//
// The text holds no control characters and at most MAX_LENGTH characters; keys work on a selection
// in it, which is the caret's place when it is empty.
#pragma once

#include <string>

class CTextEntry {
  public:
    /// With its extension a file name of this length fits the 255 bytes that file systems give it,
    /// also in letters of two bytes.
    static constexpr int MAX_LENGTH = 100;

    /// @param strInitial the text to begin with, without its control characters, cut to the
    /// greatest
    ///        length; the caret stands behind it
    explicit CTextEntry(const std::wstring& strInitial);

    const std::wstring& GetText() const { return m_strText; }
    int GetSelectionStart() const { return m_nStart; }
    int GetSelectionEnd() const { return m_nEnd; }

    /// Whether there is nothing but spaces.
    bool IsBlank() const { return m_strText.find_first_not_of(L' ') == std::wstring::npos; }

    /// Selects the characters from nStart up to, but not including, nEnd; limited to the text.
    void Select(int nStart, int nEnd);

    /// Puts a character in place of the selection; a full text takes no more.
    void Insert(wchar_t ch);
    /// Removes the selection, or else the character in front of the caret.
    void Backspace();
    void Clear();

    /// Takes over a text that was changed by other means than the keys; the caret then stands
    /// behind it until the next Select.
    /// @return false when it is too long or holds a control character; everything stays as it was
    bool TakeTyped(const std::wstring& strText);

  private:
    void Replace(int nStart, int nEnd, const std::wstring& strNew);

    std::wstring m_strText;
    int m_nStart = 0;
    int m_nEnd = 0;
};
