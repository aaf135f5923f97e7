// The handshake of a panel that has connected over TLS.
#pragma once

#include <asio/ip/tcp.hpp>
#include <asio/ssl/context.hpp>
#include <asio/steady_timer.hpp>
#include <functional>
#include <memory>
#include <string>

#include "link/LinkStream.h"
#include "link/LinkTls.h"

/// Shared with its own operations.
///
/// Threads: its context's.
class CTlsWelcome : public std::enable_shared_from_this<CTlsWelcome> {
  public:
    /// How long it may take.
    static constexpr std::chrono::seconds HANDSHAKE_TIME{2};

    using OnDone = std::function<void(std::shared_ptr<CLinkStream>)>;
    using OnFailed = std::function<void(const std::string& strWhy)>;

    CTlsWelcome(asio::ip::tcp::socket socket, asio::ssl::context& tls)
        : m_socket(std::move(socket), tls), m_timer(m_socket.get_executor()) {}

    /// Calls one of the two, later, unless it is cancelled. To be called once.
    void Start(OnDone onDone, OnFailed onFailed);
    void Cancel();

  private:
    void OnShaken(const asio::error_code& error);
    void Close();

    TlsSocket m_socket;
    asio::steady_timer m_timer;
    OnDone m_onDone;
    OnFailed m_onFailed;
    bool m_bLate = false;
};
