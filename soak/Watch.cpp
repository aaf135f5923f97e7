#include "soak/Watch.h"

#include <cstdlib>
#include <mutex>

#include "plugin/ScreenTemplate.h"
#include "soak/LeftBehind.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"

namespace {

constexpr unsigned PAUSE_MS = 15;
constexpr int PROBES = 40;

}  // namespace

unsigned GetDefaultPatience() { return IsSanitized() ? 20000 : 2000; }

CWatch::CWatch(TestPanel& panel, unsigned nPatience, std::uint32_t nSeed, CSoakRecord& record,
               Checks checks)
    : m_panel(panel), m_nPatience(nPatience), m_random(nSeed), m_record(record),
      m_checks(std::move(checks)) {
    m_thread = StartThread([this] { Run(); });
}

CWatch::~CWatch() {
    m_bStop = true;
    m_thread.Close();
}

void CWatch::Run() {
    while (!m_bStop) {
        const std::uint64_t nAsked = TickMilliseconds();
        try {
            Operator::Ask([this] { CheckControls(); });
        } catch (const std::exception& error) {
            // Nothing ends a program whose user-interface thread hangs but this.
            m_record.Fault(error.what());
            m_record.Print();
            std::abort();
        }
        const std::uint64_t nAnswerTime = TickMilliseconds() - nAsked;
        m_record.Largest("longest answer, ms", nAnswerTime);
        if (nAnswerTime > m_nPatience)
            m_record.Fault("an answer took " + std::to_string(nAnswerTime) + " ms");
        CheckCurves();
        if (m_checks.m_round) m_checks.m_round();
        m_record.Count("watch rounds");
        SleepMilliseconds(PAUSE_MS);
    }
}

void CWatch::CheckControls() {
    const CWnd& screen = *m_panel.m_pDialog;
    if (!screen.GetHandle() || !screen.IsWindowVisible()) return;
    const auto isEnabled = [&](int nID) { return screen.GetControl(nID)->IsWindowEnabled(); };
    const CRealTimeData& session = *m_panel.m_pSession;
    if (!session.m_bDesktopMode && !session.m_bCaptureLocked) {
        const bool bIdle = isEnabled(IDC_START);
        if (isEnabled(IDC_STOP) == bIdle) m_record.Fault("Start and Stop say the same");
        for (const int nID : {IDC_LOAD, IDC_SAVE, IDC_CLEAR, IDC_ZOOM_ALL, IDC_SETTINGS,
                              IDC_CHANNEL_LIST, IDC_DISPLAY_LIST, IDC_SAMPLE_TIME, IDC_TRIGGER})
            if (isEnabled(nID) != bIdle)
                m_record.Fault("control " + std::to_string(nID) + " does not go with Start");
    }
    if (session.m_bCaptureLocked && (isEnabled(IDC_START) || isEnabled(IDC_LOAD)))
        m_record.Fault("a control is enabled though capture is locked");

    int nPlots = 0;
    for (const int nID : {IDC_PLOT_1, IDC_PLOT_2, IDC_PLOT_3})
        nPlots += screen.GetControl(nID)->IsWindowVisible();
    if (nPlots != 1) m_record.Fault(std::to_string(nPlots) + " plots are shown");

    const CWnd* const pBar = screen.GetControl(0);
    if (!pBar || !!pBar->GetControl(CDlgBarMainMenu::ID_EXPORT_CSV) ==
                     !!pBar->GetControl(CDlgBarInfo::ID_BACK))
        m_record.Fault("not exactly one bar is shown");
}

void CWatch::CheckCurves() {
    const CRealTimeData& session = *m_panel.m_pSession;
    std::shared_ptr<CRTCurves> spSet;
    std::array<RTCurveList, CRTCurves::CHANNEL_COUNT> lists;
    std::array<std::shared_ptr<CRTCurves>, RT_MAX_CHANNELS> aspPlotSets;
    {
        const std::lock_guard lock(m_panel.m_pSession->m_lock);
        spSet = session.m_spCurves;
        lists = spSet->m_lstCurves;
        for (std::size_t k = 0; k < RT_MAX_CHANNELS; ++k)
            aspPlotSets[k] = session.m_aPlots[k].m_spCurves;
    }
    for (std::size_t k = 0; k < CountChannels(session.m_nMode); ++k)
        if (aspPlotSets[k] && aspPlotSets[k] != spSet)
            m_record.Fault("plot " + std::to_string(k + 1) + " shows another set");
    for (std::size_t k = 0; k < lists.size(); ++k) {
        m_record.Largest("most curves of a channel", lists[k].size());
        for (const auto& spCurve : lists[k]) CheckCurve(spCurve, k);
    }
}

void CWatch::CheckCurve(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel) {
    const RTCurveData& curve = *spCurve;
    const std::uint32_t nCount = curve.GetCount();
    if (nCount > curve.GetCapacity()) m_record.Fault("a curve holds more than its capacity");
    if (m_checks.m_values) m_checks.m_values(spCurve, nChannel, nCount);

    const RTPulseList& pulses = curve.GetPulses();
    const std::size_t nPulses = pulses.GetCount();
    for (int i = 0; nPulses > 1 && i < PROBES; ++i) {
        const std::size_t n = i == 0 ? nPulses - 1 : 1 + m_random() % (nPulses - 1);
        if (pulses.At(n).m_nPosition < pulses.At(n - 1).m_nPosition)
            m_record.Fault("pulse records are out of order");
    }
    m_record.Largest("most pulse records of a curve", nPulses);
}
