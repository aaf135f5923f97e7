// What the random operator does in the windows in front of the screen.
#include "platform/system/Paths.h"
#include "platform/windows/FingerFileDialog.h"
#include "siblings/KeyboardWindow.h"
#include "siblings/NumberPadWindow.h"
#include "soak/RandomOperator.h"
#include "ui/DlgListFiles.h"
#include "ui/DlgSettings.h"

using Operator::PressKey;

void CRandomOperator::WorkKeyboard(const CWnd& keyboard) {
    m_record.Count("keyboard");
    static const std::wstring NAMES[] = {L"run1", L"run2", L"Run1", L"übung",
                                         L"a/b",  L"..",   L"",     std::wstring(300, L'x'),
                                         L"a\\b", L" ",    L"x.rt3"};
    if (OneIn(3)) {
        for (unsigned nKeys = 1 + Pick(6); nKeys > 0; --nKeys)
            Operator::Tap(keyboard,
                          CKeyboardWindow::ID_CHARACTER + static_cast<int>(Pick(CHARACTER_KEYS)));
        constexpr int OTHERS[] = {CKeyboardWindow::ID_SHIFT, CKeyboardWindow::ID_SIGNS,
                                  CKeyboardWindow::ID_SPACE, CEntryWindow::ID_BACKSPACE,
                                  CEntryWindow::ID_CLEAR};
        Operator::Tap(keyboard, OTHERS[Pick(std::size(OTHERS))]);
        return;
    }
    if (OneIn(2)) {
        // Few names, so that files are replaced and the folder does not grow.
        Operator::Tap(keyboard, CEntryWindow::ID_CLEAR);
        Operator::Type(NAMES[OneIn(2) ? Pick(3) : Pick(std::size(NAMES))]);
    }
    EndDialog(keyboard);
}

void CRandomOperator::WorkNumberPad(const CWnd& pad) {
    m_record.Count("number pad");
    if (OneIn(3)) {
        static const std::wstring TEXTS[] = {L"5",    L"1",      L"60", L"61",  L"-7.25", L"abc",
                                             L"99.9", L"999999", L".",  L"1-2", L"0"};
        Operator::Type(TEXTS[Pick(std::size(TEXTS))]);
    } else {
        for (unsigned nKeys = Pick(4); nKeys > 0; --nKeys)
            Operator::Tap(pad, CNumberPadWindow::ID_DIGIT + static_cast<int>(Pick(12)));
        if (OneIn(3)) Operator::Tap(pad, CEntryWindow::ID_BACKSPACE);
        if (OneIn(6)) Operator::Tap(pad, CEntryWindow::ID_CLEAR);
    }
    EndDialog(pad);
}

void CRandomOperator::WorkSettings(const CWnd& settings) {
    m_record.Count("settings dialog");
    constexpr int BUTTONS[] = {CDlgSettings::ID_RANGE_MIN, CDlgSettings::ID_RANGE_MAX,
                               CDlgSettings::ID_AUTO_ZOOM};
    if (OneIn(2))
        Operator::Tap(settings, BUTTONS[Pick(std::size(BUTTONS))]);
    else
        EndDialog(settings);
}

void CRandomOperator::WorkFileList(const CWnd& list) {
    m_record.Count("file list");
    constexpr int ARROWS[] = {CDlgListFiles::ID_DOWN, CDlgListFiles::ID_UP};
    if (OneIn(4)) {
        Operator::Tap(list, ARROWS[Pick(2)]);
    } else if (OneIn(3)) {
        EndDialog(list);
    } else {
        SelectAny(list, CDlgListFiles::ID_FILES);
        if (OneIn(2)) Operator::Tap(list, IDOK);
    }
}

std::wstring CRandomOperator::PickPath() {
    static const std::wstring NAMES[] = {L"run1.rt3",  L"run2.rt3",   L"good.rt3",  L"cut.rt3",
                                         L"noise.rt3", L"absurd.rt3", L"empty.rt3", L"export.csv",
                                         L"none.rt3",  L"none/x.csv", L""};
    if (OneIn(12)) return L"/proc/none/x.csv";
    return JoinPath(JoinPath(m_strFolder, L"RealTimeFiles"), NAMES[Pick(std::size(NAMES))]);
}

void CRandomOperator::WorkFileDialog(const CWnd& dialog) {
    m_record.Count("file dialog");
    using enum CFingerFileDialog::Control;
    constexpr int BUTTONS[] = {ID_FOLDER_UP, ID_PAGE_UP, ID_PAGE_DOWN, ID_NAME};
    bool bInStore = false;
    Operator::Ask([&] {
        const auto* pDialog = dynamic_cast<const CFingerFileDialog*>(&dialog);
        bInStore = pDialog && pDialog->GetFolder() == JoinPath(m_strFolder, L"RealTimeFiles");
    });
    if (!bInStore && OneIn(2)) {
        PressKey(Operator::Key::Escape);  // nothing is written elsewhere
    } else if (!bInStore || OneIn(3)) {
        Operator::Tap(dialog, BUTTONS[Pick(std::size(BUTTONS))]);
    } else if (OneIn(3)) {
        SelectAny(dialog, ID_ROWS);
    } else if (OneIn(3)) {
        EndDialog(dialog);
    } else {
        Operator::Type(OneIn(4) ? PickPath() : GetNameOfPath(PickPath()));
        PressKey(Operator::Key::Enter);
    }
}

void CRandomOperator::WorkProgress(const CWnd&) {
    m_record.Count("progress box");
    OneIn(4) ? PressKey(Operator::Key::Escape) : Operator::Wait(20);
}

void CRandomOperator::WorkBox(const CWnd&) {
    m_record.Count("message box");
    PressKey(OneIn(3) ? Operator::Key::Escape : Operator::Key::Enter);
}

void CRandomOperator::EndDialog(const CWnd& dialog) {
    const unsigned nWay = Pick(5);
    if (nWay < 2)
        PressKey(nWay == 0 ? Operator::Key::Escape : Operator::Key::Enter);
    else
        Operator::Tap(dialog, nWay == 2 ? IDCANCEL : IDOK);
}
