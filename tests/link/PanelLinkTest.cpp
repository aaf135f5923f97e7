// A panel's link as it runs, against an instrument made by hand.
#include "link/PanelLink.h"

#include "tests/link/HandInstrument.h"
#include "tests/link/ScreenBench.h"

namespace {

class PanelLink : public ::testing::Test {
  protected:
    void Open(std::string strAddress = "") {
        if (strAddress.empty()) strAddress = m_instrument.GetAddress();
        m_link.emplace(
            PanelLinkSettings{
                ReadLinkAddress(strAddress, LinkUse::Connect), true, "desk 1", {}, {}},
            m_screen);
    }
    void Start() { m_link->Send(std::string(44, 'x'), ImageKind::Start); }
    void Acknowledge() {
        const auto message = ReadMessage(m_instrument.Read(FrameKind::Message));
        m_instrument.Send(FrameKind::Ack, FormAck({message ? message->m_nNumber : 0}));
    }
    void SendPackets(std::string_view strPackets) {
        for (const char ch : strPackets) m_instrument.Send(FrameKind::Packet, MakePacketOf(ch));
    }
    CPanelLink::Totals End() {
        const auto begin = std::chrono::steady_clock::now();
        const auto totals = m_link->End();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
        return totals;
    }

    CHandInstrument m_instrument;
    CScreenBench m_screen;
    std::optional<CPanelLink> m_link;
};

TEST_F(PanelLink, ThatNobodyAnswersEndsWithinASecond) {
    Open();
    m_instrument.TakePanel();
    m_screen.AwaitState(PanelState::Connected);
    Start();
    m_instrument.Read(FrameKind::Message);
    End();
    Open("tcp://no-such-host.invalid");
    End();
    Open("tcp://127.0.0.1:1");
    std::this_thread::sleep_for(50ms);
    End();
}

TEST_F(PanelLink, BreaksOffWithABadInstrumentAndGoesOnWithAGoodOne) {
    const Bytes http(30, 'H');
    Open();
    // No good frame has come in: no answer.
    m_instrument.Accept();
    m_instrument.SendBytes(http);
    EXPECT_EQ(m_instrument.ReadEnd(), std::nullopt);
    for (const auto& [bytes, reason] : {std::pair(http, LinkReason::Damaged),
                                        {MakeBytes(FrameKind::Hello, 1), LinkReason::Malformed}}) {
        m_instrument.TakePanel();
        m_instrument.SendBytes(bytes);
        EXPECT_EQ(m_instrument.ReadEnd(), reason);
    }
    m_instrument.TakePanel();
    EXPECT_TRUE(m_screen.AwaitState(PanelState::Connected));
    EXPECT_EQ(End().m_nReconnections, 2u);
}

TEST_F(PanelLink, HoldsNoMoreThanItsBoundOfPacketsThatNobodyTakes) {
    // Small ones, of which each costs 256 bytes beside its payload of 8.
    constexpr std::uint32_t SENT = 70000, HELD = (16u << 20) / 264;
    Bytes bytes;
    const auto spPacket = std::make_shared<const Bytes>(MakePacketOf('s'));
    for (std::uint32_t n = 0; n < SENT; ++n)
        MakeFrame(FrameKind::Packet, 0, 3 + n, spPacket).AppendTo(bytes);
    Open();
    m_instrument.TakePanel();
    m_screen.AwaitState(PanelState::Connected);
    Start();
    Acknowledge();
    SendPackets("r");
    m_instrument.SendBytes(bytes);
    EXPECT_TRUE(m_screen.Await([&] { return m_screen.m_packets.size() >= HELD; }));
    std::this_thread::sleep_for(200ms);
    {
        const std::lock_guard lock(m_screen.m_mutex);
        EXPECT_LE(m_screen.m_packets.size(), HELD + 65536 / 36 + 1);  // and one read
        m_screen.m_packets.clear();
    }
    EXPECT_TRUE(m_screen.Await([&] { return m_screen.m_strPushed.size() == SENT + 1; }));
    EXPECT_EQ(m_screen.GetStatus().m_nLostInCapture, 0u);
}

TEST_F(PanelLink, OnALineAsksAgainUntilTheInstrumentHasStarted) {
    std::optional<CPseudoTerminal> terminal(std::in_place);
    Open("serial:" + terminal->GetDevice());
    CFrameReader reader(LinkManner::Line, MAX_PAYLOAD_TO_INSTRUMENT);
    const auto readJoin = [&] {
        std::optional<Join> join;
        m_screen.Await([&] {
            Bytes bytes(1000);
            const auto nRead = ::read(terminal->m_hFile, bytes.data(), bytes.size());
            reader.Add(
                std::span(bytes).first(static_cast<std::size_t>(std::max(nRead, ssize_t{0}))), {});
            while (const auto frame = reader.Read())
                if (frame->m_kind == FrameKind::Join) join = ReadJoin(frame->m_payload);
            return join.has_value();
        });
        return join ? join->m_nAttempt : 0;
    };
    EXPECT_EQ(readJoin(), 1u);
    EXPECT_EQ(readJoin(), 2u);
    Hello hello = CHandInstrument::MakeHello();
    hello.m_nAttempt = 2;
    const Bytes bytes = MakeBytes(FrameKind::KeepAlive, 7) + Bytes{1, 2, 3} +
                        MakeBytes(FrameKind::Hello, 0, FormHello(hello));
    ASSERT_EQ(::write(terminal->m_hFile, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    EXPECT_TRUE(m_screen.AwaitState(PanelState::Connected));
    terminal.reset();
    EXPECT_TRUE(m_screen.AwaitState(PanelState::Waiting));
    EXPECT_EQ(m_screen.GetStatus().m_trouble.m_strEnglish, "the device is gone");
}

}  // namespace
