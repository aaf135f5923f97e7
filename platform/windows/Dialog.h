// CDialog and CDialogEx: windows made from a dialog template, run modally or as a child, with data
// exchange between controls and fields. User-interface thread only.
#pragma once

#include "platform/windows/DialogTemplate.h"
#include "platform/windows/Wnd.h"

/// The direction and the dialog of one data exchange.
struct CDataExchange {
    CWnd* m_pDialog;
    bool m_bSaveAndValidate;  ///< true: from the controls into the fields
};

class PLATFORM_API CDialog : public CWnd {
  public:
    /// @param dialogTemplate must outlive the dialog
    /// @param pParent the window above which the dialog stands, or whose child it becomes; null:
    ///        the window that is active when the dialog is shown
    explicit CDialog(const DialogTemplate& dialogTemplate, CWnd* pParent = nullptr)
        : m_template(dialogTemplate), m_pParentWnd(pParent) {}

    /// Makes the window, runs OnInitDialog, and handles messages until EndDialog.
    /// @return what EndDialog was given; IDCANCEL when the window was destroyed
    /// @throws CMemoryException, std::bad_alloc with no window left; so Create and CreateModal,
    /// whose
    ///         window goes with the dialog
    virtual int DoModal();

    /// Makes a child or modeless window from the template and runs OnInitDialog.
    bool Create(CWnd* pParent);

    /// Makes and shows a window that keeps input from all others until it is destroyed, and
    /// returns: for work that goes on on this thread and calls PumpMessages.
    bool CreateModal(CWnd* pParent);

    /// Ends the modal loop with a result.
    void EndDialog(int nResult);

    /// Exchanges data; a text that does not convert is reported to the operator.
    /// @return false when the exchange stopped there
    bool UpdateData(bool bSaveAndValidate = true);

  protected:
    virtual void DoDataExchange(CDataExchange*) {}

    /// Set-up: writes the fields into the controls.
    /// @return true to leave the focus on the first control
    virtual bool OnInitDialog();

    /// The Enter and Escape keys, and buttons with these ids that have no handler of their own.
    virtual void OnOK();
    virtual void OnCancel();

    /// The default of WM_CLOSE: as OnCancel.
    void OnClose() { Default(); }

    /// Fills the client area with the colour that all dialogs have. It shows through the labels,
    /// which get no brush.
    bool OnEraseBkgnd(CDC* pDC);

    LRESULT DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;
    DECLARE_MESSAGE_MAP()

  private:
    bool CreateFromTemplate(CWnd* pParent);
    /// Gives the controls the template's names, in the language that the set-up may have chosen.
    void NameControls();

    const DialogTemplate& m_template;
    CWnd* m_pParentWnd;
    int m_nModalResult = 0;
    std::function<void()> m_endModalLoop;  ///< set while a modal loop runs
};

/// The framework's extended dialog class.
class PLATFORM_API CDialogEx : public CDialog {
  public:
    using CDialog::CDialog;
};

/// Exchange of one control's text with a field. A number that does not convert is reported to the
/// operator and ends the exchange (CUserException) with the field unchanged.
PLATFORM_API void ExchangeText(CDataExchange* pExchange, int nID, std::int16_t& nValue);
PLATFORM_API void ExchangeText(CDataExchange* pExchange, int nID, std::int32_t& nValue);
PLATFORM_API void ExchangeText(CDataExchange* pExchange, int nID, std::wstring& strValue);

/// Ties a member to its control, once, when the dialog is set up.
PLATFORM_API void ExchangeControl(CDataExchange* pExchange, int nID, CWnd& control);
