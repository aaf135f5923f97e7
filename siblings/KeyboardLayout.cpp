#include "siblings/KeyboardLayout.h"

#include <string_view>

namespace {

// What a file name cannot hold on one system or another has no key: \ / : * ? " < > |
struct Planes {
    std::wstring_view m_letters, m_capitals, m_signs, m_capitalSigns;
};

constexpr Planes ENGLISH{L"1234567890"
                         L"qwertyuiop"
                         L"asdfghjkl-_"
                         L"zxcvbnm.,"
                         L"()",
                         L"1234567890"
                         L"QWERTYUIOP"
                         L"ASDFGHJKL-_"
                         L"ZXCVBNM.,"
                         L"()",
                         L"1234567890"
                         L"!@#$%&+=~^"
                         L"äöüßåæøéè-_"
                         L"ñçáàâêíóú"
                         L"[]",
                         L"1234567890"
                         L"';`´§°²³µ€"
                         L"ÄÖÜßÅÆØÉÈ-_"
                         L"ÑÇÁÀÂÊÍÓÚ"
                         L"{}"};

// As many keys as in English: the umlauts and the sharp s take those of signs that a name needs
// less, which stand among the signs.
constexpr Planes GERMAN{L"1234567890"
                        L"qwertzuiop"
                        L"asdfghjklöä"
                        L"yxcvbnmüß"
                        L"-_",
                        L"1234567890"
                        L"QWERTZUIOP"
                        L"ASDFGHJKLÖÄ"
                        L"YXCVBNMÜß"
                        L"-_",
                        L"1234567890"
                        L"!@#$%&+=~^"
                        L".,()åæøéè[]"
                        L"ñçáàâêíóú"
                        L"-_",
                        L"1234567890"
                        L"';`´§°²³µ€"
                        L".,()ÅÆØÉÈ{}"
                        L"ÑÇÁÀÂÊÍÓÚ"
                        L"-_"};

constexpr bool IsWhole(const Planes& planes) {
    return planes.m_letters.size() == CHARACTER_KEYS &&
           planes.m_capitals.size() == CHARACTER_KEYS && planes.m_signs.size() == CHARACTER_KEYS &&
           planes.m_capitalSigns.size() == CHARACTER_KEYS;
}
static_assert(IsWhole(ENGLISH) && IsWhole(GERMAN));

}  // namespace

wchar_t CKeyboardLayout::GetCharacter(int nKey) const {
    const bool bCapitals = m_shift != Shift::Off;
    const Planes& planes = m_language == KeyboardLanguage::German ? GERMAN : ENGLISH;
    const std::wstring_view plane = m_bSigns ? (bCapitals ? planes.m_capitalSigns : planes.m_signs)
                                             : (bCapitals ? planes.m_capitals : planes.m_letters);
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
