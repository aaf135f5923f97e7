#include "link/Connector.h"

#include <algorithm>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// The time in which a transport is to open, shared by all addresses of a name.
constexpr std::chrono::milliseconds ALL_ADDRESSES = 1800ms;
constexpr std::chrono::milliseconds ONE_ADDRESS = 200ms;  ///< at the least

}  // namespace

struct CConnector::Attempt {
    explicit Attempt(asio::io_context& context) : m_socket(context), m_timer(context) {}

    CNameLookup::Endpoints m_endpoints;
    std::size_t m_nNext = 0;
    bool m_bLate = false;  ///< the address had its time
    asio::ip::tcp::socket m_socket;
    std::optional<TlsSocket> m_tlsSocket;
    asio::steady_timer m_timer;
};

CConnector::CConnector(asio::io_context& context, LinkAddress address, const TlsFiles& files)
    : m_context(context), m_address(std::move(address)),
      m_lookup(context, m_address.m_strHost, m_address.m_nPort) {
    if (m_address.IsEncrypted()) m_tls.emplace(MakePanelTls(files));
}

CConnector::~CConnector() { Cancel(); }

void CConnector::Open(OnOpened onOpened, OnFailed onFailed) {
    Cancel();
    m_onOpened = std::move(onOpened);
    m_onFailed = std::move(onFailed);
    m_spAttempt = std::make_shared<Attempt>(m_context);
    if (m_address.m_scheme == LinkScheme::Serial) return OpenSerial();
    m_lookup.Find([this](const CNameLookup::Endpoints& endpoints, const std::string& strWhyNone) {
        if (endpoints.empty()) return Fail(strWhyNone, false);
        m_spAttempt->m_endpoints = endpoints;
        TryNext();
    });
}

void CConnector::Cancel() {
    m_lookup.Forget();
    if (!m_spAttempt) return;
    asio::error_code ignored;  // what does not close now does when it goes
    m_spAttempt->m_timer.cancel();
    m_spAttempt->m_socket.close(ignored);
    if (m_spAttempt->m_tlsSocket) m_spAttempt->m_tlsSocket->next_layer().close(ignored);
    m_spAttempt.reset();
}

void CConnector::OpenSerial() {
    asio::post(m_context, [this, spAttempt = m_spAttempt] {
        if (spAttempt != m_spAttempt) return;
        asio::error_code error;
        if (auto spStream = OpenLine(m_context, m_address, error))
            Succeed(std::move(spStream));
        else
            Fail(DescribeTransportError(error), false);
    });
}

void CConnector::TryNext() {
    Attempt& attempt = *m_spAttempt;
    attempt.m_bLate = false;
    attempt.m_timer.expires_after(std::max<std::chrono::milliseconds>(
        ONE_ADDRESS, ALL_ADDRESSES / attempt.m_endpoints.size()));
    attempt.m_timer.async_wait([spAttempt = m_spAttempt](const asio::error_code& error) {
        if (error) return;
        spAttempt->m_bLate = true;
        asio::error_code ignored;  // the connecting ends either way
        spAttempt->m_socket.close(ignored);
    });
    attempt.m_socket.async_connect(attempt.m_endpoints[attempt.m_nNext++],
                                   [this, spAttempt = m_spAttempt](const asio::error_code& error) {
                                       if (spAttempt == m_spAttempt) OnConnected(error);
                                   });
}

void CConnector::OnConnected(const asio::error_code& error) {
    Attempt& attempt = *m_spAttempt;
    attempt.m_timer.cancel();
    if (error || attempt.m_bLate) {
        attempt.m_socket = asio::ip::tcp::socket(m_context);
        if (attempt.m_nNext < attempt.m_endpoints.size()) return TryNext();
        return Fail(attempt.m_bLate ? "no answer" : DescribeTransportError(error), false);
    }
    if (m_tls) return ShakeHands();
    Succeed(MakeTcpStream(std::move(attempt.m_socket)));
}

void CConnector::ShakeHands() {
    TlsSocket& socket = m_spAttempt->m_tlsSocket.emplace(std::move(m_spAttempt->m_socket), *m_tls);
    ExpectHost(socket, m_address.m_strHost);
    socket.async_handshake(asio::ssl::stream_base::client, [this, spAttempt = m_spAttempt](
                                                               const asio::error_code& error) {
        if (spAttempt != m_spAttempt) return;
        if (error)
            return Fail(DescribeHandshakeError(*spAttempt->m_tlsSocket, error),
                        IsCertificateTrouble(error));
        Succeed(MakeTlsStream(std::move(*spAttempt->m_tlsSocket)));
    });
}

void CConnector::Succeed(std::shared_ptr<CLinkStream> spStream) {
    m_spAttempt.reset();
    const auto onOpened = std::exchange(m_onOpened, nullptr);
    onOpened(std::move(spStream));
}

void CConnector::Fail(const std::string& strWhy, bool bPatient) {
    m_spAttempt.reset();
    const auto onFailed = std::exchange(m_onFailed, nullptr);
    onFailed(strWhy, bPatient);
}
