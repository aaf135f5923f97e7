#include "ui/BigMessageBox.h"

#include "platform/system/NamedMutex.h"
#include "platform/windows/DialogLook.h"

namespace {

using enum CBigMessageBox::Control;

constexpr DialogItem ITEMS[] = {
    {ID_MESSAGE, ControlKind::Static, L"Static", 7, 8, 222, 78, CS_CENTER},
    {IDOK, ControlKind::StyledButton, L"", 24, 93, 50, 42, CS_NONE, NAME_OK},
    {IDNO, ControlKind::StyledButton, L"", 94, 93, 50, 42, CS_NONE, NAME_NO},
    {IDCANCEL, ControlKind::StyledButton, L"Cancel", 164, 93, 50, 42, CS_NONE, NAME_CANCEL},
    {ID_OK_CENTRE, ControlKind::StyledButton, L"", 93, 93, 50, 42, CS_NONE, NAME_OK},
};

constexpr DialogTemplate TEMPLATE{705, L"Strovane", 241, 139, L"MS Shell Dlg", 8, ITEMS};

}  // namespace

BEGIN_MESSAGE_MAP(CBigMessageBox, CDialog)
ON_BN_CLICKED(IDNO, OnNo)
ON_BN_CLICKED(ID_OK_CENTRE, OnOK)
END_MESSAGE_MAP()

CBigMessageBox::CBigMessageBox() : CDialog(TEMPLATE) {}

bool CBigMessageBox::OnInitDialog() {
    CDialog::OnInitDialog();
    ShowButtons();
    SetWindowText(m_strTitle);

    auto* pMessage = dynamic_cast<CStatic*>(GetControl(ID_MESSAGE));
    if (!pMessage) return false;
    m_fontMessage.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", true);
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
        {m_btnOKCentre, ID_OK_CENTRE, PICTURE_OK, BIGBTN_OK_CENTRE},
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
