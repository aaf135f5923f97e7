#include "platform/system/Threads.h"

#include <QLoggingCategory>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <pthread.h>
#include <system_error>
#include <thread>

namespace {

/// Debug texts are off unless a logging rule asks for them.
Q_LOGGING_CATEGORY(trace, "realtime.trace", QtInfoMsg)

}  // namespace

struct CThreadHandle::Thread {
    std::thread m_thread;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_ended;
    bool m_bEnded = false;
};

CThreadHandle::CThreadHandle() = default;
CThreadHandle::CThreadHandle(CThreadHandle&&) noexcept = default;

CThreadHandle& CThreadHandle::operator=(CThreadHandle&& other) noexcept {
    if (this != &other) {
        Close();
        m_pThread = std::move(other.m_pThread);
    }
    return *this;
}

CThreadHandle::~CThreadHandle() { Close(); }

bool CThreadHandle::Wait(unsigned nMilliseconds) const {
    if (!m_pThread) return true;
    std::unique_lock lock(m_pThread->m_mutex);
    return m_pThread->m_ended.wait_for(lock, std::chrono::milliseconds(nMilliseconds),
                                       [this] { return m_pThread->m_bEnded; });
}

void CThreadHandle::Close() {
    if (!m_pThread) return;
    if (m_pThread->m_thread.joinable()) m_pThread->m_thread.join();  // not, when it never started
    m_pThread.reset();
}

CThreadHandle StartThread(std::function<void()> run) {
    CThreadHandle handle;
    handle.m_pThread = std::make_unique<CThreadHandle::Thread>();
    try {
        handle.m_pThread->m_thread =
            std::thread([pThread = handle.m_pThread.get(), run = std::move(run)] {
                run();
                const std::lock_guard lock(pThread->m_mutex);
                pThread->m_bEnded = true;
                pThread->m_ended.notify_all();
            });
    } catch (const std::system_error&) {
        handle.m_pThread.reset();
    }
    return handle;
}

void NameThread(const char* pName) { ::pthread_setname_np(::pthread_self(), pName); }

void BlockPipeSignal() {
    sigset_t pipe;
    ::sigemptyset(&pipe);
    ::sigaddset(&pipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
}

void SleepMilliseconds(unsigned nMilliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(nMilliseconds));
}

std::uint64_t TickMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

void TraceDebug(const wchar_t* pText) {
    qCDebug(trace).noquote() << QString::fromWCharArray(pText);
}
