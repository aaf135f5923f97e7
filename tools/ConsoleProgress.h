// Progress on standard error, and a way to stop by Ctrl-C without leaving half a file.
#pragma once

#include <cstdint>
#include <string>

#include "platform/system/Progress.h"

/// One piece of work. Says how far it is when it takes longer than half a second and somebody
/// watches; takes the line away at its end. While it lives, an interrupt stops the work at its next
/// report instead of ending the process; at most one may live.
class CConsoleProgress : public IProgress {
  public:
    explicit CConsoleProgress(const std::wstring& strWork);
    ~CConsoleProgress() override;
    CConsoleProgress(const CConsoleProgress&) = delete;
    CConsoleProgress& operator=(const CConsoleProgress&) = delete;

    bool Advance(std::uint64_t nDone, std::uint64_t nTotal) override;

  private:
    std::string m_strWork;
    std::uint64_t m_nNextShow;
    bool m_bWatched;
    bool m_bShown = false;
};

/// Ends the process as the interrupt would have that stopped the work.
[[noreturn]] void EndByInterrupt();
