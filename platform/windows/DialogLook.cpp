#include "platform/windows/DialogLook.h"

CBitmap CButtonPictures::Load(UINT nPicture) const {
    CBitmap picture;
    if (m_library) picture.LoadBitmap(m_library, nPicture);
    return picture;
}

void CButtonPictures::SetOn(CStyledButton& button, UINT nPicture) const {
    if (const CBitmap picture = Load(nPicture)) button.SetImage(&picture);
}

void CButtonPictures::SetOn(const CWnd& dialog, int nButton, UINT nPicture) const {
    if (auto* pButton = dynamic_cast<CStyledButton*>(dialog.GetControl(nButton)))
        SetOn(*pButton, nPicture);
}
