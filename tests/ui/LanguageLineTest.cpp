#include <gtest/gtest.h>

#include "ui/LanguageLine.h"
#include "ui/LanguageTable.h"

namespace {

std::vector<std::uint8_t> Bytes(std::u16string_view units) {
    std::vector<std::uint8_t> bytes;
    for (const char16_t ch : units) {
        bytes.push_back(static_cast<std::uint8_t>(ch & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(ch >> 8));
    }
    return bytes;
}

/// "number=text" of a line, or "skipped".
std::wstring Parse(std::u16string_view line) {
    const auto parsed = ParseLanguageLine(line);
    return parsed ? std::to_wstring(parsed->nString) + L"=" + parsed->strText : L"skipped";
}

}  // namespace

TEST(LanguageLine, TakesTheFifthFieldOfSections0And11) {
    EXPECT_EQ(Parse(u"11\tx\t1508\ty\tZoom"), L"1508=Zoom");
    EXPECT_EQ(Parse(u"0\t\t101\t\tSpannung"), L"101=Spannung");
    EXPECT_EQ(Parse(u"12\tx\t1508\ty\tZoom"), L"skipped");
    EXPECT_EQ(Parse(u"-11\tx\t1508\ty\tZoom"), L"skipped");
    EXPECT_EQ(Parse(u"11\tx\t1508\ty\tZoom\tout\tof it"), L"1508=Zoom");
    EXPECT_EQ(Parse(u"11\tx\t1508\ty\t\tout"), L"skipped");
}

TEST(LanguageLine, SkipsShortLines) {
    EXPECT_EQ(Parse(u""), L"skipped");
    EXPECT_EQ(Parse(u"no tab"), L"skipped");
    EXPECT_EQ(Parse(u"11\t11\t11\t11"), L"skipped");
    EXPECT_EQ(Parse(u"\t\t\t\t"), L"skipped");
    EXPECT_EQ(Parse(u"\t\t\t\tx"), L"0=x");
}

TEST(LanguageLine, ReadsNumbersUpToTheFirstOtherCharacter) {
    EXPECT_EQ(Parse(u"  +11x\t\t -7.9\t\ta"), L"-7=a");
    EXPECT_EQ(Parse(u"abc\t\t12 3\t\ta"), L"12=a");
    EXPECT_EQ(Parse(u"0\t\t+-5\t\ta"), L"0=a");
    EXPECT_EQ(Parse(u"0\t\t0x10\t\ta"), L"0=a");
    EXPECT_EQ(Parse(u"0\t\t\u0661\uFF11\t\ta"), L"0=a");
    // 2^32 + 11 is no section, 2^64 + 3 no third string
    EXPECT_EQ(Parse(u"4294967307\t\t1\t\ta"), L"skipped");
    EXPECT_EQ(Parse(u"0\t\t18446744073709551619\t\ta"), L"2147483647=a");
    EXPECT_EQ(Parse(u"0\t\t-2147483648\t\ta"), L"-2147483648=a");
    EXPECT_EQ(Parse(u"0\t\t-99999999999999999999\t\ta"), L"-2147483648=a");
}

TEST(LanguageLine, ReadsCarriageReturnsAndLineFeedsInTexts) {
    EXPECT_EQ(Parse(u"11\t\t1\t\tZoom\r"), L"1=Zoom");
    EXPECT_EQ(Parse(u"11\t\t1\t\tZoom\r\tmore\r"), L"1=Zoom");
    EXPECT_EQ(Parse(u"11\t\t1\t\tZo\rom\r\r"), L"1=Zo\rom\r");
    EXPECT_EQ(Parse(u"11\t\t1\t\t\r"), L"skipped");
    EXPECT_EQ(Parse(u"11\t\t1\t\tone\\ntwo"), L"1=one\ntwo");
    EXPECT_EQ(Parse(u"11\t\t1\t\t\\none\\n\\n"), L"1=\none\n\n");
    EXPECT_EQ(Parse(u"11\t\t1\t\tC:\\\\new\\N\\"), L"1=C:\\\new\\N\\");
}

TEST(LanguageLine, KeepsEveryCharacter) {
    EXPECT_EQ(Parse(u"11\t\t1\t\t\u00C4\u4E2D\U0001F600."), L"1=\u00C4\u4E2D\U0001F600.");
    const char16_t broken[] = {u'0', u'\t', u'\t', u'1', u'\t', u'\t', 0xDE00, 0xD83D, 0};
    const auto parsed = ParseLanguageLine({broken, std::size(broken)});
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->strText.size(), 3u);
}

TEST(LanguageFile, ReadsLinesWithAndWithoutMarkAndLineEnds) {
    CLanguageTable table;
    ParseLanguageFile(Bytes(u"\uFEFF11\t\t1\t\tone\r\n12\t\t2\t\ttwo\r\n\n11\t\t3\t\tthree"),
                      table);
    ASSERT_EQ(table.GetCount(), 2u);
    EXPECT_EQ(*table.Find(1), L"one");
    EXPECT_EQ(*table.Find(3), L"three");
    EXPECT_EQ(table.Find(2), nullptr);
}

TEST(LanguageFile, LaterTextsWinAndEmptyOnesDoNot) {
    CLanguageTable table;
    ParseLanguageFile(Bytes(u"0\t\t1\t\tone\n11\t\t1\t\tuno\n11\t\t1\t\t\r\n"), table);
    EXPECT_EQ(*table.Find(1), L"uno");
}

TEST(LanguageFile, LeavesAnOddByteOut) {
    auto bytes = Bytes(u"0\t\t1\t\tone");
    bytes.push_back(u'x');
    CLanguageTable table;
    ParseLanguageFile(bytes, table);
    EXPECT_EQ(*table.Find(1), L"one");
    ParseLanguageFile(std::span(bytes).first(1), table);
    EXPECT_EQ(table.GetCount(), 1u);
}

TEST(LanguageFile, TakesHostileLinesInStride) {
    std::u16string line = u"11\t\t5\t\t";
    for (int n = 0; n < 1'000'000; ++n) line += u"\\n";
    CLanguageTable table;
    ParseLanguageFile(Bytes(line + std::u16string(1'000'000, u'\t')), table);
    EXPECT_EQ(*table.Find(5), std::wstring(1'000'000, L'\n'));
}

TEST(LanguageFile, FirstLineKeepsItsCarriageReturn) {
    EXPECT_EQ(ParseFirstLine(Bytes(u"German")), L"German");
    EXPECT_EQ(ParseFirstLine(Bytes(u"\uFEFFGerman\nEnglish")), L"German");
    EXPECT_EQ(ParseFirstLine(Bytes(u"German\r\n")), L"German\r");
    EXPECT_EQ(ParseFirstLine({}), L"");
}
