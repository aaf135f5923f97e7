// The end of a program that serves until it is told to stop.
#pragma once

#include <chrono>
#include <csignal>

#include "platform/system/Export.h"

/// While it lives, SIGINT and SIGTERM are awaited in place of ending the process. To be made before
/// there is any other thread.
class PLATFORM_API CAwaitedInterrupt {
  public:
    CAwaitedInterrupt();
    ~CAwaitedInterrupt();
    CAwaitedInterrupt(const CAwaitedInterrupt&) = delete;
    CAwaitedInterrupt& operator=(const CAwaitedInterrupt&) = delete;

    /// Waits for one, at most so long.
    /// @return whether one came
    bool Wait(std::chrono::milliseconds time) const;

  private:
    sigset_t m_awaited;
    sigset_t m_before;
};
