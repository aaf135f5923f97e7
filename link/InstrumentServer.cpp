#include "link/InstrumentServer.h"

#include <algorithm>
#include <future>

#include "link/LineRate.h"

namespace {

/// Between two tries to open a line that is gone.
constexpr std::chrono::milliseconds REOPEN_TIME{500};

constexpr std::size_t MIN_LINE_FRAME = 256;
constexpr std::size_t FRAMES_PER_SECOND = 4;  ///< of a line, of the longest frames

/// The longest frame of a line, in bytes: nothing is to wait long behind it.
std::size_t FindMaxFrame(const LinkAddress& address) {
    return std::max(MIN_LINE_FRAME, GetLineRate(address) / FRAMES_PER_SECOND);
}

}  // namespace

CInstrumentServer::CInstrumentServer(ServerSettings settings, IServedInstrument& instrument)
    : m_settings(std::move(settings)), m_instrument(instrument),
      m_send([this](const PacketView& packet, std::uint16_t nFlags) {
          m_hub.Broadcast(packet, nFlags, CLinkThread::Now());
          for (const auto& pStation : m_stations) pStation->Send(packet, nFlags);
      }),
      m_hub(m_settings.m_hub, *this) {
    for (const LinkAddress& address : m_settings.m_addresses) Listen(address);
}

void CInstrumentServer::Listen(const LinkAddress& address) {
    asio::io_context& context = m_thread.GetContext();
    if (address.m_scheme == LinkScheme::Serial) {
        asio::error_code error;
        auto spStream = OpenLine(context, address, error);
        if (!spStream) throw CListenError(address.m_strText + ": " + DescribeTransportError(error));
        m_lines.push_back(std::make_unique<Line>(
            Line{address, asio::steady_timer(context), std::move(spStream)}));
        return;
    }
    if (address.IsBroker()) {
        BrokerSettings settings;
        settings.m_address = address;
        settings.m_login = m_settings.m_brokerLogin;
        settings.m_tlsFiles = m_settings.m_brokerTls;
        m_stations.push_back(std::make_unique<CBrokerStation>(
            context, m_hub, std::move(settings),
            [this](const std::string& strLine) { OnNews(strLine); }));
        return;
    }
    if (address.m_scheme == LinkScheme::Tls && !m_tls) m_tls = MakeInstrumentTls(m_settings.m_tls);
    m_acceptors.push_back(std::make_unique<CAcceptor>(context, address));
}

std::vector<std::string> CInstrumentServer::GetAddresses() const {
    std::vector<std::string> addresses;
    for (const auto& pAcceptor : m_acceptors)
        addresses.push_back(FormatLinkAddress(pAcceptor->GetAddress()));
    for (const auto& pLine : m_lines) addresses.push_back(FormatLinkAddress(pLine->m_address));
    for (const auto& pStation : m_stations)
        addresses.push_back(FormatLinkAddress(pStation->GetAddress()));
    return addresses;
}

void CInstrumentServer::Start() {
    m_bStarted = true;
    m_instrument.Begin([this] {
        if (!m_bWoken.exchange(true)) m_thread.Post([this] { HandOver(); });
    });
    m_thread.Start("link", [this] { OnTick(); });
    m_thread.Post([this] {
        for (const auto& pLine : m_lines) StartLine(*pLine);
        for (const auto& pStation : m_stations) pStation->Start();
        for (const auto& pAcceptor : m_acceptors) {
            const bool bTls = pAcceptor->GetAddress().IsEncrypted();
            pAcceptor->Start(
                [this, bTls](asio::ip::tcp::socket socket, const std::string& strFrom) {
                    Greet(std::move(socket), strFrom, bTls);
                });
        }
    });
}

CInstrumentServer::~CInstrumentServer() {
    if (!m_bStarted) return;
    const auto spFinished = std::make_shared<std::promise<void>>();
    m_thread.Post([this, spFinished] {
        Finish();
        spFinished->set_value();
    });
    spFinished->get_future().wait();
    m_instrument.End();
    m_thread.End();
}

void CInstrumentServer::Finish() {
    for (const auto& pAcceptor : m_acceptors) pAcceptor->Close();
    m_hub.Finish(CLinkThread::Now());
    for (auto& [id, connection] : m_connections)
        connection.m_spStream->Close(m_hub.GetQueue(id)->TakeRest());
    m_connections.clear();
    for (const auto& pLine : m_lines) pLine->m_timer.cancel();
    for (const auto& pStation : m_stations) pStation->Finish();
}

