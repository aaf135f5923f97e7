#include "siblings/NumberEntry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// Presses keys: '<' is backspace, 'c' is clear.
CNumberEntry Enter(const std::wstring& strInitial, const std::wstring& strKeys) {
    CNumberEntry entry(strInitial, 3);
    for (const wchar_t ch : strKeys) {
        if (ch == L'<')
            entry.Backspace();
        else if (ch == L'c')
            entry.Clear();
        else
            entry.Press(ch);
    }
    return entry;
}

TEST(NumberEntry, KeysBuildTheText) {
    struct {
        const wchar_t* m_pInitial;
        const wchar_t* m_pKeys;
        const wchar_t* m_pText;
    } const cases[] = {{L"", L"12.6", L"12.6"},      {L"", L"007", L"7"},
                       {L"", L"000.5", L"0.5"},      {L"", L"1.2.3", L"1.23"},
                       {L"", L"--5", L"5"},          {L"", L"-05", L"-5"},
                       {L"", L"12<3", L"13"},        {L"", L"<<1", L"1"},
                       {L"", L"12c4", L"4"},         {L"", L"123456789012345", L"123456789012"},
                       {L"", L"1.23456", L"1.234"},  {L"5000", L".5", L".5"},
                       {L"5000", L"<<<<<", L""},     {L"5000", L"-61", L"-61"},
                       {L"-5000", L"61", L"61"},     {L"-5000", L"-61", L"61"},
                       {L"-5000", L"<6", L"-5006"},  {L"5000", L"x", L"5000"},
                       {L"  250.7 ", L"", L"250.7"}, {L"2,5", L"", L"2.5"},
                       {L"Lower", L"", L""},         {L"-", L"", L""},
                       {L"1234567890123", L"", L""}, {L"1.23456", L"", L"1.23456"},
                       {L"12\u0663", L"", L""}};
    for (const auto& c : cases)
        EXPECT_EQ(Enter(c.m_pInitial, c.m_pKeys).GetText(), c.m_pText)
            << testing::PrintToString(std::wstring(c.m_pInitial)) << " and keys "
            << testing::PrintToString(std::wstring(c.m_pKeys));
}

TEST(NumberEntry, ValueIsWrittenOut) {
    struct {
        const wchar_t* m_pKeys;
        const wchar_t* m_pText;
        double m_dNumber;
    } const cases[] = {
        {L".5", L"0.5", 0.5},       {L".5-", L"-0.5", -0.5},           {L"7.", L"7", 7.0},
        {L"12.50", L"12.50", 12.5}, {L"70000.1", L"70000.1", 70000.1}, {L"0.00-", L"0.00", 0.0}};
    for (const auto& c : cases) {
        const auto value = Enter(L"", c.m_pKeys).GetValue();
        ASSERT_TRUE(value);
        EXPECT_EQ(value->m_strText, c.m_pText);
        EXPECT_EQ(value->m_dNumber, c.m_dNumber);
        EXPECT_EQ(std::signbit(value->m_dNumber), c.m_dNumber < 0);
    }
    for (const wchar_t* pKeys : {L"", L"-", L".", L".-", L"-5<", L"3c"})
        EXPECT_FALSE(Enter(L"", pKeys).GetValue()) << testing::PrintToString(std::wstring(pKeys));
}

TEST(NumberEntry, TypedTextIsTakenOrRefused) {
    CNumberEntry entry(L"", 3);
    EXPECT_TRUE(entry.TakeTyped(L"-12,5"));
    for (const wchar_t* pText : {L"-12.5x", L"12-5", L"1e5", L"1.2.3", L"--1", L"1234567890123",
                                 L"1.2345", L"inf", L"0x10", L"12 5"}) {
        EXPECT_FALSE(entry.TakeTyped(pText)) << testing::PrintToString(std::wstring(pText));
        EXPECT_EQ(entry.GetText(), L"-12.5");
    }
    EXPECT_TRUE(entry.TakeTyped(L""));
    // More decimals than can be typed can be removed.
    CNumberEntry given(L"1.23456", 1);
    EXPECT_TRUE(given.TakeTyped(L"1.2345"));
    EXPECT_FALSE(given.TakeTyped(L"1.23455"));
}

}  // namespace
