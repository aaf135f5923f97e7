#include "tools/ConsoleProgress.h"

#include <cstdio>

#include "platform/commandline/CommandLine.h"
#include "platform/system/Console.h"
#include "platform/system/Threads.h"

namespace {

constexpr std::uint64_t SHOW_AFTER = 500;  // milliseconds
constexpr std::uint64_t SHOW_EVERY = 100;

}  // namespace

CConsoleProgress::CConsoleProgress(const std::wstring& strWork)
    : m_strWork(MakePrintable(ToUtf8(strWork))), m_nNextShow(TickMilliseconds() + SHOW_AFTER),
      m_bWatched(IsStandardErrorWatched()) {}

CConsoleProgress::~CConsoleProgress() {
    if (m_bShown) std::fprintf(stderr, "\r\x1b[K");
}

bool CConsoleProgress::Advance(std::uint64_t nDone, std::uint64_t nTotal) {
    if (m_bWatched && TickMilliseconds() >= m_nNextShow) {
        m_nNextShow = TickMilliseconds() + SHOW_EVERY;
        m_bShown = true;
        const double dPercent =
            nTotal > 0 ? 100.0 * static_cast<double>(nDone) / static_cast<double>(nTotal) : 100.0;
        std::fprintf(stderr, "\r%s %3.0f %%", m_strWork.c_str(), dPercent);
    }
    return true;
}
