// Serves an instrument to panels: the hub with its thread, its clock and its transports.
#pragma once

#include <asio/ssl/context.hpp>
#include <asio/steady_timer.hpp>
#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/Acceptor.h"
#include "link/BrokerStation.h"
#include "link/InstrumentHub.h"
#include "link/LinkStream.h"
#include "link/LinkThread.h"
#include "link/ServedInstrument.h"
#include "link/TlsWelcome.h"

struct ServerSettings {
    HubSettings m_hub;
    std::vector<LinkAddress> m_addresses;  ///< where panels are awaited
    TlsFiles m_tls;                        ///< for tls://
    BrokerLogin m_brokerLogin;             ///< for mqtt:// and mqtts://
    TlsFiles m_brokerTls;                  ///< for mqtts://
    /// A panel came, went or was refused, in words; called on the link's thread, must not wait.
    std::function<void(const std::string& strLine)> m_onNews;
};

/// Panels are served from Start on to the destructor, which takes leave of all of them.
///
/// Bounds: beside the hub's, at most MAX_PARTING connections that are on their way out; one more
/// ends the oldest of these at once.
///
/// Threads: one, called "link", on which everything happens; the instrument's is another.
class CInstrumentServer : private IInstrumentPort {
  public:
    static constexpr std::size_t MAX_PARTING = 8;

    /// Takes the places where panels are awaited.
    /// @param instrument must outlive the server
    /// @throws CListenError, CTlsError
    CInstrumentServer(ServerSettings settings, IServedInstrument& instrument);
    ~CInstrumentServer() override;

    /// Where panels are awaited, with the ports that were found when any would do.
    std::vector<std::string> GetAddresses() const;

    /// Lets panels in. To be called once.
    void Start();

  private:
    /// A serial line, which is opened again when it is back.
    struct Line {
        LinkAddress m_address;
        asio::steady_timer m_timer;
        std::shared_ptr<CLinkStream> m_spStream;  ///< null: it is gone
    };
    /// Of one panel; at most one of the two is there.
    struct Connection {
        std::shared_ptr<CLinkStream> m_spStream;
        std::shared_ptr<CTlsWelcome> m_spWelcome;  ///< under way
        Line* m_pLine = nullptr;                   ///< that it came by; null: a stream
    };

    void Listen(const LinkAddress& address);
    void Greet(asio::ip::tcp::socket socket, const std::string& strFrom, bool bTls);
    void StartStream(PanelId id, std::shared_ptr<CLinkStream> spStream);
    void StartLine(Line& line);
    void ReopenLine(Line& line);
    void Lose(PanelId id, const std::string& strWhy);

    void HandOver();
    void OnTick();
    void SendAll();
    void Finish();

    AckResult Execute(PayloadView image) override;
    void StopCapture() override;
    void OnFirstJoined() override;
    void CloseConnection(PanelId id, std::vector<OutFrame> lastFrames) override;
    void OnNews(const std::string& strLine) override;

    const ServerSettings m_settings;
    IServedInstrument& m_instrument;
    const SendPacket m_send;  ///< to all panels
    std::optional<asio::ssl::context> m_tls;
    CLinkThread m_thread;
    CInstrumentHub m_hub;
    std::vector<std::unique_ptr<CAcceptor>> m_acceptors;
    std::vector<std::unique_ptr<Line>> m_lines;
    std::vector<std::unique_ptr<CBrokerStation>> m_stations;
    std::map<PanelId, Connection> m_connections;
    std::deque<std::weak_ptr<CLinkStream>> m_parting;  ///< the oldest first
    std::atomic<bool> m_bWoken = false;                ///< a hand-over is on its way
    bool m_bStarted = false;
};
