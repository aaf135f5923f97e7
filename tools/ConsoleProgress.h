// Progress on standard error.
#pragma once

#include <cstdint>
#include <string>

#include "platform/system/Progress.h"

/// One piece of work. Says how far it is when it takes longer than half a second and somebody
/// watches; takes the line away at its end. Never stops the work: that is what interrupts are for.
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
