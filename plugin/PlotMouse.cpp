// The left mouse button, or a finger, over the plot on show.
#include "plugin/DlgSetupMode.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"

CRect CDlgSetupMode::GetPlotArea() const {
    CRect area = m_aPlotCtrl[CurrentIndex()].GetWindowRect();
    ScreenToClient(area);
    return area;
}

void CDlgSetupMode::OnLButtonDown(UINT nFlags, CPoint point) {
    const CRect area = GetPlotArea();
    if (!area.PtInRect(point)) {
        CDlgBase::OnLButtonDown(nFlags, point);
        return;
    }
    switch (CurrentPlot().OnPlotClick({point.x - area.left, point.y - area.top})) {
    case PLOTACT_TRIGGER:
        ShowTriggerPercent(CurrentPlot().GetTriggerPercent());
        CurrentPlotCtrl().Invalidate();
        break;
    case PLOTACT_MARKER_A:
        CurrentPlotCtrl().Invalidate();
        ShowTimeDistance(CurrentPlot().GetTimeDistance());
        if (m_pInfoBar) m_pInfoBar->GetParent()->PostMessage(WM_RT_BARCOMMAND, BARCMD_MARKER_B);
        break;
    case PLOTACT_MARKER_B:
        ShowTimeDistance(CurrentPlot().GetTimeDistance());
        CurrentPlotCtrl().Invalidate();
        break;
    default:
        break;
    }
}

void CDlgSetupMode::OnMouseMove(UINT nFlags, CPoint point) {
    if (CurrentPlot().m_bZoomDrag)
        CurrentPlotCtrl().MoveZoomBand(point.x - m_nPlotLeft);
    else
        CDlgBase::OnMouseMove(nFlags, point);
}

void CDlgSetupMode::OnLButtonUp(UINT nFlags, CPoint point) {
    if (CurrentPlot().m_bZoomDrag)
        CurrentPlotCtrl().EndZoomDrag(point.x - GetPlotArea().left);
    else
        CDlgBase::OnLButtonUp(nFlags, point);
}
