// The panel's end of the link, in scripted time: its messages, and what the screen gets to see.
#include <gtest/gtest.h>

#include "tests/link/PanelBench.h"

namespace {

using enum ImageKind;

TEST(PanelCapture, BringsMessagesOneAtATime) {
    CPanelBench bench;
    bench.Join().TakeSent();
    for (int i = 0; i < 9; ++i) bench.Send(Other);
    EXPECT_EQ(bench.TakeSent(), "M1");
    EXPECT_EQ(bench.Ack(2).Ack(7).TakeSent(), "");
    EXPECT_EQ(bench.Ack(1).TakeSent(), "M2");
    EXPECT_EQ(bench.Ack(1).PassAlive(1s).Ack(2).TakeSent(), "M2M3");
    EXPECT_EQ(bench.PassAlive(2500ms).TakeSent(), "M3M3");
    EXPECT_EQ(bench.PassAlive(500ms).TakeSent(), "G9");
    EXPECT_EQ(bench.GetText(), "Connection lost (silence for 3 s: a message was not answered). "
                               "Trying again.");
    // None of those that waited is sent on the next connection.
    bench.Pass(100ms).Join();
    EXPECT_EQ(bench.PassAlive(1s).TakeSent(), "J2K");
    EXPECT_EQ(bench.Send(Stop).TakeSent(), "M1");
    EXPECT_EQ(bench.TakePushed(), "");
    for (int i = 0; i < 9; ++i) bench.Send(i < 8 ? Other : Stop);
    EXPECT_EQ(bench.TakePushed(), "I");
}

TEST(PanelCapture, TellsTheScreenWhatBecameOfAStart) {
    CPanelBench bench;
    bench.Join();
    for (const int nResult : {1, 2, 3, 4, 77}) {
        bench.Send(Start).Feed("rsi").Ack(static_cast<std::uint32_t>(nResult == 77 ? 5 : nResult),
                                          nResult);
        EXPECT_EQ(bench.TakePushed(), "I") << nResult;
        EXPECT_NE(bench.m_status.m_notice, LinkText()) << nResult;
        EXPECT_FALSE(bench.m_status.m_bRunning);
    }
    bench.Send(Start).Ack(6).Feed("rss");
    EXPECT_EQ(bench.TakePushed(), "rss");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), capture running");
    bench.Send(Other).Ack(7, 1);
    EXPECT_EQ(bench.TakePushed(), "");
    // Of two starts the second is what the screen shows.
    bench.Send(Start).Send(Start).Feed("s").Ack(8, 4).Feed("s").Ack(9).Feed("rsi");
    EXPECT_EQ(bench.TakePushed(), "rsi");
    // One that is refused shows nothing of the capture that goes on.
    bench.Send(Start).Ack(10).Feed("r").Send(Start).Ack(11, 4).Feed("s");
    EXPECT_EQ(bench.TakePushed(), "rI");
}

TEST(PanelCapture, DropsWhatBelongsToTheCaptureBefore) {
    CPanelBench bench;
    bench.Join().Feed("sso");
    EXPECT_EQ(bench.TakePushed(), "o");
    bench.Send(Start).Ack(1).Feed("rs");
    bench.Send(Start).Feed("sion").Ack(2).Feed("rsi");
    EXPECT_EQ(bench.TakePushed(), "rsorsi");
    EXPECT_EQ(bench.m_status.m_nLostInCapture, 0u);
    // The first answer was lost, and the values until the second with it.
    bench.Send(Start).Feed("rss").PassAlive(1s).Feed("s").Ack(3).Feed("s");
    EXPECT_EQ(bench.TakePushed(), "s");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), 3 packets lost in this capture");
}

