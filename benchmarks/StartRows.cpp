// The start of the panel application, a process of its own: from its creation until the window
// system has been given the first picture of the screen, as its log says.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int STARTS = 9;

[[noreturn]] void BecomePanel(const std::string& strPanel, const std::string& strSettings,
                              int nOutput) {
    ::dup2(nOutput, STDERR_FILENO);
    ::dup2(nOutput, STDOUT_FILENO);
    ::close(nOutput);
    ::setenv("QT_LOGGING_RULES", "qt.widgets.painting.info=true", 1);
    ::execl(strPanel.c_str(), strPanel.c_str(), "--settings", strSettings.c_str(), nullptr);
    ::_exit(127);
}

double TimeStart(const std::string& strPanel, const std::string& strSettings) {
    int anPipe[2];
    if (::pipe(anPipe) != 0) throw std::runtime_error("no pipe");
    const auto begin = std::chrono::steady_clock::now();
    const pid_t process = ::fork();
    if (process < 0) throw std::runtime_error("no process");
    if (process == 0) {
        ::close(anPipe[0]);
        BecomePanel(strPanel, strSettings, anPipe[1]);
    }
    ::close(anPipe[1]);
    std::FILE* pLog = ::fdopen(anPipe[0], "r");
    char line[1000];
    bool bShown = false;
    while (!bShown && std::fgets(line, sizeof line, pLog))
        bShown = std::strstr(line, "Flushing QRegion") != nullptr;
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    std::fclose(pLog);
    if (!bShown) throw std::runtime_error("rtpanel has shown no picture");
    return taken.count();
}

}  // namespace

void MeasureStart(CTable& table) {
    const TemporaryFolder folder;
    const std::string strPanel = ToUtf8(JoinPath(GetExecutableFolder(), L"rtpanel"));
    const std::string strSettings = ToUtf8(folder.Path("settings.ini"));
    std::vector<double> seconds;
    for (int i = 0; i < STARTS; ++i) seconds.push_back(TimeStart(strPanel, strSettings));
    table.AddTime("rtpanel's start to its first picture, the first", seconds.front());
    seconds.erase(seconds.begin());
    table.AddTime("rtpanel's start to its first picture, warm",
                  FindFigures(seconds, Figures::Median), 0.1);
}
