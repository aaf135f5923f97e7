// Threads as the screen uses them: start one, wait for it with a time-out, sleep, trace; and the
// fair lock that guards a screen's session.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "platform/system/Export.h"

/// A running or finished thread. Move-only.
///
/// Closing (or destroying) the handle of a thread that has not ended first waits for its end: no
/// object that a thread uses is destroyed under it.
class PLATFORM_API CThreadHandle {
  public:
    CThreadHandle();
    ~CThreadHandle();
    CThreadHandle(CThreadHandle&&) noexcept;
    CThreadHandle& operator=(CThreadHandle&&) noexcept;

    /// Whether a thread was started and its handle not closed yet.
    explicit operator bool() const { return m_pThread != nullptr; }

    /// Waits until the thread has ended, at most so many milliseconds.
    /// @return whether it has ended
    bool Wait(unsigned nMilliseconds) const;

    /// Waits for the end of the thread and forgets it.
    void Close();

  private:
    friend PLATFORM_API CThreadHandle StartThread(std::function<void()> run);
    struct Thread;
    std::unique_ptr<Thread> m_pThread;
};

/// Starts a thread, running at once. A thread that the system cannot start gives an empty handle.
/// @throws std::bad_alloc with nothing started
PLATFORM_API CThreadHandle StartThread(std::function<void()> run);

/// Gives the calling thread a name, by which the system's tools show it: at most 15 bytes.
PLATFORM_API void NameThread(const char* pName);

/// A connection that the other side has closed is an error of the write, no signal that ends the
/// program: in the calling thread.
PLATFORM_API void BlockPipeSignal();

PLATFORM_API void SleepMilliseconds(unsigned nMilliseconds);

/// Milliseconds of a steady clock; only differences mean anything.
PLATFORM_API std::uint64_t TickMilliseconds();

/// Writes a line of debug text to standard error, in every build, when QT_LOGGING_RULES holds
/// "realtime.trace=true"; otherwise does nothing.
PLATFORM_API void TraceDebug(const wchar_t* pText);

/// A mutual exclusion lock that serves waiting threads in the order of their arrival.
///
/// The packet reader takes its screen's lock again right after releasing it while packets keep
/// coming; with a plain mutex the user-interface thread could then wait for as long as that lasts.
/// Meets the standard's BasicLockable, so it goes with std::lock_guard. Not recursive.
class CFairLock {
  public:
    CFairLock() = default;
    CFairLock(const CFairLock&) = delete;
    CFairLock& operator=(const CFairLock&) = delete;

    void lock() {
        std::unique_lock lock(m_mutex);
        m_served.wait(lock, [this, nTicket = m_nNextTicket++] { return nTicket == m_nServing; });
    }

    void unlock() {
        bool bWaiting;
        {
            const std::lock_guard lock(m_mutex);
            bWaiting = ++m_nServing != m_nNextTicket;
        }
        if (bWaiting) m_served.notify_all();
    }

  private:
    std::mutex m_mutex;  ///< guards the two numbers; held for a moment only
    std::condition_variable m_served;
    std::uint64_t m_nNextTicket = 0;
    std::uint64_t m_nServing = 0;
};
