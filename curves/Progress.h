// Progress of work that a person waits for: saving, loading, exporting.
#pragma once

#include <cstdint>

#include "platform/system/Exceptions.h"

/// Told how far the work has come; lets the person stop it.
class IRTProgress {
  public:
    virtual ~IRTProgress() = default;

    /// Called on the working thread, a few hundred times at most for each 100 MB; to be quick.
    /// @param nDone part of the work done, in units of the work's own
    /// @return false to stop
    virtual bool Advance(std::uint64_t nDone, std::uint64_t nTotal) = 0;
};

/// Counts the parts of one piece of work and passes them on.
class RTProgressCounter {
  public:
    /// @param pProgress null: nobody is told
    RTProgressCounter(IRTProgress* pProgress, std::uint64_t nTotal)
        : m_pProgress(pProgress), m_nTotal(nTotal) {}

    /// @throws CUserException when the work is to stop
    void Add(std::uint64_t nPart) {
        m_nDone += nPart;
        if (m_pProgress && !m_pProgress->Advance(m_nDone, m_nTotal)) throw CUserException();
    }

  private:
    IRTProgress* m_pProgress;
    std::uint64_t m_nTotal;
    std::uint64_t m_nDone = 0;
};
