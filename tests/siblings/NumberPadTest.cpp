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
    EXPECT_EQ(outcome.nResult, 1);
    EXPECT_EQ(outcome.strText, L"12.6");
    EXPECT_EQ(outcome.dNumber, 12.6);
}

TEST(NumberPad, DecimalsFollowTheOption) {
    const auto type = [] {
        Operator::Type(L"99.9512");
        Tap({IDOK});
    };
    EXPECT_EQ(EnterNumber(L"", 0, type).dNumber, 99.9);
    EXPECT_EQ(EnterNumber(L"", 1, type).dNumber, 99.951);
}

TEST(NumberPad, FirstKeyReplacesTheInitialNumber) {
    const auto tap = [] {
        Tap({L"7"});
        Tap({IDOK});
    };
    const auto press = [] {
        Operator::Type(L"7");
        Tap({IDOK});
    };
    EXPECT_EQ(EnterNumber(L"-5000", 1, tap).strText, L"7");
    EXPECT_EQ(EnterNumber(L"-5000", 1, press).strText, L"7");
    EXPECT_EQ(EnterNumber(L"-5000", 1, [] { Tap({IDOK}); }).dNumber, -5000.0);
}

TEST(NumberPad, BackspaceOrCaretEditTheInitialNumber) {
    const auto tap = [] {
        Tap({CEntryWindow::ID_BACKSPACE});
        Tap({L"7"});
        Tap({IDOK});
    };
    const auto press = [] {
        Operator::PressKey(Key::Backspace);
        Operator::Type(L"7");
        Operator::PressKey(Key::Enter);
    };
    const auto place = [] {
        Select(4, 4);
        Tap({L"7"});
        Tap({IDOK});
    };
    EXPECT_EQ(EnterNumber(L"5000", 1, tap).strText, L"5007");
    EXPECT_EQ(EnterNumber(L"5000", 1, press).strText, L"5007");
    EXPECT_EQ(EnterNumber(L"5000", 1, place).strText, L"50007");
}

TEST(NumberPad, EntryThatIsNoNumberIsRefused) {
    const Outcome outcome = EnterNumber(L"Lower", 1, [] {
        EXPECT_EQ(Entered(), L"");
        const std::wstring strBefore = Operator::ModalText();
        Tap({IDOK});
        EXPECT_NE(Operator::ModalText(), strBefore);
        Tap({CNumberPadWindow::ID_SIGN});
        EXPECT_EQ(Operator::ModalText(), strBefore);
        Tap({L"."});
        Operator::PressKey(Key::Enter);
        EXPECT_NE(Operator::ModalText(), strBefore);
        Tap({IDCANCEL});
    });
    EXPECT_EQ(outcome.nResult, 0);
    EXPECT_EQ(outcome.strText, L"untouched");
    EXPECT_EQ(outcome.dNumber, -1.0);
}

TEST(NumberPad, OnlyNumbersAreTyped) {
    const Outcome outcome = EnterNumber(L"", 1, [] {
        Operator::Type(L"-1e2x,5 -.");
        EXPECT_EQ(Entered(), L"-12.5");
        Operator::PressKey(Key::Enter);
    });
    EXPECT_EQ(outcome.nResult, 1);
    EXPECT_EQ(outcome.dNumber, -12.5);
}

TEST(NumberPad, NullPointersAreTolerated) {
    unsigned char* pNoOption = nullptr;
    const auto script = [] {
        Tap({L"5"});
        Tap({IDOK});
    };
    EXPECT_EQ(WorkEntry<decltype(ShowNumberPad)>(
                  "ShowNumberPad", script, L"", L"", static_cast<std::wstring*>(nullptr),
                  static_cast<double*>(nullptr), pNoOption, pNoOption),
              1);
}

}  // namespace
