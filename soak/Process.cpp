#include "soak/Process.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include "platform/operator/Operator.h"
#include "platform/windows/Application.h"

namespace fs = std::filesystem;

double MeasureResidentMegabytes() {
    std::size_t nPages = 0;
    std::size_t nResident = 0;
    std::ifstream("/proc/self/statm") >> nPages >> nResident;
    return static_cast<double>(nResident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

ProcessUse MeasureProcess() {
    PumpMessages();
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
    use.m_dMegabytes = MeasureResidentMegabytes();
    return use;
}
