#include "ui/BigMessageBox.h"

#include "platform/system/NamedMutex.h"
#include "ui/DialogLook.h"

namespace {

enum BoxControl : int {
    IDC_OK_CENTRE = 3,
    IDC_MESSAGE = 1113,
};

constexpr DialogItem ITEMS[] = {
    {IDC_MESSAGE, ControlKind::Static, L"Static", 7, 8, 222, 78, CS_CENTER},
    {IDOK, ControlKind::StyledButton, L"", 24, 93, 50, 42},
    {IDNO, ControlKind::StyledButton, L"", 94, 93, 50, 42},
    {IDCANCEL, ControlKind::StyledButton, L"Cancel", 164, 93, 50, 42},
    {IDC_OK_CENTRE, ControlKind::StyledButton, L"", 93, 93, 50, 42},
};

constexpr DialogTemplate TEMPLATE{705, L"Strovane", 241, 139, L"MS Shell Dlg", 8, ITEMS};

constexpr int MESSAGE_HEIGHT = 20;  ///< of a character, pixels

}  // namespace

BEGIN_MESSAGE_MAP(CBigMessageBox, CDialog)
ON_BN_CLICKED(IDNO, OnNo)
ON_BN_CLICKED(IDC_OK_CENTRE, OnOK)
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

CBigMessageBox::CBigMessageBox() : CDialog(TEMPLATE) {}

bool CBigMessageBox::OnInitDialog() {
    CDialog::OnInitDialog();
    ShowButtons();
    SetWindowText(m_strTitle);

    auto* pMessage = dynamic_cast<CStatic*>(GetControl(IDC_MESSAGE));
    if (!pMessage) return false;
    m_fontMessage.CreatePixelFont(MESSAGE_HEIGHT, L"MS Shell Dlg", true);
    pMessage->SetFont(&m_fontMessage);
    if (m_strMessage.find(L'\n') != std::wstring::npos) pMessage->SetCentered(false);
    pMessage->SetWindowText(m_strMessage);
    if (m_bTopMost) SetTopMost();
    return true;
}

void CBigMessageBox::ShowButtons() {
    const struct {
        CStyledButton& m_button;
        int m_nID;
        UINT m_nPicture;
        BigButton m_bit;
    } buttons[] = {
        {m_btnOK, IDOK, PICTURE_OK, BIGBTN_OK},
        {m_btnNo, IDNO, PICTURE_NO, BIGBTN_NO},
        {m_btnCancel, IDCANCEL, PICTURE_CANCEL, BIGBTN_CANCEL},
        {m_btnOKCentre, IDC_OK_CENTRE, PICTURE_OK, BIGBTN_OK_CENTRE},
    };
    const CButtonPictures pictures;
    for (const auto& [button, nID, nPicture, bit] : buttons) {
        button.AttachControl(nID, this);
        pictures.SetOn(button, nPicture);
        button.ShowWindow((m_nButtons & bit) != 0);
    }
}

void CBigMessageBox::OnOK() {
    // Enter comes here too; it must not acknowledge what no button acknowledges.
    if (m_nButtons & (BIGBTN_OK | BIGBTN_OK_CENTRE)) CDialog::OnOK();
}

void CBigMessageBox::OnNo() { EndDialog(IDNO); }

bool CBigMessageBox::OnEraseBkgnd(CDC* pDC) { return FillDialogBackground(*pDC, *this); }

CBrush* CBigMessageBox::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor) {
    if (pWnd->GetControlID() == IDC_MESSAGE) return MakeTransparent(*pDC);
    return CDialog::OnCtlColor(pDC, pWnd, nCtlColor);
}

int ShowBigMessageBox(const std::wstring& strTitle, const std::wstring& strMessage, BYTE nButtons,
                      bool bTopMost) {
    const CNamedMutex announcement(L"StrovaneBigMessageBox");
    CBigMessageBox box;
    box.m_strTitle = strTitle;
    box.m_strMessage = strMessage;
    box.m_nButtons = nButtons;
    box.m_bTopMost = bTopMost ? 1 : 0;
    return box.DoModal();
}
