#include "siblings/TextEntry.h"

#include <gtest/gtest.h>

#include "siblings/KeyboardLayout.h"

namespace {

TEST(TextEntry, FullTextTakesNoMore) {
    CTextEntry entry(std::wstring(500, L'x'));
    EXPECT_EQ(entry.GetText().size(), 100u);
    entry.Insert(L'y');
    entry.Select(0, 1);
    entry.Insert(L'y');
    EXPECT_EQ(entry.GetText(), L'y' + std::wstring(99, L'x'));
    EXPECT_FALSE(entry.TakeTyped(std::wstring(101, L'z')));
    EXPECT_TRUE(entry.TakeTyped(std::wstring(100, L'z')));
}

TEST(TextEntry, ControlCharactersStayOut) {
    CTextEntry entry(L"a\nb\x7f\u2028c");
    EXPECT_FALSE(entry.TakeTyped(L"a\tb"));
    EXPECT_EQ(entry.GetText(), L"abc");
}

TEST(KeyboardLayout, EveryFileNameCharacterOfAsciiHasAKey) {
    std::wstring strReachable = L" ";
    for (const bool bSigns : {false, true}) {
        for (const bool bShift : {false, true}) {
            CKeyboardLayout layout;
            if (bSigns) layout.PressSigns();
            if (bShift) layout.PressShift();
            for (int nKey = 0; nKey < CHARACTER_KEYS; ++nKey)
                strReachable += layout.GetCharacter(nKey);
        }
    }
    const std::wstring strRefused = L"\\/:*?\"<>|";
    for (wchar_t ch = L' '; ch < 0x7F; ++ch)
        EXPECT_EQ(strReachable.find(ch) == std::wstring::npos,
                  strRefused.find(ch) != std::wstring::npos)
            << "character " << static_cast<int>(ch);
}

}  // namespace
