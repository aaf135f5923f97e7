#include "ui/EditClick.h"

#include "platform/windows/KeyboardCalls.h"
#include "ui/ClampedNumber.h"

IMPLEMENT_DYNAMIC(CEditClick)

BEGIN_MESSAGE_MAP(CEditClick, CEdit)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

void CEditClick::OnLButtonDown(UINT nFlags, CPoint point) {
    CEdit::OnLButtonDown(nFlags, point);
    std::wstring strResult;
    double dNumber = 0;
    if (!CallNumberPad(m_strPadTitle, L"", &strResult, &dNumber, m_bOneDecimal, 0)) return;
    SetWindowText(FormatClamped(dNumber, m_dMin, m_dMax, m_bOneDecimal != 0));
}
