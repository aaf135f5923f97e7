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
    enum Control : int {
        ID_RANGE_MIN = 1043,
        ID_RANGE_MAX = 1044,
        ID_RANGE_LABEL = 1045,
        ID_RANGE_DASH = 1046,
        ID_AUTO_ZOOM_LABEL = 1049,
        ID_AUTO_ZOOM = 1222,
    };

    CDlgSettings();

    RTGraphSettings* m_pGraph = nullptr;  ///< borrowed; null: there is nothing to edit

  protected:
    bool OnInitDialog() override;

  private:
    void OnAutoZoom();
    void ShowAutoZoom();
    void OnRangeMin();
    void OnRangeMax();
    void ShowRangeValue(int nButton, const std::wstring& strValue);
    std::optional<std::int32_t> EnterRangeValue(int nButton);
    DECLARE_MESSAGE_MAP()

    CStyledButton m_btnAutoZoom;
};
