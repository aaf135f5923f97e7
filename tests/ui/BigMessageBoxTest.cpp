#include <gtest/gtest.h>

#include "platform/system/NamedMutex.h"
#include "platform/windows/DialogLook.h"
#include "tests/support/Controls.h"
#include "ui/BigMessageBox.h"

namespace {

using enum CBigMessageBox::Control;
using Key = Operator::Key;

/// Whether any ink is in the left eighth of the message.
bool StandsLeft(const std::wstring& strMessage) {
    CBigMessageBox box;
    box.m_strMessage = strMessage;
    bool bInk = false;
    RunModal(box, [&] {
        const CBitmap picture = Operator::TakePicture(box);
        for (int y = 13; y < 130; ++y)
            for (int x = 0; x < picture.GetSize().cx / 8; ++x)
                bInk = bInk || picture.GetPixel(x, y) != DIALOG_BACKGROUND;
    });
    return bInk;
}

}  // namespace

TEST(BigMessageBox, EndsWithTheButtonOrKeyThatWasPressed) {
    const struct {
        BYTE m_nButtons;
        std::vector<int> m_shown;
        int m_nButton;  ///< 0: a key
        Key m_key;
        int m_nResult;
    } cases[] = {
        {BIGBTN_OK_CENTRE, {ID_OK_CENTRE}, ID_OK_CENTRE, {}, 1},
        {BIGBTN_OK_CENTRE, {ID_OK_CENTRE}, 0, Key::Enter, 1},
        {6, {IDOK, IDCANCEL}, IDOK, {}, 1},
        {6, {IDOK, IDCANCEL}, IDCANCEL, {}, 2},
        {14, {IDOK, IDNO, IDCANCEL}, IDNO, {}, 7},
        {0, {}, 0, Key::Escape, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_nButtons);
        CBigMessageBox box;
        box.m_nButtons = c.m_nButtons;
        EXPECT_EQ(RunModal(box,
                           [&] {
                               for (const int nID : {IDOK, IDCANCEL, int{ID_OK_CENTRE}, IDNO})
                                   EXPECT_EQ(IsVisible(box, nID),
                                             std::count(c.m_shown.begin(), c.m_shown.end(), nID) ==
                                                 1);
                               if (c.m_nButton)
                                   EXPECT_TRUE(Operator::Tap(box, c.m_nButton));
                               else
                                   Operator::PressKey(c.m_key);
                               EXPECT_NE(Operator::ModalWindow(), &box);
                           }),
                  c.m_nResult);
    }
    CBigMessageBox box;  // Enter does not acknowledge what no button acknowledges
    RunModal(box, [&] {
        Operator::PressKey(Key::Enter);
        EXPECT_EQ(Operator::ModalWindow(), &box);
    });
}

TEST(BigMessageBox, CentresOneLineAndStartsSeveralOnTheLeft) {
    EXPECT_FALSE(StandsLeft(L"Hello"));
    EXPECT_TRUE(StandsLeft(L"Hello\nthere"));
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
