#include "ui/DialogLook.h"

bool FillDialogBackground(CDC& dc, const CWnd& dialog) {
    dc.FillSolidRect(dialog.GetClientRect(), DIALOG_BACKGROUND);
    return true;
}

CBrush* MakeTransparent(CDC& dc) {
    dc.SetBackgroundMode(BackgroundMode::Transparent);
    return nullptr;
}

void CButtonPictures::SetOn(CStyledButton& button, UINT nPicture) const {
    CBitmap picture;
    if (m_library && picture.LoadBitmap(m_library, nPicture)) button.SetImage(&picture);
}

void CButtonPictures::SetOn(const CWnd& dialog, int nButton, UINT nPicture) const {
    if (auto* pButton = dynamic_cast<CStyledButton*>(dialog.GetControl(nButton)))
        SetOn(*pButton, nPicture);
}
