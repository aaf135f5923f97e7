// Failures as the system gives them, and processes that end without a word.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/system/Exceptions.h"

/// The system's reason for which an action fails, and the name that it is reported under.
inline std::pair<int, std::wstring> FindError(const std::function<void()>& action) {
    try {
        action();
    } catch (const CFileException& error) {
        return {error.m_lOsError, error.m_strFileName};
    }
    return {0, L""};
}

/// A process that has begun something and waits in the middle of it until it is killed.
class CWaitingProcess {
  public:
    /// @param begin called in the process, with what is to be done there meanwhile
    explicit CWaitingProcess(const std::function<void(const std::function<void()>& wait)>& begin) {
        int anPipe[2];
        if (::pipe(anPipe) != 0) throw std::runtime_error("no pipe");
        m_nChild = ::fork();
        if (m_nChild == 0) {
            begin([&] {
                if (::write(anPipe[1], "x", 1) == 1)
                    for (;;) ::pause();
            });
            ::_exit(1);
        }
        char c;
        EXPECT_EQ(::read(anPipe[0], &c, 1), 1);
        ::close(anPipe[0]);
        ::close(anPipe[1]);
    }
    ~CWaitingProcess() { Kill(); }

    void Kill() {
        if (m_nChild <= 0) return;
        ::kill(m_nChild, SIGKILL);
        ::waitpid(m_nChild, nullptr, 0);
        m_nChild = 0;
    }

  private:
    pid_t m_nChild;
};
