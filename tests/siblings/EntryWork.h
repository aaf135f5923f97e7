// The keyboards as the screen uses them: the library is loaded for one entry, worked with taps and
// keys, and released.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/operator/Operator.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Controls.h"
#include "siblings/KeyboardWindow.h"
#include "siblings/NumberPadWindow.h"
#include "siblings/OnscreenKeyboard.h"
#include "tests/support/Controls.h"

using Operator::Key;

/// The entry's window; a script that finds it closed too early ends there.
inline CWnd& FrontWindow() {
    CWnd* pWindow = Operator::ModalWindow();
    if (!pWindow) throw std::runtime_error("the window is closed");
    return *pWindow;
}

inline std::wstring Entered() { return TextOf(FrontWindow(), CEntryWindow::ID_ENTRY); }

/// Taps keys by what stands on them.
inline void Tap(std::initializer_list<const wchar_t*> keys) {
    for (const wchar_t* pKey : keys) EXPECT_TRUE(Operator::PressModalButton(pKey));
}

/// Taps keys by their ids.
inline void Tap(std::initializer_list<int> keys) {
    for (const int nID : keys) EXPECT_TRUE(Operator::Tap(FrontWindow(), nID));
}

inline void Select(int nStart, int nEnd) {
    CWnd* pEdit = FrontWindow().GetControl(CEntryWindow::ID_ENTRY);
    Operator::Ask([&] { dynamic_cast<CEdit&>(*pEdit).SetSelection(nStart, nEnd); });
}

struct Outcome {
    int m_nResult;
    std::wstring m_strText;
    double m_dNumber;
};

/// Makes an entry's call while a script works its window, which is cancelled if it is still open
/// when the script ends.
template <class Function, class... Arguments>
int WorkEntry(const char* pName, const std::function<void()>& script, Arguments... arguments) {
    const CDynamicLibrary library(L"OnscreenKeyboard.dll");
    auto* pShow = library.GetFunction<Function>(pName);
    if (!pShow) throw std::runtime_error(pName);
    Operator::CScript atWork([&] {
        Operator::WaitFor("the keyboard", [] { return Operator::ModalWindow() != nullptr; });
        script();
        if (Operator::ModalWindow()) Operator::PressKey(Key::Escape);
    });
    const int nResult = pShow(arguments...);
    atWork.Join();
    return nResult;
}

inline Outcome EnterText(const std::wstring& strInitial, const std::function<void()>& script) {
    const std::wstring strError = L"No name given", strTitle = L"Real Time file name";
    Outcome outcome{0, strInitial, 0.0};
    unsigned char flags[3] = {};
    outcome.m_nResult =
        WorkEntry<decltype(ShowKeyboard)>("ShowKeyboard", script, &strError, &strTitle,
                                          &outcome.m_strText, &flags[0], &flags[1], &flags[2]);
    return outcome;
}

inline Outcome EnterNumber(const std::wstring& strInitial, unsigned char nOption,
                           const std::function<void()>& script) {
    const std::wstring strTitle = L"Enter sample time (1-60 seconds)";
    Outcome outcome{0, L"untouched", -1.0};
    unsigned char nOption2 = 0;
    outcome.m_nResult = WorkEntry<decltype(ShowNumberPad)>("ShowNumberPad", script, strTitle,
                                                           strInitial, &outcome.m_strText,
                                                           &outcome.m_dNumber, &nOption, &nOption2);
    return outcome;
}
