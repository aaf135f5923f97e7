// The info bar below the plots: time markers and the time between them, trigger level.
#pragma once

#include "ui/DlgLangBase.h"

/// A child dialog of the screen, to which it posts its messages; it does nothing by itself. The
/// screen writes the two numbers and shows them with UpdateData(false).
class CDlgBarInfo : public CDlgLangBase {
  public:
    enum Control : int {
        ID_CLEAR_MARKERS = 1012,
        ID_CLEAR_TRIGGER = 1013,
        ID_MARKER_B = 1027,
        ID_MARKER_A = 1028,
        ID_TIME_DISTANCE = 1029,
        ID_TRIGGER = 1030,
        ID_TRIGGER_PERCENT = 1031,
        ID_MARKER_LABEL = 1032,
        ID_DISTANCE_LABEL = 1033,
        ID_LEVEL_LABEL = 1034,
        ID_PERCENT_LABEL = 1035,
        ID_BACK = 1036,
    };

    /// @param pScreen becomes the bar's parent window
    explicit CDlgBarInfo(CWnd* pScreen);

    std::int32_t m_nTimeDistance = 0;    ///< between the markers A and B, milliseconds
    std::int32_t m_nTriggerPercent = 0;  ///< trigger level, percent of full scale

  protected:
    void DoDataExchange(CDataExchange* pExchange) override;
    bool OnInitDialog() override;

  private:
    void PostBarCommand(WPARAM nCommand);
    void OnMarkerA();
    void OnMarkerB();
    void OnClearMarkers();
    void OnTrigger();
    void OnClearTrigger();
    void OnBack();
    DECLARE_MESSAGE_MAP()
};
