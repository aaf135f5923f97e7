// System calls that a signal interrupts, or that fail.
#pragma once

#include <functional>
#include <string>

/// While it lives, one of this thread's calls of open, flock, fchown, fchmod, write, fsync, rename
/// and close fails without having been made (a close is made all the same).
struct Fault {
    /// @param nCall which of them, from 0
    /// @param nError what it fails with
    Fault(int nCall, int nError);
    ~Fault();

    bool Fails(const char* pCall);

    std::string m_strFailed;  ///< the call that failed; empty when there were fewer
    std::string m_strMade;    ///< the calls that were made, each behind a blank
    int m_nCallsBefore;
    int m_nError;
};

/// While it is set, called by every thread in front of its fsync.
inline std::function<void()> g_beforeFlush;
