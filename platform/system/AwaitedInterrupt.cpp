#include "platform/system/AwaitedInterrupt.h"

#include <ctime>

CAwaitedInterrupt::CAwaitedInterrupt() {
    ::sigemptyset(&m_awaited);
    ::sigaddset(&m_awaited, SIGINT);
    ::sigaddset(&m_awaited, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &m_awaited, &m_before);
}

CAwaitedInterrupt::~CAwaitedInterrupt() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

bool CAwaitedInterrupt::Wait(std::chrono::milliseconds time) const {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    const timespec limit{seconds.count(), rest.count()};
    return ::sigtimedwait(&m_awaited, nullptr, &limit) > 0;
}
