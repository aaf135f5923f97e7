// What the operator sees of work that takes long: a title, how far it is, and a button to cancel.
#pragma once

#include "platform/drawing/Graphics.h"
#include "platform/system/Progress.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"

/// A bar that is filled as far as the work is done.
class CProgressBar : public CStatic {
  public:
    void ShowPercent(int nPercent);

  private:
    void OnPaint();
    DECLARE_MESSAGE_MAP()

    int m_nPercent = 0;
};

/// Made right before the work and destroyed right after it, on the user-interface thread, which
/// does the work and calls Advance as it goes on. The window appears only when the work has taken a
/// second. From then on messages are handled in between, so that the button works and windows are
/// repainted; the screens behind get no input.
class CProgressBox : public CDialog, public IProgress {
  public:
    enum Control : int {
        ID_TITLE = 1113,
        ID_BAR = 1114,
        ID_PERCENT = 1115,
    };

    explicit CProgressBox(std::wstring strTitle);

    /// @return false when the operator has cancelled
    bool Advance(std::uint64_t nDone, std::uint64_t nTotal) override;

  protected:
    bool OnInitDialog() override;
    void OnOK() override {}
    void OnCancel() override { m_bCancelled = true; }

  private:
    void ShowPercent(int nPercent);

    std::wstring m_strTitle;
    CProgressBar m_bar;
    CStyledButton m_btnCancel;
    CFont m_fontTitle;
    std::uint64_t m_nNextPump;  ///< when messages are handled next, by TickMilliseconds
    int m_nPercent = -1;        ///< as shown
    bool m_bCancelled = false;
};
