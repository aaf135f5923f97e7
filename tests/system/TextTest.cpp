#include <gtest/gtest.h>

#include "platform/system/Text.h"

namespace {

TEST(Text, GivesBackAnyBytes) {
    std::string strAll;
    for (int n = 255; n >= 0; --n) strAll.push_back(static_cast<char>(n));
    // A name in an older encoding, an overlong slash, a surrogate, a cut sequence, beyond the last.
    for (const std::string& strBytes :
         {strAll, std::string("M\xFCller.rt3"), std::string("\xC0\xAF"),
          std::string("\xED\xA0\x80"), std::string("x\xE2\x82"), std::string("\xF4\x90\x80\x80")})
        EXPECT_EQ(ToUtf8(FromUtf8(strBytes)), strBytes);
    EXPECT_NE(FromUtf8("\xC0\xAF"), L"/");
    const std::wstring strNone{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), L'x'};
    EXPECT_EQ(ToUtf8(strNone), "\xEF\xBF\xBD\xEF\xBF\xBDx");
}

}  // namespace
