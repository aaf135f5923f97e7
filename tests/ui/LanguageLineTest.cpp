#include <gtest/gtest.h>

#include "ui/LanguageLine.h"
#include "ui/LanguageTable.h"

namespace {

/// "number=text" of a line, or "skipped".
std::wstring Parse(std::u16string_view line) {
    const auto parsed = ParseLanguageLine(line);
    return parsed ? std::to_wstring(parsed->m_nString) + L"=" + parsed->m_strText : L"skipped";
}

}  // namespace

TEST(LanguageLine, IsTakenApart) {
    for (const std::u16string_view line :
         {u"12\tx\t1508\ty\tZoom", u"11\tx\t1508\ty\t\tout", u"", u"11\t11\t11\t11",
          u"11\t\t1\t\t\r", u"5\t\t1\t\tof another screen"})
        EXPECT_EQ(Parse(line), L"skipped");
    const std::pair<std::u16string_view, const wchar_t*> lines[] = {
        {u"11\tx\t1508\ty\tZoom", L"1508=Zoom"},
        {u"0\t\t101\t\tSpannung", L"101=Spannung"},
        {u"11\tx\t1508\ty\tZoom\tout\tof it", L"1508=Zoom"},
        {u"\t\t\t\tx", L"0=x"},
        {u"  +11x\t\t -7.9\t\ta", L"-7=a"},
        {u"0\t\t+-5\t\ta", L"0=a"},
        {u"0\t\t0x10\t\ta", L"0=a"},
        {u"0\t\t18446744073709551619\t\ta", L"2147483647=a"},
        {u"11\t\t1\t\tZo\rom\r\r", L"1=Zo\rom\r"},
        {u"11\t\t1\t\tone\\ntwo", L"1=one\ntwo"},
        {u"11\t\t1\t\t\\none\\n\\n", L"1=\none\n\n"},
        {u"11\t\t1\t\tC:\\\\new\\N\\", L"1=C:\\\new\\N\\"},
        {u"11\t\t1\t\t\u00C4\u4E2D\U0001F600.", L"1=\u00C4\u4E2D\U0001F600."}};
    for (const auto& [line, pParsed] : lines) EXPECT_EQ(Parse(line), pParsed);
    const char16_t broken[] = {u'0', u'\t', u'\t', u'1', u'\t', u'\t', 0xDE00, 0xD83D, 0};
    EXPECT_EQ(Parse({broken, std::size(broken)}).size(), 5u);
}

TEST(LanguageFile, IsReadLineByLine) {
    // A byte-order mark, both line ends, an empty line, a later text that wins, an empty one that
    // does not, and an odd byte at the end.
    const std::u16string_view text =
        u"\uFEFF11\t\t1\t\tone\r\n12\t\t2\t\ttwo\r\n\n11\t\t1\t\tuno\n11\t\t1\t\t\r\n"
        u"11\t\t3\t\tthr\u0439e.";
    const auto* pBytes = reinterpret_cast<const std::uint8_t*>(text.data());
    CLanguageTable table;
    ParseLanguageFile({pBytes, 2 * text.size() - 1}, table);
    ParseLanguageFile({pBytes, 1}, table);
    ASSERT_EQ(table.GetCount(), 2u);
    EXPECT_EQ(*table.Find(1), L"uno");
    EXPECT_EQ(*table.Find(3), L"thr\u0439e");
}
