#include "soak/LinkCheck.h"

#include <mutex>

CLinkCheck::CLinkCheck(CLinkedScreen& screen, const CSentCurves& sent, const CRoughWay& way,
                       unsigned nPatience, CSoakRecord& record)
    : m_screen(screen), m_sent(sent), m_way(way), m_nDelay(nPatience / 4), m_record(record) {}

void CLinkCheck::CheckValues(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel,
                             std::uint32_t nCount) {
    std::erase_if(m_checked, [](const auto& checked) { return checked.first.expired(); });
    Checked& checked = m_checked[spCurve];
    const std::int16_t* const pValues = spCurve->GetValues();
    const unsigned nPerSet = m_sent.GetLayout().m_nPerChannel;
    const std::uint32_t nBefore = checked.m_nValues;
    std::set<Hole> holes;
    for (std::uint32_t& n = checked.m_nValues; n < nCount; ++n) {
        const auto nPlace = static_cast<unsigned>(2 * nChannel) + n % nPerSet;
        const auto nSet = static_cast<std::uint16_t>(pValues[n] - nPlace * PLACE_STEP);
        const auto nStep = static_cast<std::uint16_t>(nSet - checked.m_nSet);
        const bool bNewSet = n % nPerSet == 0;
        if (n == 0) {
            if (m_sent.FindSets(nSet) == 0) holes.emplace(nSet, nSet);
        } else if (nStep != (bNewSet ? 1 : 0)) {
            if (!bNewSet || nStep == 0 || nStep > INT16_MAX || !m_way.IsLine())
                Fault("value " + std::to_string(n) + " of " + std::to_string(nCount) +
                      " does not follow");
            holes.emplace(checked.m_nSet, nSet);
        }
        checked.m_nSet = nSet;
    }
    // A curve that comes from a file has those that it had.
    std::erase_if(holes, [this](const Hole& hole) { return m_holes.contains(hole); });
    if (!holes.empty() && !IsLossTold(spCurve, nChannel))
        Fault("a loss in " + std::to_string(nCount) + " values is not told");
    m_record.Count("values of all curves", nCount - nBefore);
    if (!holes.empty()) m_record.Count("losses that are told", holes.size());
    m_holes.merge(holes);
}

/// It is told a moment after the values behind it have come, until the next capture begins, which
/// may be before the next look.
bool CLinkCheck::IsLossTold(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel) {
    if (!m_way.IsLine()) return false;
    CRealTimeData& session = *m_screen.m_panel.m_pSession;
    {
        const std::lock_guard lock(session.m_lock);
        const RTCurveList& curves = session.m_spCurves->m_lstCurves[nChannel];
        if (curves.empty() || curves.back() != spCurve) return true;
    }
    constexpr std::uint64_t RECENT_MS = 1000;
    const auto look = [this] {
        if (m_screen.GetStatus().m_nLostInCapture > 0) m_lossTold = TickMilliseconds();
        return m_lossTold && TickMilliseconds() < *m_lossTold + RECENT_MS;
    };
    for (std::uint64_t n = 0; n < m_nDelay / 20; ++n, SleepMilliseconds(20))
        if (look()) return true;
    return look();
}

void CLinkCheck::CheckState() {
    const std::uint64_t nNow = TickMilliseconds();
    const LinkStatus status = m_screen.GetStatus();
    if (status.m_nLostInCapture > 0) m_lossTold = nNow;
    if (!m_screen.m_panel.IsEnabled(IDC_STOP)) {
        m_capturing.reset();
        m_unknown.reset();
        return;
    }
    if (!m_capturing) m_capturing = nNow;
    if (status.m_bRunning)
        m_unknown.reset();
    else if (!m_unknown)
        m_unknown = nNow;
    const auto isOver = [nNow](Moment since, std::uint64_t nLimit) {
        return since && nNow > *since + nLimit;
    };
    if (isOver(m_unknown, m_nDelay)) Fault("capturing, though the link knows of no capture");
    const std::uint64_t nLimit = SILENCE_MS + m_nDelay;
    if (!isOver(m_capturing, nLimit)) return;
    if (isOver(m_way.GetLastToPanel(), nLimit))
        Fault("capturing, though nothing comes from the instrument");
    // What a line loses may be the report.
    if (!m_way.IsLine() && isOver(m_way.GetFairSince(), nLimit) &&
        isOver(m_sent.GetIdleSince(), nLimit))
        Fault("capturing, though the instrument is idle");
}

void CLinkCheck::Fault(const std::string& strWhat) {
    m_record.Fault(strWhat + "; the status says: " + m_screen.DescribeNow());
}
