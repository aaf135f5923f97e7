#include <gtest/gtest.h>

#include "platform/system/NamedMutex.h"
#include "tests/support/Controls.h"
#include "ui/BigMessageBox.h"

namespace {

using enum CBigMessageBox::Control;
using Key = Operator::Key;

}  // namespace

TEST(BigMessageBox, EndsWithTheButtonOrKeyThatWasPressed) {
    const struct {
        BYTE m_nButtons;
        int m_nButton;  ///< 0: a key
        Key m_key;
        int m_nResult;
    } cases[] = {
        {BIGBTN_OK_CENTRE, ID_OK_CENTRE, {}, 1},
        {BIGBTN_OK_CENTRE, 0, Key::Enter, 1},
        {6, IDOK, {}, 1},
        {6, 0, Key::Enter, 1},
        {6, IDCANCEL, {}, 2},
        {14, IDNO, {}, 7},
        {0, 0, Key::Escape, 2},
    };
    for (const auto& [nButtons, nButton, key, nResult] : cases) {
        SCOPED_TRACE(nButtons);
        CBigMessageBox box;
        box.m_nButtons = nButtons;
        EXPECT_EQ(RunModal(box,
                           [&, nButton = nButton, key = key] {
                               if (nButton)
                                   EXPECT_TRUE(Operator::Tap(box, nButton));
                               else
                                   Operator::PressKey(key);
                               EXPECT_NE(Operator::ModalWindow(), &box);
                           }),
                  nResult);
    }
    CBigMessageBox box;  // Enter does not acknowledge what no button acknowledges
    RunModal(box, [&] {
        Operator::PressKey(Key::Enter);
        EXPECT_EQ(Operator::ModalWindow(), &box);
    });
}

TEST(BigMessageBox, ShowsItsTextsAndHoldsTheMutexWhileItIsOpen) {
    constexpr const wchar_t* NAME = L"StrovaneBigMessageBox";
    Operator::CScript script([&] {
        EXPECT_TRUE(AwaitModal(L"Title"));
        EXPECT_TRUE(CNamedMutex::Exists(NAME));
        EXPECT_EQ(Operator::ModalText(), L"Text");
        Operator::Tap(*Operator::ModalWindow(), IDNO);
    });
    EXPECT_EQ(ShowBigMessageBox(L"Title", L"Text", BIGBTN_NO, true), IDNO);
    EXPECT_FALSE(CNamedMutex::Exists(NAME));
}
