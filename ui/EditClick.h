// An edit control for a number on a panel without a keyboard.
#pragma once

#include "platform/windows/Controls.h"

/// Opens the number pad when it is touched and shows the entered number, brought between the
/// limits. The owner sets the four members before the control can be touched, and reads the text
/// back by its data exchange.
class CEditClick : public CEdit {
    DECLARE_DYNAMIC(CEditClick)

  public:
    std::wstring m_strPadTitle;
    double m_dMax = 0;
    double m_dMin = 0;
    BYTE m_bOneDecimal = 0;  ///< 1: one decimal is shown; 0: the number is rounded to a whole one

  private:
    void OnLButtonDown(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()
};
