#include "link/PanelLink.h"

#include <future>
#include <random>
#include <utility>

#include "link/Connector.h"
#include "link/LinkThread.h"
#include "link/PanelSession.h"

namespace {

/// A little longer than the session gives waiting messages.
constexpr std::chrono::milliseconds FINISH_PATIENCE{600};

std::uint32_t MakeToken() {
    std::random_device random;
    for (;;)
        if (const std::uint32_t nToken = random()) return nToken;
}

PanelSettings MakeSettings(const PanelLinkSettings& settings) {
    PanelSettings session;
    session.m_manner =
        settings.m_address.m_scheme == LinkScheme::Serial ? LinkManner::Line : LinkManner::Stream;
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
    Inside(const PanelLinkSettings& settings, IPanelScreen& screen)
        : m_session(MakeSettings(settings), *this, screen),
          m_connector(m_thread.GetContext(), settings.m_address, settings.m_tlsFiles) {}

    /// Does something with the session, and then what that has left to the transport.
    template <class Operation>
    void Do(Operation operation) {
        operation(m_session, CLinkThread::Now());
        if (m_spStream) {
            m_spStream->Send(m_session.GetPeer().GetQueue());
            m_spStream->SetReading(m_session.WantsBytes());
        }
        if (m_session.GetState() == PanelState::Ended && !std::exchange(m_bEnded, true))
            m_ended.set_value();
    }

    void OpenTransport() override {
        m_connector.Open(
            [this](std::shared_ptr<CLinkStream> spStream) { TakeStream(std::move(spStream)); },
            [this](const std::string& strWhy, bool bPatient) { OnLost(strWhy, bPatient); });
    }

    void CloseTransport(std::vector<OutFrame> lastFrames) override {
        m_connector.Cancel();
        if (const auto spStream = std::exchange(m_spStream, nullptr)) spStream->Close(lastFrames);
    }

    void TakeStream(std::shared_ptr<CLinkStream> spStream) {
        m_spStream = std::move(spStream);
        m_spStream->Start(
            {[this](std::span<const std::uint8_t> bytes) {
                 Do([&](CPanelSession& session, LinkTime now) { session.OnBytes(bytes, now); });
             },
             [this] {
                 Do([](CPanelSession& session, LinkTime) {
                     session.GetPeer().GetQueue().OnSent();
                 });
             },
             [this](const std::string& strWhy, bool bPatient) { OnLost(strWhy, bPatient); }});
        Do([](CPanelSession& session, LinkTime now) { session.OnOpened(now); });
    }

    void OnLost(const std::string& strWhy, bool bPatient) {
        m_spStream.reset();
        Do([&](CPanelSession& session, LinkTime now) {
            session.OnTransportLost(strWhy, bPatient, now);
        });
    }

    CLinkThread m_thread;
    CPanelSession m_session;
    CConnector m_connector;
    std::shared_ptr<CLinkStream> m_spStream;  ///< while it is open
    bool m_bEnded = false;
    std::promise<void> m_ended;
};

CPanelLink::CPanelLink(const PanelLinkSettings& settings, IPanelScreen& screen)
    : m_pInside(std::make_unique<Inside>(settings, screen)) {
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
    m_pInside->m_thread.Post([pInside = m_pInside.get()] {
        pInside->Do([](CPanelSession& session, LinkTime now) { session.Finish(now); });
    });
    m_pInside->m_ended.get_future().wait_for(FINISH_PATIENCE);
    m_pInside->m_thread.End();
    const Totals totals{m_pInside->m_session.GetPeer().GetCounts(),
                        m_pInside->m_session.CountReconnections()};
    m_pInside.reset();
    return totals;
}
