// The settings dialog: the vertical range of the graphs, and automatic zoom.
#pragma once

#include <optional>

#include "platform/windows/Controls.h"
#include "ui/DlgLangBase.h"

struct RTGraphSettings;

/// Edits the screen's graph settings in place: every change takes effect at once, and closing the
/// dialog in whatever way keeps it. Lives for one modal run.
class CDlgSettings : public CDlgLangBase {
  public:
    CDlgSettings();

    RTGraphSettings* m_pGraph = nullptr;  ///< borrowed; null: there is nothing to edit

  protected:
    bool OnInitDialog() override;

  private:
    void OnAutoZoom();
    void ShowAutoZoom();
    void OnRangeMin();
    void OnRangeMax();
    std::optional<std::int32_t> EnterRangeValue(int nButton);
    bool OnEraseBkgnd(CDC* pDC);
    CBrush* OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    DECLARE_MESSAGE_MAP()

    CStyledButton m_btnAutoZoom;
};
