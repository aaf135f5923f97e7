// The panel's end of the link, in scripted time: how it gets, keeps and ends a connection.
#include <gtest/gtest.h>

#include "tests/link/PanelBench.h"

namespace {

TEST(PanelSession, JoinsAndStaysConnected) {
    CPanelBench bench;
    EXPECT_EQ(bench.GetText(), "tcp://a:1: connecting.");
    bench.Join();
    EXPECT_EQ(bench.TakeSent(), "J1");
    ASSERT_EQ(bench.m_known.size(), 1u);
    EXPECT_EQ(bench.m_known[0], CPanelBench::MakeHello());
    EXPECT_EQ(bench.GetText(), "press (no. 0042), connected");
    EXPECT_EQ(bench.PassAlive(10s).TakeSent(), "KKKKKKKKKK");
    EXPECT_EQ(bench.Pass(2980ms).GetState(), PanelState::Connected);
    EXPECT_EQ(bench.Pass(20ms).GetText(), "Connection lost (silence for 3 s). Trying again.");
    EXPECT_EQ(bench.TakeSent(), "KKG9");
    EXPECT_EQ(bench.m_nClosings, 1);
}

// The moments, in milliseconds, at which the transport is opened when nothing comes of it.
TEST(PanelSession, TriesAgainAfterGrowingPauses) {
    CPanelBench bench;
    const auto getPauses = [&bench](std::size_t nFirst) {
        std::vector<long> pauses;
        for (std::size_t i = nFirst; i < bench.m_openings.size(); ++i)
            pauses.push_back((bench.m_openings[i] - bench.m_openings[i - 1]) / 1ms);
        return pauses;
    };
    for (int i = 0; i < 5; ++i) {
        bench.m_session.OnTransportLost("connection refused", false, bench.m_now);
        EXPECT_EQ(bench.GetText(), "tcp://a:1: connection refused. Trying again.");
        bench.Pass(500ms);
    }
    EXPECT_EQ(getPauses(1), (std::vector<long>{100, 600, 700, 600, 500}));
    // Neither opened nor joined for 2 s each.
    bench.Pass(2500ms).m_session.OnOpened(bench.m_now);
    EXPECT_EQ(bench.Pass(2480ms).m_openings.size(), 7u);
    EXPECT_EQ(bench.Pass(20ms).m_openings.size(), 8u);
    bench.Join().PassAlive(5s).Feed(FrameKind::Goodbye, MakeParting(8)).Pass(100ms);
    EXPECT_EQ(getPauses(8), std::vector<long>{5100});
    bench.m_session.OnTransportLost("certificate", true, bench.m_now);
    EXPECT_EQ(bench.Pass(11s).m_openings.size(), 10u);
    EXPECT_EQ(getPauses(9), std::vector<long>{10000});
}

TEST(PanelSession, SaysATransportsTroubleInTheOperatorsLanguage) {
    const std::wstring strRefused = L"abgelehnt";
    const CTextSource source(
        [&](std::int32_t nString) { return nString == 3298 ? &strRefused : nullptr; });
    CPanelBench bench;
    bench.m_session.OnTransportLost("connection refused", false, bench.m_now);
    EXPECT_EQ(bench.GetText(), "tcp://a:1: connection refused. Trying again.");
    EXPECT_EQ(bench.m_status.m_trouble.m_strShown, strRefused);
    bench.Pass(500ms).m_session.OnTransportLost("certificate: expired", false, bench.m_now);
    EXPECT_EQ(bench.m_status.m_trouble.m_strShown, L"certificate: expired");
}

TEST(PanelSession, WaitsAsTheReasonAsks) {
    const std::vector<long> aPause = {100, 10000, 2000, 2000,  100,   100,   100,  -1,
                                      100, 100,   100,  10000, 10000, 10000, 10000};
    for (const FrameKind kind : {FrameKind::Refuse, FrameKind::Goodbye})
        for (std::size_t i = 0; i < aPause.size(); ++i) {
            CPanelBench bench;
            if (kind == FrameKind::Refuse)
                bench.m_session.OnOpened(bench.m_now);
            else
                bench.Join();
            const LinkTime end = bench.m_now;
            bench.Feed(kind, MakeParting(static_cast<int>(i), "desk 2")).Pass(20s);
            EXPECT_EQ(bench.m_openings.size() > 1 ? (bench.m_openings[1] - end) / 1ms : -1,
                      aPause[i])
                << i;
        }
    CPanelBench bench;
    bench.m_session.OnOpened(bench.m_now);
    bench.Feed(FrameKind::Refuse, MakeParting(2, "desk 1"));
    EXPECT_EQ(bench.GetText(), "tcp://a:1 is commanded by \"desk 1\". Trying again. (--view shows "
                               "it without commanding.)");
}

// What ends a connection, by the last thing that the panel sends; on a line it joins again.
TEST(PanelSession, EndsAConnectionForWhatBreaksTheRules) {
    const Bytes text{0, 0, 9, 'x'};
    struct Case {
        bool m_bJoined;
        int m_nKind;
        Bytes m_payload;
        std::string m_strStream, m_strLine;
    };
    Hello other = CPanelBench::MakeHello();
    other.m_nAttempt = 9;
    for (const Case& c : {Case{false, 3, MakePacketOf('s'), "G5", ""},
                          {false, 5, Bytes(5), "G5", ""},
                          {false, 6, {}, "G5", ""},
                          {false, 2, FormHello(other), "G5", ""},
                          {false, 2, Bytes(19), "G5", "G5"},
                          {false, 7, text, "G5", "G5"},
                          {false, 1, {}, "", ""},
                          {false, 99, {}, "", ""},
                          {true, 1, {}, "", ""},
                          {true, 4, {}, "", ""},
                          {true, 200, Bytes(65600), "", ""},
                          {true, 2, FormHello(other), "G5", ""},
                          {true, 3, Bytes(3), "G5", "G5J2"},
                          {true, 3, Bytes(65540), "G5", "G5J2"},
                          {true, 5, Bytes(4), "G5", "G5J2"},
                          {true, 8, text, "G5", "G5J2"},
                          {true, 8, MakeParting(8), "", "J2"},
                          {true, 7, MakeParting(4), "", "J2"},
                          {true, 5, Bytes(5), "", ""}})
        for (const LinkManner manner : {LinkManner::Stream, LinkManner::Line}) {
            CPanelBench bench(manner);
            if (c.m_bJoined)
                bench.Join().PassAlive(1s);
            else
                bench.m_session.OnOpened(bench.m_now);
            bench.TakeSent();
            bench.Feed(static_cast<FrameKind>(c.m_nKind), c.m_payload).Pass(60ms);
            EXPECT_EQ(bench.TakeSent(), manner == LinkManner::Line ? c.m_strLine : c.m_strStream)
                << c.m_nKind << " " << c.m_bJoined << " " << c.m_payload.size();
        }
}

TEST(PanelSession, AnswersDamageOnlyToWhoEverSentAFrame) {
    for (const bool bJoined : {false, true}) {
        CPanelBench bench;
        if (bJoined)
            bench.Join();
        else
            bench.m_session.OnOpened(bench.m_now);
        bench.TakeSent();
        bench.m_session.OnBytes(FromHex("48545450"), bench.m_now);
        EXPECT_EQ(bench.TakeSent(), bJoined ? "G10" : "");
        EXPECT_EQ(bench.GetState(), PanelState::Waiting);
        // Also on the next connection.
        bench.Pass(100ms).m_session.OnOpened(bench.m_now);
        bench.m_session.OnBytes(Bytes(1), bench.m_now);
        EXPECT_EQ(bench.TakeSent(), "");
    }
    CPanelBench slow;
    slow.Join().m_session.OnBytes(std::span(example::SAMPLES).first(30), slow.m_now);
    slow.TakeSent();
    EXPECT_EQ(slow.Pass(1980ms).TakeSent(), "K");
    EXPECT_EQ(slow.Pass(20ms).TakeSent(), "G9");
}

TEST(PanelSession, EndsAFlood) {
    CPanelBench frames;
    frames.Join();
    for (int i = 0; i < 2000; ++i) frames.Feed(i % 2 == 0 ? FrameKind{99} : FrameKind::KeepAlive);
    frames.Pass(1s);
    for (int i = 0; i < 2000; ++i) frames.Feed("i");
    EXPECT_EQ(frames.GetState(), PanelState::Connected);
    frames.TakeSent();
    EXPECT_EQ(frames.Feed("i").TakeSent(), "G12");
    EXPECT_EQ(frames.Pass(9900ms).m_openings.size(), 1u);
    EXPECT_EQ(frames.Pass(200ms).m_openings.size(), 2u);

    // 4 x 5 s of one channel at 40000, and 8 MiB: 9,988,608 bytes.
    CPanelBench values;
    values.Join().TakeSent();
    const Bytes packet = MakePacketOf('s', 32'000);
    for (int i = 0; i < 156; ++i) values.Feed(FrameKind::Packet, packet);
    EXPECT_EQ(values.GetState(), PanelState::Connected);
    EXPECT_EQ(values.Feed(FrameKind::Packet, packet).TakeSent(), "G12");

    // On a line the damages count too.
    CPanelBench line(LinkManner::Line);
    line.Join().TakeSent();
    for (int i = 0; i < 1001 && line.GetState() == PanelState::Connected; ++i) {
        line.m_session.OnBytes(Bytes{0}, line.m_now);
        line.Feed(FrameKind::KeepAlive);
    }
    EXPECT_EQ(line.TakeSent(), "G12");
    EXPECT_EQ(line.Pass(9900ms).TakeSent(), "");
    EXPECT_EQ(line.Pass(200ms).TakeSent(), "J2");
}

TEST(PanelSession, ComparesALaterHelloWithTheFirst) {
    const auto change = [](auto apply) {
        Hello hello = CPanelBench::MakeHello();
        apply(hello);
        return hello;
    };
    struct Case {
        Hello m_hello;
        std::string m_strCommander, m_strViewer;  ///< empty: as the commander
    };
    const char* const pszSame = "press (no. 0042), connected again after 1 s";
    for (
        const Case& c :
        {Case{change([](Hello& h) { h.m_nToken = 5; }), pszSame, ""},
         {change([](Hello& h) { h.m_nMode = 3; }),
          "The instrument has changed (mode 1 is now 3). Close the screen and start again.", ""},
         {change([](Hello& h) { h.m_nSecondInput = 2; }),
          "The instrument has changed (second input 1 is now 2). Close the screen and start again.",
          ""},
         {change([](Hello& h) { h.m_nDevice24V = 1; }),
          "The instrument has changed (parameter 50 0 is now 1). Close the screen and start again.",
          ""},
         {change([](Hello& h) { h.m_bLocked = true; }),
          "The instrument has changed (lock 0 is now 1). Close the screen and start again.", ""},
         {change([](Hello& h) { h.m_nValueRate = 9; }),
          "press (no. 0042), connected again after 1 s; value rate 40000 is now 9",
          "The instrument has changed (value rate 40000 is now 9). Close the screen and start "
          "again."},
         {change([](Hello& h) { h.m_strSerialNumber = "7"; }),
          "press (no. 7), connected again after 1 s; serial number 0042 is now 7", ""}})
        for (const bool bCommand : {true, false}) {
            CPanelBench bench(LinkManner::Line, bCommand);
            const auto hello = [&](Hello h) {
                h.m_bCommands = bCommand;
                return h;
            };
            bench.Join(hello(CPanelBench::MakeHello()))
                .Feed(FrameKind::Goodbye, MakeParting(8))
                .Pass(1s)
                .Answer(hello(c.m_hello));
            EXPECT_EQ(bench.GetText(),
                      bCommand || c.m_strViewer.empty() ? c.m_strCommander : c.m_strViewer);
            EXPECT_EQ(bench.m_rates.first, bCommand && c.m_hello.m_nValueRate == 9 ? 9 : 0);
            if (bench.GetState() != PanelState::Changed) continue;
            EXPECT_EQ(bench.TakeSent(), "J1J2G13");
            EXPECT_EQ(bench.Feed("ri").Pass(30s).TakePushed() + bench.TakeSent(), "");
        }
    // The command is somebody else's.
    CPanelBench bench(LinkManner::Line);
    bench.Join().Feed(FrameKind::Goodbye, MakeParting(8)).Pass(1s).Answer(change([](Hello& h) {
        h.m_bCommands = false;
    }));
    EXPECT_EQ(bench.TakeSent(), "J1J2G2");
    EXPECT_EQ(bench.Send(ImageKind::Start).TakePushed(), "I");
    EXPECT_EQ(bench.Pass(1900ms).TakeSent(), "");
    EXPECT_EQ(bench.Pass(200ms).TakeSent(), "J3");
}

TEST(PanelSession, JoinsALineUntilTheRightHello) {
    CPanelBench bench(LinkManner::Line);
    bench.m_session.OnOpened(bench.m_now);
    // Late frames of a connection before, with high numbers, and an answer to an earlier JOIN.
    bench.Pass(4s).Feed("rs").TakeSent();
    bench.m_nNext = 0x70000000;
    Hello late = CPanelBench::MakeHello();
    EXPECT_EQ(bench.Feed("s").Feed(FrameKind::Hello, FormHello(late)).GetState(),
              PanelState::Joining);
    EXPECT_EQ(bench.Pass(1s).TakeSent(), "J6");
    late.m_nAttempt = 6;
    bench.m_nNext = 0;
    bench.Feed(FrameKind::Hello, FormHello(late)).Send(ImageKind::Start).Ack(1).Feed("rs");
    EXPECT_EQ(bench.TakePushed(), "rs");
    EXPECT_EQ(bench.m_session.GetPeer().GetCounts().m_nLost, 0u);
    // The instrument was restarted: its first answer is that nobody has joined.
    bench.m_nNext = 0;
    EXPECT_EQ(bench.Feed(FrameKind::Refuse, MakeParting(4)).Pass(1s).TakeSent(), "M1J7");
    bench.m_strSent = "J7";
    EXPECT_EQ(bench.Answer().Feed("i").TakePushed(), "ii");
    EXPECT_EQ(bench.m_openings.size(), 1u);
}

TEST(PanelSession, EndsWithinHalfASecond) {
    CPanelBench idle;
    idle.Join().TakeSent();
    idle.m_session.Finish(idle.m_now);
    EXPECT_EQ(idle.GetState(), PanelState::Ended);
    EXPECT_EQ(idle.TakeSent(), "G0");

    CPanelBench busy;
    busy.Join().Send(ImageKind::Stop).Send(ImageKind::Other).m_session.Finish(busy.m_now);
    EXPECT_EQ(busy.Pass(100ms).Ack(1).Pass(380ms).TakeSent(), "J1M1M2");
    EXPECT_EQ(busy.Pass(20ms).TakeSent(), "G0");
    EXPECT_EQ(busy.Pass(9s).m_openings.size(), 1u);

    CPanelBench opening;
    opening.m_session.Finish(opening.m_now);
    EXPECT_EQ(opening.m_nClosings, 1);
}

}  // namespace
