#include "siblings/EntryWindow.h"

#include "platform/drawing/DisplayScale.h"
#include "platform/windows/DialogLook.h"

namespace {

constexpr COLORREF OUTLINE = RGB(104, 132, 168);
constexpr COLORREF FAULT = RGB(165, 25, 25);
constexpr const wchar_t* FACE = L"MS Shell Dlg";

}  // namespace

BEGIN_MESSAGE_MAP(CEntryWindow, CDialog)
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
ON_BN_CLICKED(ID_BACKSPACE, OnBackspace)
ON_BN_CLICKED(ID_CLEAR, OnClear)
ON_CONTROL(EN_CHANGE, ID_ENTRY, OnTyped)
END_MESSAGE_MAP()

bool CEntryWindow::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(m_strTitle);
    SetControlText(ID_TITLE, m_strTitle);
    m_fontTitle.CreatePixelFont(19, FACE, true);
    m_fontEntry.CreatePixelFont(30, FACE, false);
    m_fontKey.CreatePixelFont(24, FACE, false);
    m_fontHint.CreatePixelFont(17, FACE, true);
    m_edit.AttachControl(ID_ENTRY, this);
    m_edit.SetFont(&m_fontEntry);
    if (CWnd* pTitle = GetControl(ID_TITLE)) pTitle->SetFont(&m_fontTitle);
    if (CWnd* pHint = GetControl(ID_HINT)) pHint->SetFont(&m_fontHint);

    for (const int nID : {IDOK, IDCANCEL, ID_BACKSPACE, ID_CLEAR}) PrepareKey(nID);
    for (int nID = KEY_FIRST; nID < KEY_END; ++nID) PrepareKey(nID);
    const CButtonPictures pictures;
    SetKeyFace(IDOK, pictures.Load(PICTURE_OK), L"OK");
    SetKeyFace(IDCANCEL, pictures.Load(PICTURE_NO), L"Cancel");
    SetKeyFace(ID_BACKSPACE, pictures.Load(PICTURE_ERASE_BACKWARDS), L"\u2190");

    ShowEntry(m_edit);
    m_edit.SetFocus();
    return false;
}

void CEntryWindow::PrepareKey(int nID) {
    auto* pKey = dynamic_cast<CButton*>(GetControl(nID));
    if (!pKey) return;
    pKey->SetFont(&m_fontKey);
    // The caret stays in the entry, and with it what a plugged-in keyboard types.
    pKey->SetTakesFocus(false);
}

void CEntryWindow::SetKeyFace(int nID, const CBitmap& picture, const wchar_t* pText) {
    auto* pKey = dynamic_cast<CStyledButton*>(GetControl(nID));
    if (!pKey) return;
    pKey->SetImage(picture ? &picture : nullptr);
    pKey->SetWindowText(picture ? L"" : pText);
}

LRESULT CEntryWindow::WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) {
    const int nID = static_cast<int>(wParam & 0xFFFFu);
    const bool bKey =
        nMessage == WM_COMMAND && wParam == CommandParam(wParam & 0xFFFFu, BN_CLICKED);
    if (!bKey || nID < KEY_FIRST || nID >= KEY_END)
        return CDialog::WindowProc(nMessage, wParam, lParam);
    TakeSelectionOfEdit();
    PressKey(nID);
    ShowOutcome();
    return 0;
}

void CEntryWindow::OnBackspace() {
    TakeSelectionOfEdit();
    PressBackspace();
    ShowOutcome();
}

void CEntryWindow::OnClear() {
    PressClear();
    ShowOutcome();
}

void CEntryWindow::OnTyped() {
    if (TakeTyped(m_edit.GetWindowText())) TakeSelectionOfEdit();
    ShowOutcome();
}

void CEntryWindow::TakeSelectionOfEdit() {
    int nStart = 0;
    int nEnd = 0;
    m_edit.GetSelection(nStart, nEnd);
    TakeSelection(nStart, nEnd);
}

void CEntryWindow::ShowOutcome() {
    SetControlText(ID_HINT, L"");
    ShowEntry(m_edit);
}

void CEntryWindow::OnOK() {
    const std::wstring strFault = FindFault();
    if (strFault.empty())
        EndDialog(IDOK);
    else
        SetControlText(ID_HINT, strFault);
}

bool CEntryWindow::OnEraseBkgnd(CDC* pDC) {
    // A panel has no window frames: the outline sets the window off from the screen behind it.
    const CRect rect = GetClientRect();
    pDC->FillSolidRect(rect, OUTLINE);
    const int nOutline = ScaledThickness(2);
    pDC->FillSolidRect(
        {rect.left + nOutline, rect.top + nOutline, rect.right - nOutline, rect.bottom - nOutline},
        DIALOG_BACKGROUND);
    return true;
}

CBrush* CEntryWindow::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT) {
    if (pWnd->GetControlID() == ID_HINT) pDC->SetTextColor(FAULT);
    return nullptr;
}
