#include <set>

#include "platform/system/NumberedText.h"
#include "tests/siblings/EntryWork.h"
#include "tests/support/ScaledDisplay.h"

namespace {

bool IsRefused() { return Operator::ModalText().find(L"No name given") != std::wstring::npos; }

TEST(Keyboard, TapsBuildAName) {
    const Outcome outcome = EnterText(L"", [] {
        EXPECT_EQ(Operator::ModalTitle(), L"Real Time file name");
        Tap({CKeyboardWindow::ID_SHIFT});
        Tap({L"R", L"u", L"n", L"_", L"1", L"2"});
        Tap({CEntryWindow::ID_BACKSPACE, CKeyboardWindow::ID_SPACE, CKeyboardWindow::ID_SIGNS});
        Tap({L"ä", L"#"});
        Tap({CKeyboardWindow::ID_CHARACTER + 15});  // "&", beside "%"
        // The second shift stays until the third.
        Tap({CKeyboardWindow::ID_SIGNS, CKeyboardWindow::ID_SHIFT, CKeyboardWindow::ID_SHIFT});
        Tap({L"A", L"B"});
        Tap({CKeyboardWindow::ID_SHIFT});
        Tap({L"c"});
        Tap({IDOK});
    });
    EXPECT_EQ(outcome.m_nResult, 1);
    EXPECT_EQ(outcome.m_strText, L"Run_1 ä#&ABc");
}

TEST(Keyboard, TypesGermanWhereTheLanguageAsksForIt) {
    const std::wstring strLayout = L"QWERTZ";
    const CTextSource german(
        [&](std::int32_t nString) { return nString == 3170 ? &strLayout : nullptr; });
    const auto key = [](int n) { return CKeyboardWindow::ID_CHARACTER + n; };
    const Outcome outcome = EnterText(L"", [&] {
        Tap({key(10), key(15), key(29), key(30), key(31), key(38), key(39), key(40), key(41)});
        Tap({CKeyboardWindow::ID_SHIFT, CKeyboardWindow::ID_SHIFT});
        Tap({key(15), key(29), key(30), key(31), key(38)});
        Tap({CKeyboardWindow::ID_SIGNS, CKeyboardWindow::ID_SHIFT});
        Tap({L".", L",", L"(", L")", L"["});
        Tap({IDOK});
    });
    EXPECT_EQ(outcome.m_strText, L"qz\u00F6\u00E4y\u00FC\u00DF-_Z\u00D6\u00C4Y\u00DC.,()[");
}

TEST(Keyboard, BlankEntryIsRefusedWithTheCallersText) {
    const Outcome outcome = EnterText(L"", [] {
        Tap({IDOK});
        EXPECT_TRUE(IsRefused());
        Tap({CKeyboardWindow::ID_SPACE});
        EXPECT_FALSE(IsRefused());
        Operator::PressKey(Key::Enter);
        EXPECT_TRUE(IsRefused());
        Tap({CEntryWindow::ID_CLEAR});
        Tap({L"x"});
        Tap({IDOK});
    });
    EXPECT_EQ(outcome.m_strText, L"x");
}

TEST(Keyboard, CancelLeavesTheValueAlone) {
    for (const bool bKey : {true, false}) {
        const Outcome outcome = EnterText(L"run1", [&] {
            Tap({L"z"});
            EXPECT_EQ(Entered(), L"run1z");
            bKey ? Operator::PressKey(Key::Escape) : Tap({IDCANCEL});
        });
        EXPECT_EQ(outcome.m_nResult, 0);
        EXPECT_EQ(outcome.m_strText, L"run1");
    }
}

TEST(Keyboard, TapsAndAPluggedInKeyboardWorkAtTheCaret) {
    const Outcome outcome = EnterText(L"run1", [] {
        Select(0, 3);
        Tap({L"p", L"q", L"q", L"q"});
        Select(2, 4);
        Tap({CEntryWindow::ID_BACKSPACE, CEntryWindow::ID_BACKSPACE});
        Operator::Type(L"o 7");
        Select(5, 5);
        Tap({L"x"});
        Operator::Type(L"yz");
        Operator::PressKey(Key::Backspace);
        Operator::PressKey(Key::Tab);
        Operator::Type(L".!");
        Operator::PressKey(Key::Enter);
    });
    EXPECT_EQ(outcome.m_nResult, 1);
    EXPECT_EQ(outcome.m_strText, L"po 71xy.!");
}

/// Nothing outside of the window or on top of something else.
TEST(Keyboard, KeysStandApartAndFitAThumb) {
    const auto check = [] {
        const CWnd& window = FrontWindow();
        Operator::Ask([&] {
            const CRect client = window.GetClientRect();
            EXPECT_TRUE(client.Width() <= Scaled(795) && client.Height() <= Scaled(455));
            std::vector<CRect> placed;
            for (int nID = 1; nID < CEntryWindow::KEY_END; ++nID) {
                const CWnd* pControl = window.GetControl(nID);
                if (!pControl) continue;
                CRect rect = pControl->GetWindowRect();
                window.ScreenToClient(rect);
                const bool bKey = dynamic_cast<const CButton*>(pControl);
                const int nThumb = Scaled(48);
                EXPECT_TRUE(!bKey || (rect.Width() >= nThumb && rect.Height() >= nThumb)) << nID;
                EXPECT_TRUE(rect.left >= 0 && rect.right <= client.right) << nID;
                EXPECT_TRUE(rect.top >= 0 && rect.bottom <= client.bottom) << nID;
                for (const CRect& other : placed)
                    EXPECT_TRUE(rect.right <= other.left || rect.left >= other.right ||
                                rect.bottom <= other.top || rect.top >= other.bottom)
                        << nID;
                placed.push_back(rect);
            }
            EXPECT_GE(placed.size(), 19u);
        });
    };
    for (const double dScale : {0.8, 1.0, 1.37, 3.0}) {
        const ScaledDisplay display(dScale);
        EnterText(L"", check);
        EnterNumber(L"", 1, check);
    }
}

/// How many pixels of a part of the entry's window have a colour.
int CountPixels(int nID, COLORREF colour) {
    const CBitmap picture = Operator::TakePicture(*FrontWindow().GetControl(nID));
    int nCount = 0;
    for (int y = 0; y < picture.GetSize().cy; ++y)
        for (int x = 0; x < picture.GetSize().cx; ++x) nCount += picture.GetPixel(x, y) == colour;
    return nCount;
}

TEST(Keyboard, ShowsItsStateAndWhatIsWrong) {
    EnterText(L"", [] {
        std::set<std::string> states;
        for (int nTaps = 0; nTaps < 6; ++nTaps) {
            Tap({CKeyboardWindow::ID_SHIFT});
            const CWnd& key = *FrontWindow().GetControl(CKeyboardWindow::ID_SHIFT);
            const auto picture = Operator::TakePicture(key).EncodePng();
            if (nTaps >= 3) states.emplace(picture.begin(), picture.end());
        }
        EXPECT_EQ(states.size(), 3u);
        Tap({CKeyboardWindow::ID_SIGNS, IDOK});
        EXPECT_GT(CountPixels(CEntryWindow::ID_HINT, RGB(165, 25, 25)), 20);
        EXPECT_GT(CountPixels(CKeyboardWindow::ID_CHARACTER + 15, RGB(0, 0, 0)), 10) << "ampersand";
        EXPECT_EQ(Operator::TakePicture(FrontWindow()).GetPixel(0, 0), RGB(104, 132, 168));
    });
}

}  // namespace
