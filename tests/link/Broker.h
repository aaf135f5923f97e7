// A message broker of a test's own.
#pragma once

#include <optional>
#include <thread>

#include "tests/link/Transports.h"
#include "tests/support/ChildProgram.h"

/// Runs on a free port of the loopback for as long as it lives.
class CBroker {
  public:
    CBroker() : m_nPort(FindPort()) {
        m_folder.Put("broker.conf", std::string("listener ").append(std::to_string(m_nPort)) +
                                        " 127.0.0.1\nallow_anonymous true\n"
                                        "persistence false\nlog_dest none\nuser root\n");
        Start();
    }
    ~CBroker() { Stop(); }
    CBroker(const CBroker&) = delete;
    CBroker& operator=(const CBroker&) = delete;

    void Start() {
        m_program.emplace(std::vector<std::string>{"/usr/sbin/mosquitto", "-c",
                                                   m_folder.GetPath() / "broker.conf"});
        for (int n = 0; n < 500 && !Answers(); ++n)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    void Stop() {
        if (!m_program) return;
        m_program->Signal(SIGTERM);
        m_program->Join();
        m_program.reset();
    }
    std::string GetAddress() const {
        return "mqtt://127.0.0.1:" + std::to_string(m_nPort) + "/hall/press";
    }

  private:
    static unsigned FindPort() {
        asio::io_context context;
        return MakeAcceptor(context).local_endpoint().port();
    }
    bool Answers() const {
        asio::io_context context;
        asio::error_code error;
        asio::ip::tcp::socket(context).connect(
            {asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(m_nPort)}, error);
        return !error;
    }

    const TemporaryFolder m_folder;
    const unsigned m_nPort;
    std::optional<CChildProgram> m_program;
};
