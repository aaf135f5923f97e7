// What the number pad's keys do to the text that is entered. No window is involved.
//
// An entry is an optional minus sign, digits, and at most one decimal point; at most MAX_DIGITS
// digits in all. Texts are read and given with a point, whatever the locale; a comma counts as one.
#pragma once

#include <optional>
#include <string>

class CNumberEntry {
  public:
    /// More digits than a double keeps would be given back as another number than was typed.
    static constexpr int MAX_DIGITS = 12;

    struct Value {
        std::wstring m_strText;  ///< as typed, but written out: "0.5" for ".5", "7" for "7."
        double m_dNumber;
    };

    /// @param strInitial the text to begin with; one that is no number gives a blank entry
    /// @param nMaxDecimals digits that can be typed behind the point; an initial text may have more
    CNumberEntry(const std::wstring& strInitial, int nMaxDecimals);

    const std::wstring& GetText() const { return m_strText; }

    /// Whether the initial text still stands as it was given: the first digit or point then takes
    /// its place, as on a calculator.
    bool IsUntouched() const { return m_bUntouched; }

    /// Keeps the initial text for editing.
    void BeginEditing() { m_bUntouched = false; }

    /// A key: a digit, the point, or '-', which turns the sign. A key that would not leave an entry
    /// as described above does nothing. A sign turned on an untouched text is that of the number
    /// typed next.
    void Press(wchar_t chKey);

    /// Removes the last character; of an untouched text too, which is edited from then on.
    void Backspace();
    void Clear();

    /// Takes over a text that was changed by other means than the keys.
    /// @return false when it is not an entry as described above; the text stays as it was
    bool TakeTyped(const std::wstring& strText);

    /// The number, or nothing while the text is none (blank, "-", ".").
    std::optional<Value> GetValue() const;

  private:
    bool Accept(std::wstring strText, int nMaxDecimals);

    int m_nMaxDecimals;
    bool m_bUntouched = false;
    bool m_bSignTurned = false;  ///< on an untouched text
    std::wstring m_strText;
};
