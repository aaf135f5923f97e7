// A program in a process of its own.
#pragma once

#include <chrono>
#include <csignal>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// Inherits nothing but its output, and ends with the thread that made it.
class CChildProgram {
  public:
    /// @param arguments the program first
    explicit CChildProgram(std::vector<std::string> arguments) {
        int aPipe[2] = {-1, -1};
        if (::pipe(aPipe) != 0) return;
        std::vector<char*> argv;
        for (std::string& str : arguments) argv.push_back(str.data());
        argv.push_back(nullptr);
        m_nProcess = ::fork();
        if (m_nProcess == 0) {
            ::dup2(aPipe[1], STDOUT_FILENO);
            ::dup2(aPipe[1], STDERR_FILENO);
            ::close_range(STDERR_FILENO + 1, ~0U, 0);
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::execvp(argv[0], argv.data());
            ::_exit(127);
        }
        ::close(aPipe[1]);
        m_nOutput = aPipe[0];
    }
    CChildProgram(const CChildProgram&) = delete;
    CChildProgram& operator=(const CChildProgram&) = delete;
    ~CChildProgram() {
        if (m_nProcess > 0) {
            ::kill(m_nProcess, SIGKILL);
            ::waitpid(m_nProcess, nullptr, 0);
        }
        ::close(m_nOutput);
    }

    /// Reads its output, both standard output and error, until that holds a text, at most 10 s.
    /// @return the rest of that line, with its end; empty: it did not come
    std::string Await(const std::string& strText) {
        for (;;) {
            const std::size_t nAt = m_strOutput.find(strText);
            const std::size_t nEnd = m_strOutput.find('\n', nAt);
            if (nAt != std::string::npos && nEnd != std::string::npos)
                return m_strOutput.substr(nAt + strText.size(), nEnd + 1 - nAt - strText.size());
            pollfd output{m_nOutput, POLLIN, 0};
            char szText[4096];
            if (::poll(&output, 1, 10'000) != 1) return "";
            const auto nRead = ::read(m_nOutput, szText, sizeof szText);
            if (nRead <= 0) return "";
            m_strOutput.append(szText, static_cast<std::size_t>(nRead));
        }
    }
    const std::string& GetOutput() const { return m_strOutput; }

    pid_t GetProcess() const { return m_nProcess; }
    void Signal(int nSignal) { ::kill(m_nProcess, nSignal); }
    /// Waits for its end. @return the exit code; -1: a signal
    int Join() {
        int nStatus = 0;
        ::waitpid(m_nProcess, &nStatus, 0);
        m_nProcess = -1;
        return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    }

  private:
    pid_t m_nProcess = -1;
    int m_nOutput = -1;
    std::string m_strOutput;
};
