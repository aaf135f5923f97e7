// Commands that change what is shown: zoom, channel and display selection, settings, the info bar's
// commands, closing.
#include <mutex>

#include "platform/windows/Controls.h"
#include "plugin/DlgSetupMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgSettings.h"

void CDlgSetupMode::ZoomAllAndRepaint(std::size_t nPlot) {
    {
        const std::lock_guard lock(m_lock);
        m_aPlots[nPlot].ZoomAll();
    }
    m_aPlotCtrl[nPlot].Invalidate();
}

void CDlgSetupMode::OnZoomAll() { ZoomAllAndRepaint(CurrentIndex()); }

void CDlgSetupMode::OnSelChangeDisplay() {
    const auto* pList = static_cast<CComboBox*>(GetControl(IDC_DISPLAY_LIST));
    if (!pList) return;
    const auto nDisplay = static_cast<std::uint8_t>(pList->GetItemData(pList->GetCurSel()));
    m_abyDisplay[CurrentIndex()] = nDisplay;
    CurrentPlot().m_nDisplay = nDisplay;
    CurrentPlotCtrl().Invalidate();
}

void CDlgSetupMode::OnSelChangeChannel() {
    if (const auto* pList = static_cast<CComboBox*>(GetControl(IDC_CHANNEL_LIST)))
        m_capture.SelectPlot(static_cast<std::uint8_t>(pList->GetItemData(pList->GetCurSel())));
    for (std::size_t k = 0; k < m_aPlotCtrl.size(); ++k)
        m_aPlotCtrl[k].ShowWindow(k == CurrentIndex());

    SelectDisplay();
    ShowTimeDistance(CurrentPlot().GetTimeDistance());
    ShowTriggerPercent(CurrentPlot().GetTriggerPercent());
}

/// Selects the display list's item that the plot on show goes by.
void CDlgSetupMode::SelectDisplay() {
    auto* pList = static_cast<CComboBox*>(GetControl(IDC_DISPLAY_LIST));
    if (!pList) return;
    for (int nItem = 0; nItem < pList->GetCount(); ++nItem) {
        if (pList->GetItemData(nItem) == m_abyDisplay[CurrentIndex()]) {
            pList->SetCurSel(nItem);
            return;
        }
    }
}

void CDlgSetupMode::OnSettings() {
    CDlgSettings dialog;
    dialog.m_pLangTable = m_pLangTable;
    dialog.m_pGraph = &m_graph;
    dialog.InitLanguage();
    dialog.DoModal();
    ZoomAllAndRepaint(CurrentIndex());
}

LRESULT CDlgSetupMode::OnBarCommand(WPARAM wParam, LPARAM) {
    RTPlot& plot = CurrentPlot();
    switch (wParam) {
    case BARCMD_MARKER_A:
        plot.m_nArmedAction = PLOTACT_MARKER_A;
        break;
    case BARCMD_MARKER_B:
        plot.m_nArmedAction = PLOTACT_MARKER_B;
        break;
    case BARCMD_TRIGGER:
        plot.m_nArmedAction = PLOTACT_TRIGGER;
        break;
    case BARCMD_CLEAR_MARKERS:
        plot.m_nMarkerA = plot.m_nMarkerB = -1;
        ShowTimeDistance(0);
        CurrentPlotCtrl().Invalidate();
        break;
    case BARCMD_CLEAR_TRIGGER:
        plot.m_nTriggerLevel = -1;
        ShowTriggerPercent(0);
        CurrentPlotCtrl().Invalidate();
        break;
    default:
        break;
    }
    return 0;
}

void CDlgSetupMode::OnClose() {
    if (m_capture.IsContinuousRunning()) OnStop();
    CDlgBase::OnClose();
}

void CDlgSetupMode::ShowTimeDistance(std::int32_t nMilliseconds) {
    if (!m_pInfoBar) return;
    m_pInfoBar->m_nTimeDistance = nMilliseconds;
    m_pInfoBar->UpdateData(false);
}

void CDlgSetupMode::ShowTriggerPercent(std::int32_t nPercent) {
    if (!m_pInfoBar) return;
    m_pInfoBar->m_nTriggerPercent = nPercent;
    m_pInfoBar->UpdateData(false);
}
