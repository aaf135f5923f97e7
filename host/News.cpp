#include "host/News.h"

#include <cstdio>
#include <utility>

#include "platform/commandline/CommandLine.h"
#include "platform/system/Console.h"

void CNews::Add(const std::string& strLine) {
    const std::lock_guard lock(m_mutex);
    if (m_lines.size() < MAX_LINES)
        m_lines.push_back(MakePrintable(strLine));
    else
        ++m_nLeftOut;
}

bool CNews::Take(std::string& strLine) {
    const std::lock_guard lock(m_mutex);
    if (!m_lines.empty()) {
        strLine = std::move(m_lines.front());
        m_lines.pop_front();
        return true;
    }
    if (m_nLeftOut == 0) return false;
    strLine = std::to_string(std::exchange(m_nLeftOut, 0)) + " lines left out";
    return true;
}

void CNews::Print() {
    for (std::string strLine; IsStandardOutputReady() && Take(strLine);) {
        std::printf("%s\n", strLine.c_str());
        std::fflush(stdout);
    }
}
