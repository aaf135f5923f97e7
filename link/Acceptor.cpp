#include "link/Acceptor.h"

#include <algorithm>
#include <asio/ip/v6_only.hpp>

#include "link/LinkStream.h"

namespace {

using asio::ip::tcp;

/// Between two tries to accept, when the system has no room for one more.
constexpr std::chrono::milliseconds PAUSE{100};

tcp::resolver::results_type Resolve(const std::string& strHost, std::uint16_t nPort,
                                    asio::error_code& error) {
    asio::io_context context;
    return tcp::resolver(context).resolve(strHost, std::to_string(nPort),
                                          tcp::resolver::passive | tcp::resolver::numeric_service,
                                          error);
}

bool IsLoopbackAddress(const asio::ip::address& address) {
    if (!address.is_v6() || !address.to_v6().is_v4_mapped()) return address.is_loopback();
    return asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6()).is_loopback();
}

/// A system may know an address of a name without having its kind of network.
bool IsLacking(const asio::error_code& error) {
    return error == std::errc::address_family_not_supported ||
           error == std::errc::address_not_available;
}

std::string DescribeEndpoint(const tcp::endpoint& endpoint) {
    asio::ip::address address = endpoint.address();
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        address = asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6());
    std::string strText;
    if (address.is_v6())
        strText.append("[").append(address.to_string()).append("]");
    else
        strText = address.to_string();
    return strText.append(":").append(std::to_string(endpoint.port()));
}

}  // namespace

bool IsLoopback(const std::string& strHost) {
    asio::error_code error;
    const auto found = Resolve(strHost, 0, error);
    return !error && std::ranges::all_of(found, [](const auto& entry) {
        return IsLoopbackAddress(entry.endpoint().address());
    });
}

CAcceptor::CAcceptor(asio::io_context& context, const LinkAddress& address) : m_address(address) {
    asio::error_code error;
    const auto found = Resolve(address.m_strHost, address.m_nPort, error);
    if (error) throw CListenError(address.m_strText + ": " + DescribeTransportError(error));
    for (const auto& entry : found) {
        tcp::endpoint endpoint = entry.endpoint();
        endpoint.port(m_address.m_nPort);  // the same for all
        Listen(context, endpoint);
    }
    if (m_places.empty()) throw CListenError(address.m_strText + ": no such network here");
}

void CAcceptor::Listen(asio::io_context& context, const tcp::endpoint& endpoint) {
    tcp::acceptor acceptor(context);
    asio::error_code error;
    acceptor.open(endpoint.protocol(), error);
    if (!error) acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error && endpoint.address().is_v6()) {
        // Both kinds of network, where the system can.
        asio::error_code ignored;
        acceptor.set_option(asio::ip::v6_only(!endpoint.address().is_unspecified()), ignored);
    }
    if (!error) acceptor.bind(endpoint, error);
    if (!error) acceptor.listen(tcp::acceptor::max_listen_connections, error);
    if (IsLacking(error)) return;
    if (error)
        throw CListenError(m_address.m_strText + ": " + DescribeEndpoint(endpoint) + ": " +
                           DescribeTransportError(error));
    m_address.m_nPort = acceptor.local_endpoint().port();
    m_places.push_back({std::move(acceptor), asio::steady_timer(context)});
}

void CAcceptor::Start(OnAccepted onAccepted) {
    m_onAccepted = std::move(onAccepted);
    for (Place& place : m_places) Accept(place);
}

void CAcceptor::Accept(Place& place) {
    place.m_acceptor.async_accept(
        [this, &place](const asio::error_code& error, tcp::socket socket) {
            if (!place.m_acceptor.is_open()) return;
            if (error) {
                place.m_pause.expires_after(PAUSE);
                place.m_pause.async_wait([this, &place](const asio::error_code& cancelled) {
                    if (!cancelled) Accept(place);
                });
                return;
            }
            asio::error_code unknown;
            const tcp::endpoint from = socket.remote_endpoint(unknown);
            // Who has gone already is no panel.
            if (!unknown) m_onAccepted(std::move(socket), DescribeEndpoint(from));
            Accept(place);
        });
}

void CAcceptor::Close() {
    asio::error_code ignored;
    for (Place& place : m_places) {
        place.m_acceptor.close(ignored);
        place.m_pause.cancel();
    }
}
