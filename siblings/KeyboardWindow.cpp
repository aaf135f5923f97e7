#include "siblings/KeyboardWindow.h"

#include <array>

#include "platform/windows/DialogLook.h"

namespace {

using enum ControlKind;

/// Keys stand in columns of 46 and rows of 38 dialog units; a key may take several columns.
constexpr DialogItem Key(int nID, ControlKind kind, const wchar_t* pText, int nColumn, int nRow,
                         int nColumns = 1, NumberedText name = NO_TEXT) {
    return {nID, kind,    pText, 9 + 46 * nColumn, 68 + 38 * nRow, 46 * nColumns - 4,
            34,  CS_NONE, name};
}

constexpr DialogItem OTHER_ITEMS[] = {
    {CEntryWindow::ID_TITLE, Static, L"", 9, 6, 502, 16},
    {CEntryWindow::ID_ENTRY, Edit, L"", 9, 23, 502, 28, CS_NONE, CEntryWindow::NAME_ENTRY},
    {CEntryWindow::ID_HINT, Static, L"", 9, 53, 502, 14, CS_CENTER},
    Key(CEntryWindow::ID_BACKSPACE, StyledButton, L"", 10, 0, 1, CEntryWindow::NAME_BACKSPACE),
    Key(CEntryWindow::ID_CLEAR, StyledButton, L"", 10, 1, 1, CEntryWindow::NAME_CLEAR),
    Key(CKeyboardWindow::ID_SHIFT, StyledButton, L"", 0, 3, 1, {3174, L"Capital letters"}),
    Key(CKeyboardWindow::ID_SIGNS, PushButton, L"", 10, 3, 1, {3175, L"Signs"}),
    Key(IDCANCEL, StyledButton, L"", 0, 4, 2, NAME_CANCEL),
    Key(CKeyboardWindow::ID_SPACE, PushButton, L"", 3, 4, 5, {3176, L"Space"}),
    Key(IDOK, StyledButton, L"", 9, 4, 2, NAME_OK),
};

constexpr auto MakeItems() {
    std::array<DialogItem, std::size(OTHER_ITEMS) + CHARACTER_KEYS> items{};
    auto next = std::copy(std::begin(OTHER_ITEMS), std::end(OTHER_ITEMS), items.begin());
    int nKey = 0;
    for (int nRow = 0; nRow < 5; ++nRow) {
        for (int n = 0; n < KEY_COUNTS[nRow]; ++n) {
            // The fourth row begins with the shift key; in the last one the two keys stand on
            // either side of the space key.
            const int nColumn = nRow == 3 ? n + 1 : nRow == 4 ? 2 + 6 * n : n;
            *next++ = Key(CKeyboardWindow::ID_CHARACTER + nKey++, PushButton, L"", nColumn, nRow);
        }
    }
    return items;
}

/// The language file names the layout that its language is typed on.
KeyboardLanguage FindLanguage() {
    return GetText({3170, L"QWERTY"}) == L"QWERTZ" ? KeyboardLanguage::German
                                                   : KeyboardLanguage::English;
}

constexpr auto ITEMS = MakeItems();
constexpr DialogTemplate TEMPLATE{0, L"", 520, 260, L"MS Shell Dlg", 8, ITEMS};

}  // namespace

BEGIN_MESSAGE_MAP(CKeyboardWindow, CEntryWindow)
ON_BN_CLICKED(ID_SHIFT, OnShift)
ON_BN_CLICKED(ID_SIGNS, OnSigns)
END_MESSAGE_MAP()

CKeyboardWindow::CKeyboardWindow(const std::wstring& strTitle, const std::wstring& strError,
                                 const std::wstring& strInitial)
    : CEntryWindow(TEMPLATE, strTitle),
      m_strError(strError.empty() ? ::GetText({154, L"Error: Blank value not supported."})
                                  : strError),
      m_entry(strInitial), m_layout(FindLanguage()) {}

bool CKeyboardWindow::OnInitDialog() {
    const CButtonPictures pictures;
    m_pictureShift = pictures.Load(PICTURE_SHIFT);
    m_pictureShiftLocked = pictures.Load(PICTURE_SHIFT_LOCKED);
    const bool bDefaultFocus = CEntryWindow::OnInitDialog();
    // A "C", as on the number pad, would be taken for the letter.
    SetKeyFace(ID_CLEAR, pictures.Load(PICTURE_ERASE_ALL), L"\u2190\u2190");
    PrepareKey(ID_SHIFT);
    PrepareKey(ID_SIGNS);
    ShowFaces();
    return bDefaultFocus;
}

void CKeyboardWindow::PressKey(int nID) {
    if (nID == ID_SPACE) {
        m_entry.Insert(L' ');
        return;
    }
    if (nID >= ID_CHARACTER + CHARACTER_KEYS) return;
    m_entry.Insert(m_layout.GetCharacter(nID - ID_CHARACTER));
    if (m_layout.GetShift() != CKeyboardLayout::Shift::Once) return;
    m_layout.UseShift();
    ShowFaces();
}

void CKeyboardWindow::ShowEntry(CEdit& edit) {
    if (edit.GetWindowText() != m_entry.GetText()) edit.SetWindowText(m_entry.GetText());
    edit.SetSelection(m_entry.GetSelectionStart(), m_entry.GetSelectionEnd());
}

std::wstring CKeyboardWindow::FindFault() const {
    return m_entry.IsBlank() ? m_strError : std::wstring();
}

void CKeyboardWindow::OnShift() {
    m_layout.PressShift();
    ShowFaces();
}

void CKeyboardWindow::OnSigns() {
    m_layout.PressSigns();
    ShowFaces();
}

void CKeyboardWindow::ShowFaces() {
    for (int nKey = 0; nKey < CHARACTER_KEYS; ++nKey) {
        std::wstring strFace(1, m_layout.GetCharacter(nKey));
        if (strFace == L"&") strFace = L"&&";  // a single one would mark a letter
        SetControlText(ID_CHARACTER + nKey, strFace);
    }
    const auto shift = m_layout.GetShift();
    const bool bLocked = shift == CKeyboardLayout::Shift::Locked;
    SetKeyFace(ID_SHIFT, bLocked ? m_pictureShiftLocked : m_pictureShift,
               bLocked ? L"\u2191\u2191" : L"\u2191");
    for (const auto& [nID, bOn] : {std::pair{ID_SHIFT, shift != CKeyboardLayout::Shift::Off},
                                   std::pair{ID_SIGNS, m_layout.IsSigns()}})
        if (auto* pKey = dynamic_cast<CButton*>(GetControl(nID))) pKey->SetCheck(bOn);
    // What a German keyboard has among its letters is no sign there.
    const bool bGerman = m_layout.GetLanguage() == KeyboardLanguage::German;
    SetControlText(ID_SIGNS, m_layout.IsSigns() ? L"abc"
                             : bGerman          ? L"#.\u00E9"
                                                : L"#\u00E4\u00E9");
}
