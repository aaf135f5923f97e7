#include "link/TlsWelcome.h"

#include <utility>

void CTlsWelcome::Start(OnDone onDone, OnFailed onFailed) {
    m_onDone = std::move(onDone);
    m_onFailed = std::move(onFailed);
    m_timer.expires_after(HANDSHAKE_TIME);
    m_timer.async_wait([sp = shared_from_this()](const asio::error_code& error) {
        if (error) return;
        sp->m_bLate = true;
        sp->Close();
    });
    m_socket.async_handshake(
        asio::ssl::stream_base::server,
        [sp = shared_from_this()](const asio::error_code& error) { sp->OnShaken(error); });
}

void CTlsWelcome::OnShaken(const asio::error_code& error) {
    m_timer.cancel();
    const OnDone onDone = std::exchange(m_onDone, nullptr);
    const OnFailed onFailed = std::exchange(m_onFailed, nullptr);
    if (!onDone) return;
    if (!error && !m_bLate) return onDone(MakeTlsStream(std::move(m_socket)));
    onFailed(m_bLate ? "the handshake takes too long" : DescribeHandshakeError(m_socket, error));
    Close();
}

void CTlsWelcome::Cancel() {
    m_onDone = nullptr;
    m_onFailed = nullptr;
    m_timer.cancel();
    Close();
}

void CTlsWelcome::Close() {
    asio::error_code ignored;
    m_socket.next_layer().close(ignored);
}
