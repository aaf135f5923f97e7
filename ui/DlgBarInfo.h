// The info bar below the plots: time markers and the time between them, trigger level.
#pragma once

#include "ui/DlgLangBase.h"

/// A child dialog of the screen, to which it posts its messages; it does nothing by itself. The
/// screen writes the two numbers and shows them with UpdateData(false).
class CDlgBarInfo : public CDlgLangBase {
  public:
    /// @param pScreen becomes the bar's parent window
    explicit CDlgBarInfo(CWnd* pScreen);

    std::int32_t m_nTimeDistance = 0;    ///< between the markers A and B, milliseconds
    std::int32_t m_nTriggerPercent = 0;  ///< trigger level, percent of full scale

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    bool OnInitDialog() override;

  private:
    void PostBarCommand(WPARAM nCommand);
    void OnMarkerA();
    void OnMarkerB();
    void OnClearMarkers();
    void OnTrigger();
    void OnClearTrigger();
    void OnBack();
    bool OnEraseBkgnd(CDC* pDC);
    CBrush* OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    DECLARE_MESSAGE_MAP()
};
