// Commands that begin and end captures, and what the controls show of it.
#include "platform/windows/Application.h"
#include "plugin/DlgSetupMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BarMessages.h"

namespace {

/// What a control does when a capture begins, and the opposite when the screen is idle again.
struct CaptureControl {
    int m_nID;
    bool m_bEnabledWhileCapturing;
    bool m_bInstrumentOnly;  ///< left alone when capture is controlled elsewhere
};

constexpr CaptureControl CAPTURE_CONTROLS[] = {
    {IDC_STOP, true, true},           {IDC_START, false, true},
    {IDC_LOAD, false, true},          {IDC_ZOOM_ALL, false, false},
    {IDC_CLEAR, false, false},        {IDC_SAVE, false, false},
    {IDC_SETTINGS, false, false},     {IDC_CHANNEL_LIST, false, false},
    {IDC_DISPLAY_LIST, false, false}, {IDC_SAMPLE_TIME_MODE, false, true},
    {IDC_SAMPLE_TIME, false, true},   {IDC_TRIGGER, false, true},
};

void ShowCaptureState(const CWnd& screen, bool bCapturing, bool bCaptureLocked) {
    for (const CaptureControl& control : CAPTURE_CONTROLS) {
        if (control.m_bInstrumentOnly && bCaptureLocked) continue;
        if (CWnd* pControl = screen.GetControl(control.m_nID))
            pControl->EnableWindow(control.m_bEnabledWhileCapturing == bCapturing);
    }
}

}  // namespace

void SendToInstrument(std::unique_ptr<CObjConfig> pMessage) {
    CApplication* pApp = GetApp();
    CFrameWindow* pFrame = pApp ? pApp->m_pMainWnd : nullptr;
    CWnd* pView = pFrame ? pFrame->GetActiveView() : nullptr;
    if (!pView || !pView->GetHandle()) return;
    pView->SendMessage(WM_RT_SENDOBJECT, reinterpret_cast<WPARAM>(pMessage.release()));
}

void CDlgSetupMode::OnStart() {
    UpdateData(true);
    const RTCaptureParameters parameters =
        m_capture.Start(ReadTriggerTenths(m_strTrigger), m_abyDisplay[0]);
    // Axes and grid are there while the instrument waits for its trigger.
    CurrentPlotCtrl().Invalidate();
    SendToInstrument(MakeCaptureCommand(parameters));
    ShowCapturing();
}

void CDlgSetupMode::OnStop() {
    SendToInstrument(MakeStopCommand());
    m_capture.Stop();
}

void CDlgSetupMode::OnClear() {
    m_capture.Clear();
    for (std::size_t k = 0; k < m_nChannels; ++k) m_aPlotCtrl[k].Invalidate();
    ClearBarReadOuts();
}

/// Goes through the message queue, so trigger level and markers are cleared after the command that
/// asks for it.
void CDlgSetupMode::ClearBarReadOuts() {
    if (!m_pInfoBar) return;
    PostMessage(WM_RT_BARCOMMAND, BARCMD_CLEAR_TRIGGER);
    PostMessage(WM_RT_BARCOMMAND, BARCMD_CLEAR_MARKERS);
}

void CDlgSetupMode::OnSampleTimeMode() {
    const bool bContinuous = m_capture.ToggleContinuous();
    if (!SetLangText(IDC_SAMPLE_TIME_MODE, bContinuous ? 1515 : 1514, L""))
        SetControlText(IDC_SAMPLE_TIME_MODE, bContinuous ? L"Continuous" : L"Sample Time:");
    for (const int nID : {IDC_SECONDS, IDC_SAMPLE_TIME})
        if (CWnd* pControl = GetControl(nID)) pControl->ShowWindow(!bContinuous);
}

void CDlgSetupMode::OnContinuousCommand() { m_capture.ToggleContinuous(); }

LRESULT CDlgSetupMode::OnPassOutput(WPARAM, LPARAM) {
    SendToInstrument(MakePassOutputCommand());
    return 0;
}

void CDlgSetupMode::ShowCapturing() { ShowCaptureState(*this, true, m_bCaptureLocked != 0); }

void CDlgSetupMode::ShowIdle() { ShowCaptureState(*this, false, m_bCaptureLocked != 0); }

void CDlgSetupMode::ReturnToIdle() {
    if (!GetHandle() || m_bIdleQueued.exchange(true)) return;
    PostCall([this] {
        m_bIdleQueued = false;
        // A capture that was started meanwhile keeps its controls.
        if (m_capture.IsIdle()) ShowIdle();
    });
}

void CDlgSetupMode::RepaintPlot(std::size_t nPlot) { m_aPlotCtrl[nPlot].Invalidate(); }
