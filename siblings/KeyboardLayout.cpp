#include "siblings/KeyboardLayout.h"

#include <string_view>

namespace {

// What a file name cannot hold on one system or another has no key: \ / : * ? " < > |
constexpr std::wstring_view LETTERS = L"1234567890"
                                      L"qwertyuiop"
                                      L"asdfghjkl-_"
                                      L"zxcvbnm.,"
                                      L"()";
constexpr std::wstring_view CAPITALS = L"1234567890"
                                       L"QWERTYUIOP"
                                       L"ASDFGHJKL-_"
                                       L"ZXCVBNM.,"
                                       L"()";
constexpr std::wstring_view SIGNS = L"1234567890"
                                    L"!@#$%&+=~^"
                                    L"äöüßåæøéè-_"
                                    L"ñçáàâêíóú"
                                    L"[]";
constexpr std::wstring_view CAPITAL_SIGNS = L"1234567890"
                                            L"';`´§°²³µ€"
                                            L"ÄÖÜßÅÆØÉÈ-_"
                                            L"ÑÇÁÀÂÊÍÓÚ"
                                            L"{}";
static_assert(LETTERS.size() == CHARACTER_KEYS && CAPITALS.size() == CHARACTER_KEYS);
static_assert(SIGNS.size() == CHARACTER_KEYS && CAPITAL_SIGNS.size() == CHARACTER_KEYS);

}  // namespace

wchar_t CKeyboardLayout::GetCharacter(int nKey) const {
    const bool bCapitals = m_shift != Shift::Off;
    const std::wstring_view plane =
        m_bSigns ? (bCapitals ? CAPITAL_SIGNS : SIGNS) : (bCapitals ? CAPITALS : LETTERS);
    return plane.at(static_cast<std::size_t>(nKey));
}

void CKeyboardLayout::PressShift() {
    m_shift = m_shift == Shift::Off    ? Shift::Once
              : m_shift == Shift::Once ? Shift::Locked
                                       : Shift::Off;
}

void CKeyboardLayout::UseShift() {
    if (m_shift == Shift::Once) m_shift = Shift::Off;
}