TEST(PanelCapture, CountsWhatIsMissing) {
    CPanelBench bench;
    bench.Join();
    bench.m_nNext += 5;
    EXPECT_EQ(bench.Feed("o").m_status.m_nLostInCapture, 0u);
    EXPECT_EQ(bench.Send(Start).Ack(1).Feed("r").m_status.m_nLostInCapture, 0u);
    bench.m_nNext += 1;
    bench.Feed("s");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), 1 packet lost in this capture");
    bench.m_nNext -= 2;
    bench.Feed("s");
    bench.m_nNext += 3;
    bench.Feed("si");
    EXPECT_EQ(bench.TakePushed(), "orssi");
    EXPECT_EQ(bench.m_status.m_nLostInCapture, 3u);
    EXPECT_EQ(bench.m_session.GetPeer().GetCounts().m_nLost, 8u);
    EXPECT_EQ(bench.m_session.GetPeer().GetCounts().m_nOld, 1u);
    EXPECT_EQ(bench.Send(Start).GetText(), "press (no. 0042), capture running");
}

TEST(PanelCapture, EndsTheCaptureWhenTheConnectionEnds) {
    CPanelBench bench;
    bench.Join().Send(Start).Ack(1).Feed("rs").Send(Stop).Send(Other);
    bench.m_session.OnTransportLost("connection reset", false, bench.m_now);
    EXPECT_EQ(bench.TakePushed(), "rsi");
    EXPECT_EQ(bench.GetText(),
              "Connection lost (connection reset), capture cut short. Trying again.");
    // Nothing is sent, and the screen is told, behind the hand-over.
    EXPECT_EQ(bench.Send(Start).Send(Other).Send(Stop).TakePushed(), "II");
    EXPECT_EQ(bench.m_status.m_notice.m_strEnglish, "Nothing was sent: not connected.");
    bench.TakeSent();
    EXPECT_EQ(bench.Pass(100ms).Join().Pass(900ms).TakeSent(), "J2");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), connected again after 0 s");
    EXPECT_EQ(bench.m_session.CountReconnections(), 1u);
    EXPECT_EQ(bench.Feed("si").TakePushed(), "i");
    // A start not answered yet: the screen may still be about to wait for it.
    bench.Send(Start).m_session.OnTransportLost("x", false, bench.m_now);
    EXPECT_EQ(bench.TakePushed(), "I");
    EXPECT_EQ(bench.Pass(300ms).Join().Feed("ri").TakePushed(), "ri");
}

TEST(PanelCapture, ShowsAViewerWholeCurvesOnly) {
    CPanelBench bench(LinkManner::Stream, false);
    Hello hello = CPanelBench::MakeHello();
    hello.m_bCommands = false;
    bench.Join(hello).Feed("ss");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), capture running, shown from the next curve");
    bench.Feed("nssnsi");
    EXPECT_EQ(bench.TakePushed(), "nssnsi");
    EXPECT_EQ(bench.GetText(), "press (no. 0042), viewing");
    EXPECT_EQ(bench.Send(Stop).m_status.m_notice, LinkText());
    EXPECT_NE(bench.Send(Start).m_status.m_notice, LinkText());
    EXPECT_EQ(bench.TakePushed() + bench.TakeSent(), "J1");

    // Packets wait until the screen shows as much as the curve will have.
    const auto started = [](std::uint16_t nMilliseconds) {
        Bytes packet = MakePacketOf('c');
        packet[4 + 6] = static_cast<std::uint8_t>(nMilliseconds);
        packet[4 + 7] = static_cast<std::uint8_t>(nMilliseconds >> 8);
        return packet;
    };
    bench.Feed(FrameKind::Packet, started(3001), FRAMEFLAG_FOR_VIEWERS).Feed("rsi");
    bench.Feed(FrameKind::Packet, started(65535))
        .Feed("s")
        .Feed(FrameKind::Packet, started(0))
        .Feed("s");
    EXPECT_EQ(bench.TakePushed(), "");
    bench.m_session.OnSampleTimeSet(bench.m_now);
    EXPECT_EQ(bench.TakePushed(), "crsi");
    bench.m_session.OnSampleTimeSet(bench.m_now);
    EXPECT_EQ(bench.TakePushed(), "cscs");
    EXPECT_EQ(bench.m_sampleTimes, (std::vector<unsigned>{4, 60}));

    CPanelBench commander;
    commander.Join().Send(Start).Ack(1).Feed("c", FRAMEFLAG_FOR_VIEWERS).Feed("rsi");
    EXPECT_EQ(commander.TakePushed(), "rsi");
}

