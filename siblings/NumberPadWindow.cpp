#include "siblings/NumberPadWindow.h"

#include "platform/windows/DialogLook.h"

namespace {

using enum ControlKind;

/// Keys stand in columns of 64 and rows of 42 dialog units.
constexpr DialogItem Key(int nID, ControlKind kind, const wchar_t* pText, int nColumn, int nRow,
                         NumberedText name = NO_TEXT) {
    return {nID, kind, pText, 9 + 64 * nColumn, 84 + 42 * nRow, 60, 38, CS_NONE, name};
}

constexpr int DIGIT = CNumberPadWindow::ID_DIGIT;

constexpr DialogItem ITEMS[] = {
    {CEntryWindow::ID_TITLE, Static, L"", 9, 5, 252, 30},
    {CEntryWindow::ID_ENTRY, Edit, L"", 9, 38, 252, 28, CS_NONE, CEntryWindow::NAME_ENTRY},
    {CEntryWindow::ID_HINT, Static, L"", 9, 68, 252, 14, CS_CENTER},
    Key(DIGIT + 7, PushButton, L"7", 0, 0),
    Key(DIGIT + 8, PushButton, L"8", 1, 0),
    Key(DIGIT + 9, PushButton, L"9", 2, 0),
    Key(CEntryWindow::ID_BACKSPACE, StyledButton, L"", 3, 0, CEntryWindow::NAME_BACKSPACE),
    Key(DIGIT + 4, PushButton, L"4", 0, 1),
    Key(DIGIT + 5, PushButton, L"5", 1, 1),
    Key(DIGIT + 6, PushButton, L"6", 2, 1),
    Key(CEntryWindow::ID_CLEAR, PushButton, L"C", 3, 1, CEntryWindow::NAME_CLEAR),
    Key(DIGIT + 1, PushButton, L"1", 0, 2),
    Key(DIGIT + 2, PushButton, L"2", 1, 2),
    Key(DIGIT + 3, PushButton, L"3", 2, 2),
    Key(IDCANCEL, StyledButton, L"", 3, 2, NAME_CANCEL),
    Key(CNumberPadWindow::ID_SIGN, PushButton, L"+/\u2212", 0, 3, {3177, L"Change the sign"}),
    Key(DIGIT + 0, PushButton, L"0", 1, 3),
    Key(CNumberPadWindow::ID_POINT, PushButton, L".", 2, 3, {3178, L"Decimal point"}),
    Key(IDOK, StyledButton, L"", 3, 3, NAME_OK),
};

constexpr DialogTemplate TEMPLATE{0, L"", 270, 256, L"MS Shell Dlg", 8, ITEMS};

}  // namespace

CNumberPadWindow::CNumberPadWindow(const std::wstring& strTitle, const std::wstring& strInitial,
                                   int nMaxDecimals)
    : CEntryWindow(TEMPLATE, strTitle), m_entry(strInitial, nMaxDecimals) {}

void CNumberPadWindow::TakeSelection(int nStart, int nEnd) {
    // A touch into the entry, or a key that moves the caret, has taken the selection away.
    if (nStart != 0 || nEnd != static_cast<int>(m_entry.GetText().size())) m_entry.BeginEditing();
}

void CNumberPadWindow::PressKey(int nID) {
    if (nID == ID_POINT)
        m_entry.Press(L'.');
    else if (nID == ID_SIGN)
        m_entry.Press(L'-');
    else
        m_entry.Press(static_cast<wchar_t>(L'0' + (nID - ID_DIGIT)));
}

bool CNumberPadWindow::TakeTyped(const std::wstring& strText) {
    if (m_entry.IsUntouched() && strText.empty()) {
        // Backspace shortens the initial text here too, though it stands selected.
        m_entry.Backspace();
        return true;
    }
    return m_entry.TakeTyped(strText);
}

void CNumberPadWindow::ShowEntry(CEdit& edit) {
    const std::wstring& strText = m_entry.GetText();
    if (edit.GetWindowText() != strText) edit.SetWindowText(strText);
    if (m_entry.IsUntouched()) edit.SetSelection(0, -1);
}

std::wstring CNumberPadWindow::FindFault() const {
    return m_entry.GetValue() ? L"" : L"? 0\u20139";
}
