#include "tools/ConsoleProgress.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/system/Console.h"
#include "platform/system/Text.h"
#include "platform/system/Threads.h"

namespace {

constexpr std::uint64_t SHOW_AFTER = 500;  // milliseconds
constexpr std::uint64_t SHOW_EVERY = 100;

volatile std::sig_atomic_t g_nInterrupt = 0;

void OnInterrupt(int nSignal) { g_nInterrupt = nSignal; }

}  // namespace

CConsoleProgress::CConsoleProgress(const std::wstring& strWork)
    : m_strWork(ToUtf8(strWork)), m_nNextShow(TickMilliseconds() + SHOW_AFTER),
      m_bWatched(IsStandardErrorWatched()) {
    g_nInterrupt = 0;
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
}

CConsoleProgress::~CConsoleProgress() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
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
    return g_nInterrupt == 0;
}

void EndByInterrupt() {
    std::raise(g_nInterrupt != 0 ? static_cast<int>(g_nInterrupt) : SIGINT);
    std::abort();
}
