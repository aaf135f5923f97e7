// System calls that a signal interrupts, or that fail.
#pragma once

#include <string>

/// While it lives, one of this thread's calls of open, flock, fchown, fchmod, write, fsync, rename
/// and close fails without having been made (a close is made all the same).
class CFault {
  public:
    /// @param nCall which of them, from 0
    /// @param nError what it fails with
    CFault(int nCall, int nError);
    ~CFault();
    CFault(const CFault&) = delete;
    CFault& operator=(const CFault&) = delete;

    /// The call that failed; empty when there were fewer.
    const std::string& GetFailed() const { return m_strFailed; }
    /// The calls that were made, each behind a blank.
    const std::string& GetMade() const { return m_strMade; }

    /// For the calls: @return whether this one is to fail, with errno set
    bool Fails(const char* pCall);
    void Record(const char* pCall) { m_strMade.append(" ").append(pCall); }

  private:
    int m_nCallsBefore;
    int m_nError;
    std::string m_strFailed;
    std::string m_strMade;
};
