// Which character each key of the keyboard gives, and how the shift and signs keys change that. No
// window is involved.
#pragma once

enum class KeyboardLanguage { English, German };

/// The character keys, row by row from the top left. The space key is not one of them.
constexpr int KEY_COUNTS[] = {10, 10, 11, 9, 2};
constexpr int CHARACTER_KEYS = 42;

class CKeyboardLayout {
  public:
    /// Off, for the next letter only, or until it is pressed again.
    enum class Shift { Off, Once, Locked };

    explicit CKeyboardLayout(KeyboardLanguage language) : m_language(language) {}

    /// @param nKey from 0 up to, but not including, CHARACTER_KEYS
    wchar_t GetCharacter(int nKey) const;

    KeyboardLanguage GetLanguage() const { return m_language; }
    Shift GetShift() const { return m_shift; }
    bool IsSigns() const { return m_bSigns; }

    /// Goes on to the next state: off, once, locked, off.
    void PressShift();
    /// Changes between the letters, and the signs and accented letters.
    void PressSigns() { m_bSigns = !m_bSigns; }
    /// A character key has been pressed: a shift for one letter is used up.
    void UseShift();

  private:
    KeyboardLanguage m_language;
    Shift m_shift = Shift::Off;
    bool m_bSigns = false;
};
