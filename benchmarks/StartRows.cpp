// The start of the panel application, a process of its own: from its creation until the window
// system has been given the first picture of the screen, as its log says.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int STARTS = 9;

/// The log of a process, read while it runs. The process ends with it.
class CProcessLog {
  public:
    /// @param strCommand what is to run, for the shell; its output and errors are read
    explicit CProcessLog(const std::string& strCommand)
        : m_pLog(::popen(("echo $$; exec env " + strCommand + " 2>&1").c_str(), "r")) {
        if (!m_pLog || std::fscanf(m_pLog, "%d", &m_nProcess) != 1)
            throw std::runtime_error("cannot run " + strCommand);
    }
    ~CProcessLog() {
        ::kill(m_nProcess, SIGKILL);
        ::pclose(m_pLog);
    }
    CProcessLog(const CProcessLog&) = delete;
    CProcessLog& operator=(const CProcessLog&) = delete;

    /// Waits for a line that holds a text.
    /// @return whether it has come
    bool AwaitLine(const char* pText) {
        char line[1000];
        while (std::fgets(line, sizeof line, m_pLog))
            if (std::strstr(line, pText)) return true;
        return false;
    }

  private:
    std::FILE* m_pLog;
    int m_nProcess = 0;
};

double TimeStart(const std::wstring& strSettings) {
    const std::string strPanel = ToUtf8(JoinPath(GetExecutableFolder(), L"rtpanel"));
    CProcessLog log("QT_LOGGING_RULES=qt.widgets.painting.info=true '" + strPanel +
                    "' --settings '" + ToUtf8(strSettings) + "'");
    const auto begin = std::chrono::steady_clock::now();
    if (!log.AwaitLine("Flushing QRegion")) throw std::runtime_error("rtpanel shows no picture");
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

void MeasureStart(CTable& table) {
    const TemporaryFolder folder;
    const double dFirst = TimeStart(folder.Path("settings.ini"));
    std::vector<double> seconds(STARTS);
    std::ranges::generate(seconds, [&] { return TimeStart(folder.Path("settings.ini")); });
    table.AddTime("rtpanel's start to its first picture, the first", dFirst);
    table.AddTime("rtpanel's start to its first picture, warm",
                  FindFigures(seconds, Figures::Median), 0.1);
}
