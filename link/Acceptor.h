// Lets panels connect over the network.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "link/LinkAddress.h"

/// A place to listen at that cannot be had. The text says which, and why.
class CListenError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Whether a name stands for this machine alone, whatever address of it is taken.
bool IsLoopback(const std::string& strHost);

/// Listens on all addresses of a host. When the system has no room for one more connection, those
/// that come wait.
///
/// Threads: its context's, once it was made.
class CAcceptor {
  public:
    using OnAccepted = std::function<void(asio::ip::tcp::socket socket, std::string strFrom)>;

    /// @param context must outlive the acceptor
    /// @throws CListenError
    CAcceptor(asio::io_context& context, const LinkAddress& address);

    /// Begins to accept. To be called once.
    void Start(OnAccepted onAccepted);
    void Close();

    /// The address with the port that was found when any would do.
    const LinkAddress& GetAddress() const { return m_address; }

  private:
    struct Place {
        asio::ip::tcp::acceptor m_acceptor;
        asio::steady_timer m_pause;
    };

    void Listen(asio::io_context& context, const asio::ip::tcp::endpoint& endpoint);
    void Accept(Place& place);

    LinkAddress m_address;
    std::vector<Place> m_places;
    OnAccepted m_onAccepted;
};
