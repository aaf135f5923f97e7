// rtinstrument in a process of its own.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/system/Paths.h"
#include "tests/support/ChildProgram.h"

class CServedProgram {
  public:
    /// Returns when it listens on the loopback.
    /// @param nPort 0: a free one
    /// @throws std::runtime_error when it does not
    explicit CServedProgram(std::vector<std::string> arguments, std::uint16_t nPort = 0)
        : m_program(MakeCommand(std::move(arguments), nPort)) {
        m_strAddress = m_program.Await("listening    ");
        if (m_strAddress.empty()) throw std::runtime_error(m_program.GetOutput());
        m_strAddress.pop_back();
    }

    const std::string& GetAddress() const { return m_strAddress; }
    std::uint16_t GetPort() const {
        return static_cast<std::uint16_t>(
            std::stoi(m_strAddress.substr(m_strAddress.rfind(':') + 1)));
    }
    pid_t GetProcess() const { return m_program.GetProcess(); }
    void Kill() {
        m_program.Signal(SIGKILL);
        m_program.Join();
    }

  private:
    static std::vector<std::string> MakeCommand(std::vector<std::string> arguments,
                                                std::uint16_t nPort) {
        arguments.insert(arguments.begin(), {ToUtf8(GetExecutableFolder()) + "/rtinstrument",
                                             "--listen=tcp://127.0.0.1:" + std::to_string(nPort)});
        return arguments;
    }

    CChildProgram m_program;
    std::string m_strAddress;
};