void CInstrumentServer::Greet(asio::ip::tcp::socket socket, const std::string& strFrom, bool bTls) {
    const PanelId id = m_hub.OnOpened({LinkManner::Stream, strFrom}, CLinkThread::Now());
    if (!bTls) return StartStream(id, MakeTcpStream(std::move(socket)));
    const auto spWelcome = std::make_shared<CTlsWelcome>(std::move(socket), *m_tls);
    m_connections[id].m_spWelcome = spWelcome;
    spWelcome->Start(
        [this, id](std::shared_ptr<CLinkStream> spStream) {
            m_connections[id].m_spWelcome.reset();
            StartStream(id, std::move(spStream));
        },
        [this, id, strFrom](const std::string& strWhy) {
            OnNews(strFrom + " refused: " + strWhy);
            Lose(id, strWhy);
        });
}

void CInstrumentServer::StartStream(PanelId id, std::shared_ptr<CLinkStream> spStream) {
    CLinkStream& stream = *spStream;
    m_connections[id].m_spStream = std::move(spStream);
    StreamEvents events;
    events.m_onBytes = [this, id](std::span<const std::uint8_t> bytes) {
        m_hub.OnBytes(id, bytes, CLinkThread::Now());
        SendAll();
    };
    events.m_onSent = [this, id] {
        CFrameQueue* const pQueue = m_hub.GetQueue(id);
        if (pQueue == nullptr) return;
        pQueue->OnSent();
        m_connections[id].m_spStream->Send(*pQueue);
    };
    events.m_onLost = [this, id](const std::string& strWhy, bool) { Lose(id, strWhy); };
    stream.Start(std::move(events));
}

void CInstrumentServer::StartLine(Line& line) {
    const PanelId id =
        m_hub.OnOpened({LinkManner::Line, line.m_address.m_strDevice, FindMaxFrame(line.m_address)},
                       CLinkThread::Now());
    m_connections[id].m_pLine = &line;
    StartStream(id, std::move(line.m_spStream));
}

void CInstrumentServer::ReopenLine(Line& line) {
    line.m_timer.expires_after(REOPEN_TIME);
    line.m_timer.async_wait([this, &line](const asio::error_code& cancelled) {
        if (cancelled) return;
        asio::error_code error;
        line.m_spStream = OpenLine(m_thread.GetContext(), line.m_address, error);
        if (!line.m_spStream) return ReopenLine(line);
        OnNews(line.m_address.m_strDevice + " is back");
        StartLine(line);
    });
}

void CInstrumentServer::Lose(PanelId id, const std::string& strWhy) {
    const auto found = m_connections.find(id);
    if (found == m_connections.end()) return;
    Line* const pLine = found->second.m_pLine;
    m_connections.erase(found);
    m_hub.OnClosed(id, strWhy);
    SendAll();
    if (pLine == nullptr) return;
    OnNews(pLine->m_address.m_strDevice + ": " + strWhy + "; waiting for it");
    ReopenLine(*pLine);
}

void CInstrumentServer::HandOver() {
    m_bWoken = false;
    m_instrument.HandOver(m_send);
    SendAll();
}

void CInstrumentServer::OnTick() {
    const LinkTime now = CLinkThread::Now();
    m_hub.OnTime(now);
    for (const auto& pStation : m_stations) pStation->OnTime(now);
    SendAll();
}

void CInstrumentServer::SendAll() {
    for (const auto& [id, connection] : m_connections)
        if (connection.m_spStream) connection.m_spStream->Send(*m_hub.GetQueue(id));
    for (const auto& pStation : m_stations) pStation->SendAll();
}

AckResult CInstrumentServer::Execute(PayloadView image) {
    return m_instrument.Execute(image, m_send);
}

void CInstrumentServer::StopCapture() { m_instrument.StopCapture(m_send); }

void CInstrumentServer::OnFirstJoined() { m_instrument.OnFirstJoined(); }

void CInstrumentServer::CloseConnection(PanelId id, std::vector<OutFrame> lastFrames) {
    const auto found = m_connections.find(id);
    if (found == m_connections.end()) return;
    const Connection connection = std::move(found->second);
    m_connections.erase(found);
    if (connection.m_spWelcome) return connection.m_spWelcome->Cancel();
    connection.m_spStream->Close(lastFrames);
    std::erase_if(m_parting, [](const auto& wpStream) { return wpStream.expired(); });
    m_parting.push_back(connection.m_spStream);
    if (m_parting.size() <= MAX_PARTING) return;
    if (const auto spOldest = m_parting.front().lock()) spOldest->Abandon();
    m_parting.pop_front();
}

void CInstrumentServer::OnNews(const std::string& strLine) { m_settings.m_onNews(strLine); }
