// A panel's link over a real message broker, against an instrument made by hand.
#include "tests/link/Broker.h"
#include "link/BrokerClient.h"
#include "link/PanelLink.h"
#include "tests/link/ScreenBench.h"

namespace {

class Broker : public ::testing::Test {
  protected:
    void OpenPanel(BrokerLogin login = {}) {
        m_link.emplace(PanelLinkSettings{ReadLinkAddress(m_broker.GetAddress(), LinkUse::Connect),
                                         true,
                                         "desk 1",
                                         {},
                                         std::move(login)},
                       m_screen);
    }
    /// The instrument's station at the broker.
    void OpenInstrument() {
        bool bOpen = false;
        m_instrument.emplace(
            m_context,
            BrokerSettings{ReadLinkAddress(m_broker.GetAddress(), LinkUse::Connect),
                           {},
                           {},
                           {{"hall/press/up/+", BrokerCare::Once}},
                           {}},
            BrokerEvents{[&] { bOpen = true; },
                         [this](const std::string& strTopic, std::span<const std::uint8_t> bytes) {
                             m_strTopic = strTopic;
                             m_strHeard += DescribeFrames({bytes.begin(), bytes.end()});
                             m_lastFrame.assign(bytes.begin(), bytes.end());
                         },
                         [] {}, [](auto...) {}});
        EXPECT_TRUE(RunUntil(m_context, [&] { return bOpen; }));
    }
    bool AwaitHeard(const std::string& strFrames) {
        const bool bThere = RunUntil(m_context, [&] {
            std::erase(m_strHeard, 'K');
            return m_strHeard == strFrames;
        });
        EXPECT_EQ(m_strHeard, strFrames);
        return bThere;
    }
    void Say(const std::string& strTopic, FrameKind kind, std::uint32_t nNumber, Bytes payload) {
        m_instrument->Publish({std::string("hall/press/").append(strTopic),
                               MakeBytes(kind, nNumber, std::move(payload)),
                               strTopic == "packets" ? BrokerCare::None : BrokerCare::Once, false});
    }
    void SendPackets(std::string_view strPackets) {
        for (const char ch : strPackets)
            Say("packets", FrameKind::Packet, m_nPacket++, MakePacketOf(ch));
    }
    static Hello MakeHello(std::uint32_t nAttempt) {
        Hello hello = CPanelBench::MakeHello();
        hello.m_nAttempt = nAttempt;
        return hello;
    }

    CBroker m_broker;
    asio::io_context m_context;
    std::optional<CBrokerClient> m_instrument;
    std::string m_strTopic;
    std::string m_strHeard;
    Bytes m_lastFrame;
    std::uint32_t m_nPacket = 7;
    CScreenBench m_screen;
    std::optional<CPanelLink> m_link;
};

TEST_F(Broker, CarriesACommandingPanel) {
    OpenInstrument();
    OpenPanel();
    ASSERT_TRUE(AwaitHeard("J1"));
    const auto join = ReadJoin(std::span(m_lastFrame).subspan(FRAME_HEAD));
    char szToken[9];
    std::snprintf(szToken, sizeof szToken, "%08x", join ? join->m_nToken : 0);
    EXPECT_EQ(m_strTopic, std::string("hall/press/up/") + szToken);
    const std::string strDown = std::string("down/") + szToken;
    SendPackets("s");  // nobody has joined
    Say(strDown, FrameKind::Hello, 0, FormHello(MakeHello(1)));
    EXPECT_TRUE(m_screen.AwaitState(PanelState::Connected));
    m_link->Send(std::string(44, 'x'), ImageKind::Start);
    ASSERT_TRUE(AwaitHeard("J1M1"));
    Say("packets", FrameKind::Ack, m_nPacket++, FormAck({1}));
    SendPackets("rs");
    ++m_nPacket;
    SendPackets("si");
    EXPECT_TRUE(m_screen.AwaitPushed("rssi"));
    EXPECT_TRUE(m_screen.Await([this] { return m_screen.m_status.m_nLostInCapture == 1; }));
    Say(strDown, FrameKind::Goodbye, 1, FormParting({LinkReason::InstrumentEnds, ""}));
    EXPECT_TRUE(m_screen.Await([this] { return m_screen.m_status.m_bLost; }));
    ASSERT_TRUE(AwaitHeard("J1M1J2"));
    Say(strDown, FrameKind::Hello, 0, FormHello(MakeHello(2)));
    EXPECT_TRUE(m_screen.AwaitState(PanelState::Connected));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(m_link->End().m_nReconnections, 1u);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    EXPECT_TRUE(AwaitHeard("J1M1J2G0"));
}

TEST_F(Broker, ThatIsNotThereOrDoesNotLetThePanelInIsSaid) {
    const auto awaitTrouble = [this](const std::string& strWhy) {
        EXPECT_TRUE(m_screen.Await([&] {
            return m_screen.m_status.m_trouble.m_strEnglish.find(strWhy) != std::string::npos;
        })) << m_screen.GetStatus().m_trouble.m_strEnglish;
    };
    m_broker.Stop();
    OpenPanel();
    awaitTrouble("connection refused");
    m_broker.Start();
    OpenInstrument();
    EXPECT_TRUE(RunUntil(m_context, [&] { return m_strHeard.starts_with("J"); }));
    m_link.reset();
    m_instrument.reset();

    OpenPanel({"desk", "/no/such/file"});
    awaitTrouble("there is no password");
}

}  // namespace
