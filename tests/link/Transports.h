// Real transports for tests.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <cstdlib>
#include <functional>

#include "link/LinkTls.h"
#include "tests/support/TemporaryFolder.h"

/// Runs a context until something has come about.
/// @return whether it has, within 20 s
inline bool RunUntil(asio::io_context& context, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        context.restart();
        context.run_for(std::chrono::milliseconds(5));
    }
    return condition();
}

/// A socket that listens on a free port of the loopback.
inline asio::ip::tcp::acceptor MakeAcceptor(asio::io_context& context) {
    return {context, {asio::ip::address_v4::loopback(), 0}};
}

/// A pseudo-terminal: what is written to one end comes out at the other.
class CPseudoTerminal {
  public:
    CPseudoTerminal() : m_hFile(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        EXPECT_TRUE(::grantpt(m_hFile) == 0 && ::unlockpt(m_hFile) == 0);
    }
    ~CPseudoTerminal() { Close(); }
    CPseudoTerminal(const CPseudoTerminal&) = delete;
    CPseudoTerminal& operator=(const CPseudoTerminal&) = delete;

    void Close() {
        if (m_hFile >= 0) ::close(m_hFile);
        m_hFile = -1;
    }
    /// Of the other end.
    std::string GetDevice() const { return ::ptsname(m_hFile); }

    int m_hFile;
};

/// Makes a certificate that is its own authority, for a host, in NAME.crt and NAME.key.
inline TlsFiles MakeCertificate(const TemporaryFolder& folder, const std::string& strName,
                                const std::string& strHost) {
    const std::string strPath = folder.GetPath() / strName;
    const std::string strCommand =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj /CN=" +
        strName + " -addext subjectAltName=" + strHost + " -keyout " + strPath + ".key -out " +
        strPath + ".crt 2>/dev/null";
    EXPECT_EQ(std::system(strCommand.c_str()), 0);
    return {strPath + ".crt", strPath + ".crt", strPath + ".key"};
}
