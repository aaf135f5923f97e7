#include "soak/LeftBehind.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include "platform/operator/Operator.h"
#include "platform/system/Threads.h"
#include "platform/windows/Application.h"
#include "soak/ProcessTimes.h"

namespace fs = std::filesystem;

namespace {

std::string Join(const std::vector<std::string>& names) {
    std::string strAll;
    for (const std::string& strName : names) strAll += " " + strName;
    return strAll;
}

ProcessUse MeasureProcess() {
    PumpMessages();
    Operator::EndIdleThreads();
    ProcessUse use;
    for (const auto& entry : fs::directory_iterator("/proc/self/task")) {
        std::string strName;
        std::getline(std::ifstream(entry.path() / "comm"), strName);
        use.m_threads.push_back(strName);
    }
    std::sort(use.m_threads.begin(), use.m_threads.end());
    use.m_nFiles = static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
    use.m_widgets = Operator::ListWidgets();
    ::malloc_trim(0);
    use.m_dMegabytes = MeasureResidentMegabytes(::getpid());
    return use;
}

}  // namespace

void CLeftBehind::Check() {
    // A thread that has been joined may still be listed for a moment.
    constexpr int TRIES = 100;
    ProcessUse now;
    for (int i = 0; i < TRIES; ++i) {
        now = MeasureProcess();
        if (!m_first || now.m_threads.size() <= m_first->m_threads.size()) break;
        SleepMilliseconds(20);
    }
    m_record.Largest("most megabytes between screens",
                     static_cast<std::uint64_t>(now.m_dMegabytes));
    if (!m_first) m_first = now;
    if (now.m_threads.size() > m_first->m_threads.size())
        m_record.Fault("threads are left:" + Join(now.m_threads) + ", at first" +
                       Join(m_first->m_threads));
    if (now.m_nFiles > m_first->m_nFiles)
        m_record.Fault(std::to_string(now.m_nFiles - m_first->m_nFiles) + " files are left open");
    if (now.m_widgets.size() > m_first->m_widgets.size())
        m_record.Fault("windows or controls are left:" + Join(now.m_widgets) + ", at first" +
                       Join(m_first->m_widgets));
}
