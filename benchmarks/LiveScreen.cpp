#include "LiveScreen.h"

#include <mutex>
#include <stdexcept>

#include "plugin/ScreenTemplate.h"

namespace {

constexpr std::uint8_t THREE_CHANNELS = 3;  // an instrument mode

}  // namespace

CLiveScreen::CLiveScreen() : m_panel(THREE_CHANNELS), m_interface(GetThisThread()) {
    m_panel.m_pSession->m_nHostValueRate = RATE;
}

void CLiveScreen::Run(const std::function<void()>& script) {
    const std::set<ThreadId> before = ListThreads();
    m_panel.Run([&] {
        for (const ThreadId thread : ListThreads())
            if (!before.contains(thread) && thread != GetThisThread()) m_reader.insert(thread);
        std::unique_ptr<CPaintWatch> pWatch;
        std::uint32_t nCount = 0;
        Operator::Ask([&] {
            pWatch = std::make_unique<CPaintWatch>(
                *m_panel.m_pDialog->GetControl(IDC_PLOT_1),
                [&] { nCount = m_spCurve ? m_spCurve->GetCount() : 0; },
                [&] {
                    ++m_nRepaints;
                    if (m_onRepaint) m_onRepaint(nCount);
                });
        });
        try {
            script();
        } catch (...) {
            Operator::Ask([&] { pWatch.reset(); });
            throw;
        }
        Operator::Ask([&] { pWatch.reset(); });
    });
}

void CLiveScreen::StartCapture(unsigned nSeconds) {
    Operator::Ask(
        [&] { m_panel.m_pDialog->SetControlText(IDC_SAMPLE_TIME, std::to_wstring(nSeconds)); });
    if (!m_panel.Tap(IDC_START)) throw std::runtime_error("the capture cannot be started");
    Operator::Ask([&] { m_spCurve = GetCurve(); });
}

std::shared_ptr<const RTCurveData> CLiveScreen::GetCurve() {
    const std::lock_guard lock(m_panel.m_pSession->m_lock);
    const RTCurveList& curves = m_panel.m_pSession->m_spCurves->m_lstCurves[0];
    return curves.empty() ? nullptr : curves.back();
}

LiveTimes CLiveScreen::ReadTimes() const {
    LiveTimes times{ReadThreadSeconds(m_interface), 0, m_nRepaints};
    for (const ThreadId thread : m_reader) times.m_dReader += ReadThreadSeconds(thread);
    return times;
}
