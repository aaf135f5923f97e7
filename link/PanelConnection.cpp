#include "link/PanelConnection.h"

#include <cstdio>
#include <utility>

#include "link/BrokerClient.h"
#include "link/Connector.h"

namespace {

class CStreamConnection final : public IPanelConnection {
  public:
    CStreamConnection(asio::io_context& context, const PanelLinkSettings& settings,
                      ConnectionEvents events)
        : m_events(std::move(events)),
          m_connector(context, settings.m_address, settings.m_tlsFiles) {}

    void Open() override {
        m_connector.Open(
            [this](std::shared_ptr<CLinkStream> spStream) {
                m_spStream = std::move(spStream);
                m_spStream->Start({m_events.m_onBytes, m_events.m_onSent,
                                   [this](const std::string& strWhy, bool bPatient) {
                                       m_spStream.reset();
                                       m_events.m_onLost(strWhy, bPatient);
                                   }});
                m_events.m_onOpened();
            },
            m_events.m_onLost);
    }

    void Close(const std::vector<OutFrame>& lastFrames) override {
        m_connector.Cancel();
        if (const auto spStream = std::exchange(m_spStream, nullptr)) spStream->Close(lastFrames);
    }

    void Send(CFrameQueue& queue) override {
        if (m_spStream) m_spStream->Send(queue);
    }

    void SetReading(bool bReading) override {
        if (m_spStream) m_spStream->SetReading(bReading);
    }

    void AwaitClosed(std::chrono::steady_clock::time_point /*deadline*/) override {}

  private:
    const ConnectionEvents m_events;
    CConnector m_connector;
    std::shared_ptr<CLinkStream> m_spStream;  ///< while it is open
};

class CBrokerConnection final : public IPanelConnection {
  public:
    CBrokerConnection(asio::io_context& context, const PanelLinkSettings& settings,
                      std::uint32_t nToken, ConnectionEvents events)
        : m_context(context), m_events(std::move(events)) {
        char szToken[9];
        std::snprintf(szToken, sizeof szToken, "%08x", nToken);
        const std::string& strTopic = settings.m_address.m_strTopic;
        m_strHello = strTopic + "/hello";
        m_strDown = strTopic + "/down/" + szToken;
        m_strUp = strTopic + "/up/" + szToken;
        m_settings.m_address = settings.m_address;
        m_settings.m_login = settings.m_login;
        m_settings.m_tlsFiles = settings.m_tlsFiles;
        m_settings.m_subscriptions = {
            {strTopic + "/packets", BrokerCare::None},
            {settings.m_bCommand ? m_strDown : m_strHello, BrokerCare::Once}};
    }

    void Open() override {
        m_bOpen = false;
        m_pClient = std::make_unique<CBrokerClient>(
            m_context, m_settings,
            BrokerEvents{[this] {
                             m_bOpen = true;
                             m_events.m_onOpened();
                         },
                         [this](const std::string& strTopic, std::span<const std::uint8_t> bytes) {
                             if (m_bOpen) m_events.m_onBrokerMessage(FindTopic(strTopic), bytes);
                         },
                         m_events.m_onSent,
                         [this](const std::string& strWhy, bool bPatient) {
                             m_pClient.reset();
                             m_events.m_onLost(strWhy, bPatient);
                         }});
    }

    void Close(const std::vector<OutFrame>& lastFrames) override {
        if (!m_pClient) return;
        for (const OutFrame& frame : lastFrames) Publish(frame);
        m_closed = m_pClient->Close();
        m_pClient.reset();
    }

    void Send(CFrameQueue& queue) override {
        if (!m_pClient || !m_bOpen || m_pClient->CountUnsent() > 0) return;
        for (const OutFrame& frame : queue.Take(CLinkStream::PIECE)) Publish(frame);
    }

    void SetReading(bool bReading) override {
        if (m_pClient) m_pClient->SetReading(bReading);
    }

    void AwaitClosed(std::chrono::steady_clock::time_point deadline) override {
        if (m_closed.valid()) m_closed.wait_until(deadline);
    }

  private:
    BrokerTopic FindTopic(const std::string& strTopic) const {
        if (strTopic == m_strHello) return BrokerTopic::Hello;
        return strTopic == m_strDown ? BrokerTopic::Down : BrokerTopic::Packets;
    }

    void Publish(const OutFrame& frame) {
        BrokerMessage message{m_strUp, {}, BrokerCare::Once, false};
        frame.AppendTo(message.m_bytes);
        m_pClient->Publish(message);
    }

    asio::io_context& m_context;
    const ConnectionEvents m_events;
    BrokerSettings m_settings;
    std::string m_strHello;
    std::string m_strDown;
    std::string m_strUp;
    std::unique_ptr<CBrokerClient> m_pClient;  ///< while it is open or being opened
    bool m_bOpen = false;
    std::future<void> m_closed;  ///< of the last one
};

}  // namespace

std::unique_ptr<IPanelConnection> MakePanelConnection(asio::io_context& context,
                                                      const PanelLinkSettings& settings,
                                                      std::uint32_t nToken,
                                                      ConnectionEvents events) {
    if (settings.m_address.IsBroker())
        return std::make_unique<CBrokerConnection>(context, settings, nToken, std::move(events));
    return std::make_unique<CStreamConnection>(context, settings, std::move(events));
}
