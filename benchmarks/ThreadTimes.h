// The processor time of the threads of this process, one by one.
#pragma once

#include <sched.h>
#include <set>

/// A thread as the system numbers it.
using ThreadId = int;

/// The threads that there are now.
std::set<ThreadId> ListThreads();

/// Seconds that a thread has computed so far; 0 when it has ended.
/// @throws std::runtime_error on a system that does not say
double ReadThreadSeconds(ThreadId thread);

ThreadId GetThisThread();

/// As long as it lives, this thread and those that it starts meanwhile share one core.
class OneCore {
  public:
    /// @throws std::runtime_error when the system does not allow it
    OneCore();
    ~OneCore();
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;

  private:
    cpu_set_t m_all;
};
