#include "link/PanelLink.h"

#include <future>
#include <random>
#include <utility>

#include "link/LinkThread.h"
#include "link/PanelConnection.h"

namespace {

/// A little longer than the session gives waiting messages.
constexpr std::chrono::milliseconds FINISH_PATIENCE{600};
/// In which all is over.
constexpr std::chrono::milliseconds END_TIME{950};

std::uint32_t MakeToken() {
    std::random_device random;
    for (;;)
        if (const std::uint32_t nToken = random()) return nToken;
}

PanelSettings MakeSettings(const PanelLinkSettings& settings) {
    PanelSettings session;
    if (settings.m_address.m_scheme == LinkScheme::Serial) session.m_manner = LinkManner::Line;
    if (settings.m_address.IsBroker()) session.m_manner = LinkManner::Broker;
    session.m_bCommand = settings.m_bCommand;
    session.m_nToken = MakeToken();
    session.m_strName = settings.m_strName;
    session.m_random = [random = std::minstd_rand(session.m_nToken)]() mutable {
        return std::uniform_real_distribution<>(0, 1)(random);
    };
    return session;
}

}  // namespace

/// Everything here happens on the link's thread.
struct CPanelLink::Inside final : private IPanelTransport {
    Inside(const PanelLinkSettings& settings, const PanelSettings& session, IPanelScreen& screen)
        : m_session(session, *this, screen),
          m_pConnection(MakePanelConnection(m_thread.GetContext(), settings, session.m_nToken,
                                            MakeEvents())) {}

    /// Does something with the session, and then what that has left to the transport.
    template <class Operation>
    void Do(Operation operation) {
        operation(m_session, CLinkThread::Now());
        m_pConnection->Send(m_session.GetPeer().GetQueue());
        m_pConnection->SetReading(m_session.WantsBytes());
        if (m_session.GetState() == PanelState::Ended && !std::exchange(m_bEnded, true))
            m_ended.set_value();
    }

    ConnectionEvents MakeEvents() {
        return {
            [this] { Do([](CPanelSession& session, LinkTime now) { session.OnOpened(now); }); },
            [this](std::span<const std::uint8_t> bytes) {
                Do([&](CPanelSession& session, LinkTime now) { session.OnBytes(bytes, now); });
            },
            [this](BrokerTopic topic, std::span<const std::uint8_t> bytes) {
                Do([&](CPanelSession& session, LinkTime now) {
                    session.OnBrokerMessage(topic, bytes, now);
                });
            },
            [this] {
                Do([](CPanelSession& session, LinkTime) { session.GetPeer().GetQueue().OnSent(); });
            },
            [this](const std::string& strWhy, bool bPatient) {
                Do([&](CPanelSession& session, LinkTime now) {
                    session.OnTransportLost(strWhy, bPatient, now);
                });
            }};
    }

    void OpenTransport() override { m_pConnection->Open(); }
    void CloseTransport(std::vector<OutFrame> lastFrames) override {
        m_pConnection->Close(lastFrames);
    }

    CLinkThread m_thread;
    CPanelSession m_session;
    const std::unique_ptr<IPanelConnection> m_pConnection;
    bool m_bEnded = false;
    std::promise<void> m_ended;
};

CPanelLink::CPanelLink(const PanelLinkSettings& settings, IPanelScreen& screen)
    : m_pInside(std::make_unique<Inside>(settings, MakeSettings(settings), screen)) {
    Inside* const pInside = m_pInside.get();
    pInside->m_thread.Post([pInside] {
        pInside->Do([](CPanelSession& session, LinkTime now) { session.Start(now); });
    });
    pInside->m_thread.Start("link-panel", [pInside] {
        pInside->Do([](CPanelSession& session, LinkTime now) { session.OnTime(now); });
    });
}

CPanelLink::~CPanelLink() { End(); }

void CPanelLink::Send(std::string image, ImageKind kind) {
    m_pInside->m_thread.Post([pInside = m_pInside.get(), image = std::move(image), kind] {
        pInside->Do([&](CPanelSession& session, LinkTime now) { session.Send(image, kind, now); });
    });
}

void CPanelLink::OnSampleTimeSet() {
    m_pInside->m_thread.Post([pInside = m_pInside.get()] {
        pInside->Do([](CPanelSession& session, LinkTime now) { session.OnSampleTimeSet(now); });
    });
}

CPanelLink::Totals CPanelLink::End() {
    if (!m_pInside) return {};
    const auto deadline = std::chrono::steady_clock::now() + END_TIME;
    m_pInside->m_thread.Post([pInside = m_pInside.get()] {
        pInside->Do([](CPanelSession& session, LinkTime now) { session.Finish(now); });
    });
    m_pInside->m_ended.get_future().wait_for(FINISH_PATIENCE);
    m_pInside->m_thread.End();
    m_pInside->m_pConnection->AwaitClosed(deadline);
    const Totals totals{m_pInside->m_session.GetPeer().GetCounts(),
                        m_pInside->m_session.CountReconnections()};
    m_pInside.reset();
    return totals;
}
