#include "tests/siblings/EntryWork.h"

namespace {

TEST(NumberPad, TapsBuildANumber) {
    const Outcome outcome = EnterNumber(L"", 0, [] {
        EXPECT_NE(Operator::ModalText().find(L"Enter sample time"), std::wstring::npos);
        Tap({L"1", L"2", L".", L"6"});
        Tap({CNumberPadWindow::ID_SIGN});
        EXPECT_EQ(Entered(), L"-12.6");
        Tap({CNumberPadWindow::ID_SIGN, IDOK});
    });
    EXPECT_EQ(outcome.m_nResult, 1);
    EXPECT_EQ(outcome.m_strText, L"12.6");
    EXPECT_EQ(outcome.m_dNumber, 12.6);
}

TEST(NumberPad, OnlyNumbersAreTypedWithTheDecimalsOfTheOption) {
    for (const auto& [nOption, pText] : {std::pair{0, L"-12.9"}, std::pair{1, L"-12.951"}}) {
        const Outcome outcome = EnterNumber(L"", static_cast<unsigned char>(nOption), [] {
            Operator::Type(L"-1e2x,9512 -.");
            Operator::PressKey(Key::Enter);
        });
        EXPECT_EQ(outcome.m_strText, pText);
    }
}

TEST(NumberPad, TheFirstKeyReplacesTheInitialNumberUnlessThatIsEdited) {
    const std::tuple<std::function<void()>, bool, const wchar_t*> cases[] = {
        {[] {}, false, L"7"},
        {[] {}, true, L"7"},
        {[] { Tap({CEntryWindow::ID_BACKSPACE}); }, false, L"5007"},
        {[] { Operator::PressKey(Key::Backspace); }, true, L"5007"},
        {[] { Select(4, 4); }, false, L"50007"}};
    for (const auto& [edit, bTyped, pText] : cases) {
        const Outcome outcome = EnterNumber(L"5000", 1, [&] {
            edit();
            bTyped ? Operator::Type(L"7") : Tap({L"7"});
            Tap({IDOK});
        });
        EXPECT_EQ(outcome.m_strText, pText);
    }
    EXPECT_EQ(EnterNumber(L"-5000", 1, [] { Tap({IDOK}); }).m_dNumber, -5000.0);
}

TEST(NumberPad, EntryThatIsNoNumberIsRefused) {
    const Outcome outcome = EnterNumber(L"Lower", 1, [] {
        EXPECT_EQ(Entered(), L"");
        const auto isRefused = [] { return Operator::ModalText().ends_with(L"? 0\u20139"); };
        Tap({IDOK});
        EXPECT_TRUE(isRefused());
        Tap({CNumberPadWindow::ID_SIGN});
        EXPECT_FALSE(isRefused());
        Tap({L"."});
        Operator::PressKey(Key::Enter);
        EXPECT_TRUE(isRefused());
        Tap({IDCANCEL});
    });
    EXPECT_EQ(outcome.m_nResult, 0);
    EXPECT_EQ(outcome.m_strText, L"untouched");
    EXPECT_EQ(outcome.m_dNumber, -1.0);
}

}  // namespace
