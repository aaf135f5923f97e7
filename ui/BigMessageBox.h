// The message box of the panel: a large text and buttons that a finger hits.
#pragma once

#include <string>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"

/// Buttons of the box; they combine. The value that DoModal gives for each is in parentheses.
enum BigButton : BYTE {
    BIGBTN_OK_CENTRE = 1,  ///< acknowledge, in the middle (IDOK)
    BIGBTN_CANCEL = 2,     ///< cancel, on the right (IDCANCEL)
    BIGBTN_OK = 4,         ///< acknowledge, on the left (IDOK)
    BIGBTN_NO = 8,         ///< no, in the middle (IDNO)
};

/// The caller sets the first four members, whose texts are shown as they stand, and runs the box
/// modally. Escape ends it with IDCANCEL, whichever buttons are shown; Enter ends it with IDOK if
/// an acknowledge button is shown.
///
/// Other programs of the panel watch for a box by its named mutex: show it with ShowBigMessageBox.
class CBigMessageBox : public CDialog {
  public:
    enum Control : int {
        ID_OK_CENTRE = 3,
        ID_MESSAGE = 1113,
    };

    CBigMessageBox();

    std::wstring m_strTitle;
    std::wstring m_strMessage;  ///< one line stands centred; several lines stand on the left
    BYTE m_nButtons = 0;        ///< of BigButton
    BYTE m_bTopMost = 0;        ///< 1: the box stays above the windows of other programs

  protected:
    bool OnInitDialog() override;
    void OnOK() override;

  private:
    void ShowButtons();
    void OnNo();
    DECLARE_MESSAGE_MAP()

    CStyledButton m_btnOK;
    CStyledButton m_btnNo;
    CStyledButton m_btnCancel;
    CStyledButton m_btnOKCentre;
    CFont m_fontMessage;
};

/// Shows a box, and holds the named mutex "StrovaneBigMessageBox" exactly as long as it is open.
/// @return IDOK, IDCANCEL or IDNO
int ShowBigMessageBox(const std::wstring& strTitle, const std::wstring& strMessage, BYTE nButtons,
                      bool bTopMost = false);
