#include <gtest/gtest.h>

#include "Support.h"
#include "platform/NamedMutex.h"
#include "ui/BigMessageBox.h"

namespace {

constexpr int OK = 1, CANCEL = 2, OK_CENTRE = 3, NO = 7;

/// Taps a button of a box with some buttons, and gives the box's result.
int TapIn(BYTE nButtons, int nButton, const std::vector<int>& shown) {
    CBigMessageBox box;
    box.m_strMessage = L"Go on?";
    box.m_nButtons = nButtons;
    return RunModal(box, [&] {
        for (const int nID : {OK, CANCEL, OK_CENTRE, NO})
            EXPECT_EQ(IsVisible(box, nID), std::count(shown.begin(), shown.end(), nID) == 1) << nID;
        EXPECT_TRUE(Operator::Tap(box, nButton));
    });
}

/// Whether any ink is in the left eighth of the message.
bool StandsLeft(const std::wstring& strMessage) {
    CBigMessageBox box;
    box.m_strMessage = strMessage;
    bool bInk = false;
    RunModal(box, [&] {
        const CBitmap picture = Operator::TakePicture(box);
        const int nWidth = picture.GetSize().cx;
        for (int y = 13; y < 130; ++y)
            for (int x = 0; x < nWidth / 8; ++x)
                bInk = bInk || picture.GetPixel(x, y) != RGB(211, 228, 250);
    });
    return bInk;
}

}  // namespace

TEST(BigMessageBox, EndsWithTheButtonThatWasTapped) {
    EXPECT_EQ(TapIn(BIGBTN_OK_CENTRE, OK_CENTRE, {OK_CENTRE}), 1);
    EXPECT_EQ(TapIn(6, OK, {OK, CANCEL}), 1);
    EXPECT_EQ(TapIn(6, CANCEL, {OK, CANCEL}), 2);
    EXPECT_EQ(TapIn(14, NO, {OK, NO, CANCEL}), 7);
}

TEST(BigMessageBox, WithoutButtonsEndsOnlyWithEscape) {
    CBigMessageBox box;
    EXPECT_EQ(RunModal(box,
                       [&] {
                           for (const int nID : {OK, CANCEL, OK_CENTRE, NO})
                               EXPECT_FALSE(Operator::Tap(box, nID));
                           Operator::PressKey(Operator::Key::Enter);
                           EXPECT_EQ(Operator::ModalWindow(), &box);
                           Operator::PressKey(Operator::Key::Escape);
                           EXPECT_NE(Operator::ModalWindow(), &box);
                       }),
              2);
}

TEST(BigMessageBox, EnterAcknowledges) {
    CBigMessageBox box;
    box.m_nButtons = BIGBTN_OK_CENTRE;
    EXPECT_EQ(RunModal(box, [] { Operator::PressKey(Operator::Key::Enter); }), 1);
}

TEST(BigMessageBox, CentresOneLineAndStartsSeveralOnTheLeft) {
    EXPECT_FALSE(StandsLeft(L"Hello"));
    EXPECT_TRUE(StandsLeft(L"Hello\nthere"));
}

TEST(BigMessageBox, HoldsTheMutexWhileItIsOpen) {
    constexpr const wchar_t* NAME = L"StrovaneBigMessageBox";
    EXPECT_FALSE(CNamedMutex::Exists(NAME));
    Operator::CScript script([&] {
        EXPECT_TRUE(AwaitModal(L"Title"));
        EXPECT_TRUE(CNamedMutex::Exists(NAME));
        EXPECT_EQ(Operator::ModalText(), L"Text");
        Operator::Tap(*Operator::ModalWindow(), NO);
    });
    EXPECT_EQ(ShowBigMessageBox(L"Title", L"Text", BIGBTN_NO, true), IDNO);
    EXPECT_FALSE(CNamedMutex::Exists(NAME));
}
