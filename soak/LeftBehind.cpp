#include "soak/LeftBehind.h"

#include "platform/system/Threads.h"

namespace {

std::string Join(const std::vector<std::string>& names) {
    std::string strAll;
    for (const std::string& strName : names) strAll += " " + strName;
    return strAll;
}

}  // namespace

void CLeftBehind::Check() {
    // A thread that has been joined may still be listed for a moment.
    constexpr int TRIES = 100;
    for (int i = 0; i < TRIES; ++i) {
        m_now = MeasureProcess();
        if (!m_bMeasured || m_now.m_threads.size() <= m_first.m_threads.size()) break;
        SleepMilliseconds(20);
    }
    m_record.Largest("most megabytes between screens",
                     static_cast<std::uint64_t>(m_now.m_dMegabytes));
    if (!m_bMeasured) {
        m_bMeasured = true;
        m_first = m_now;
        return;
    }
    if (m_now.m_threads.size() > m_first.m_threads.size())
        m_record.Fault("threads are left:" + Join(m_now.m_threads) + ", at first" +
                       Join(m_first.m_threads));
    if (m_now.m_nFiles > m_first.m_nFiles)
        m_record.Fault(std::to_string(m_now.m_nFiles - m_first.m_nFiles) + " files are left open");
    if (m_now.m_widgets.size() > m_first.m_widgets.size())
        m_record.Fault("windows or controls are left:" + Join(m_now.m_widgets) + ", at first" +
                       Join(m_first.m_widgets));
}