TEST(PanelCapture, BoundsWhatTheScreenDoesNotTake) {
    CPanelBench bench;
    bench.Join().Send(Start).Ack(1).Feed("r");
    const Bytes values = MakePacketOf('s', 32'000);
    constexpr std::size_t COST = 64'004 + 256;
    const auto fill = [&] {
        bench.m_packets.clear();
        bench.Pass(20ms);
        while (bench.m_session.WantsBytes() && bench.m_packets.size() < 1000)
            bench.Feed(FrameKind::Packet, values).PassAlive(500ms);
        return bench.m_packets.size();
    };
    EXPECT_EQ(fill(), CPanelSession::MAX_HELD / COST + 1);
    EXPECT_EQ(fill(), CPanelSession::MAX_HELD / COST + 1);
    bench.Pass(20s);
    EXPECT_EQ(bench.GetState(), PanelState::Connected);
    bench.m_packets.resize(CPanelSession::RESUME_HELD / COST + 1);
    EXPECT_FALSE(bench.Pass(20ms).m_session.WantsBytes());
    bench.m_packets.pop_back();
    EXPECT_TRUE(bench.Pass(20ms).m_session.WantsBytes());
    EXPECT_EQ(bench.Pass(2900ms).GetState(), PanelState::Connected);
    EXPECT_EQ(bench.Pass(100ms).GetState(), PanelState::Waiting);
}

TEST(PanelCapture, ViewsThroughABrokerWithoutAWord) {
    CPanelBench bench(LinkManner::Broker, false);
    std::uint32_t nHello = 5;
    std::uint32_t nPacket = 1000;
    Hello hello = CPanelBench::MakeHello();
    hello.m_bCommands = false;
    hello.m_nAttempt = 0;
    const auto sayHello = [&] {
        bench.m_session.OnBrokerMessage(BrokerTopic::Hello,
                                        MakeBytes(FrameKind::Hello, nHello++, FormHello(hello)),
                                        bench.m_now);
    };
    const auto send = [&](std::string_view strPackets) {
        for (const char ch : strPackets)
            bench.m_session.OnBrokerMessage(
                BrokerTopic::Packets, MakeBytes(FrameKind::Packet, nPacket++, MakePacketOf(ch)),
                bench.m_now);
        return bench.TakePushed();
    };
    bench.m_session.OnOpened(bench.m_now);
    EXPECT_EQ(send("rs"), "");
    sayHello();
    EXPECT_EQ(send("srs"), "rs");
    // That a capture runs is no news; a message delivered twice neither.
    hello.m_bRunning = true;
    sayHello();
    nPacket -= 1;
    EXPECT_EQ(send("ss"), "s");
    bench.m_session.OnBrokerMessage(BrokerTopic::Packets, example::SAMPLES + Bytes{0}, bench.m_now);
    EXPECT_EQ(bench.m_session.GetPeer().GetCounts().m_nDamages, 1u);
    // The instrument begins anew, ends, and falls silent.
    hello.m_nToken = 8;
    sayHello();
    EXPECT_EQ(send("s"), "i");
    // The number of its will, which it chose when it came, means nothing.
    bench.m_session.OnBrokerMessage(
        BrokerTopic::Hello, MakeBytes(FrameKind::Goodbye, 0x40000000, MakeParting(8)), bench.m_now);
    EXPECT_EQ(bench.m_session.GetPeer().GetCounts().m_nLost, 0u);
    EXPECT_EQ(bench.GetText(), "Connection lost (the instrument has ended). Trying again.");
    sayHello();
    EXPECT_EQ(bench.Pass(3s).GetState(), PanelState::Joining);
    EXPECT_EQ(bench.TakeSent(), "");
    EXPECT_EQ(bench.m_nClosings, 0);
}

}  // namespace
