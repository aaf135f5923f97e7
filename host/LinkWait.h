// The wait for an instrument on a link: there is no screen before it has said what it is.
#pragma once

#include <memory>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"

class CLinkInstrument;
class QTimer;

/// A small window that says how the link stands, with one button. DoModal gives IDOK once the
/// instrument has been reached, IDCANCEL when the operator does not want to wait.
class CLinkWait : public CDialog {
  public:
    enum Control : int {
        ID_STATE = 1113,
        ID_DETAILS = 1114,
    };

    /// @param instrument must outlive the window
    explicit CLinkWait(const CLinkInstrument& instrument);
    ~CLinkWait() override;

  protected:
    bool OnInitDialog() override;
    void OnOK() override {}

  private:
    void Update();

    const CLinkInstrument& m_instrument;
    CStyledButton m_btnCancel;
    CFont m_fontState;
    CFont m_fontDetails;
    std::unique_ptr<QTimer> m_pTimer;
};

/// The same without anybody to ask: waits for ten seconds.
/// @return why the instrument was not reached, in English; empty: it was
std::string AwaitInstrument(const CLinkInstrument& instrument);
