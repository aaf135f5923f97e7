// The instrument's end of the link, in scripted time.
#include <gtest/gtest.h>

#include "link/InstrumentHub.h"
#include "link/SampleSplit.h"
#include "tests/link/PanelBench.h"

namespace {

/// A hub with a hand-made instrument and hand-made panels.
class CHubBench : public IInstrumentPort {
  public:
    explicit CHubBench(unsigned nMaxPanels = 8, bool bLocked = false)
        : m_hub({MakeHello(bLocked), nMaxPanels}, *this) {}

    PanelId Open(LinkManner manner = LinkManner::Stream) {
        return m_hub.OnOpened({manner, "there"}, m_now);
    }
    /// A panel that has joined.
    PanelId OpenJoined(bool bCommand, std::uint32_t nToken = 7,
                       LinkManner manner = LinkManner::Stream) {
        const PanelId id = Open(manner);
        Feed(id, FrameKind::Join, MakeJoin(bCommand, nToken));
        return id;
    }
    static Bytes MakeJoin(bool bCommand, std::uint32_t nToken = 7) {
        return FormJoin({{1, 1}, bCommand, nToken, 1, "desk " + std::to_string(nToken)});
    }
    CHubBench& Feed(PanelId id, FrameKind kind, Bytes payload = {}) {
        if (kind == FrameKind::Join) m_next[id] = 0;
        m_hub.OnBytes(id, MakeBytes(kind, m_next[id]++, std::move(payload)), m_now);
        return *this;
    }
    CHubBench& Message(PanelId id, std::uint32_t nNumber) {
        return Feed(id, FrameKind::Message, FormMessage({nNumber, Bytes(44)}));
    }
    CHubBench& Broadcast(std::string_view strPackets) {
        for (const char ch : strPackets) {
            const Bytes packet = MakePacketOf(ch);
            m_hub.Broadcast(ReadPacket(packet).value(), 0, m_now);
        }
        return *this;
    }
    CHubBench& Pass(LinkTime time) {
        for (const LinkTime end = m_now + time; m_now < end;) {
            m_now += 20ms;
            m_hub.OnTime(m_now);
        }
        return *this;
    }
    /// What was sent to a panel since the last call; "x" behind it: closed.
    std::string Take(PanelId id) {
        if (CFrameQueue* pQueue = m_hub.GetQueue(id)) m_sent[id] = m_sent[id] + TakeBytes(*pQueue);
        return DescribeFrames(std::exchange(m_sent[id], {})) + std::exchange(m_closed[id], "");
    }

    AckResult Execute(PayloadView) override {
        m_strDone += 'e';
        Broadcast(m_strBefore);
        return m_result;
    }
    void StopCapture() override {
        m_strDone += 's';
        Broadcast(m_strAtStop);
    }
    void OnFirstJoined() override { m_strDone += 'f'; }
    void CloseConnection(PanelId id, std::vector<OutFrame> frames) override {
        for (const OutFrame& frame : frames) frame.AppendTo(m_sent[id]);
        m_closed[id] += "x";
    }
    void OnNews(const std::string& strLine) override { m_news.push_back(strLine); }

    static Hello MakeHello(bool bLocked) {
        Hello hello = CPanelBench::MakeHello();
        hello.m_bLocked = bLocked;
        return hello;
    }

    LinkTime m_now = 100s;
    std::map<PanelId, std::uint32_t> m_next;
    std::map<PanelId, Bytes> m_sent;
    std::map<PanelId, std::string> m_closed;
    std::string m_strDone;    ///< e executed, s stopped, f first joined
    std::string m_strBefore;  ///< packets that Execute finds waiting
    std::string m_strAtStop;  ///< packets that come of stopping
    AckResult m_result = AckResult::Taken;
    std::vector<std::string> m_news;
    CInstrumentHub m_hub;
};

TEST(Hub, LetsPanelsInByTheirRoles) {
    CHubBench bench;
    const PanelId commander = bench.OpenJoined(true, 1);
    EXPECT_EQ(bench.Take(commander), "H");
    const PanelId other = bench.OpenJoined(true, 2);
    EXPECT_EQ(bench.Take(other), "R2x");
    for (PanelId n = 0; n < 7; ++n) EXPECT_EQ(bench.Take(bench.OpenJoined(false, 3)), "H");
    EXPECT_EQ(bench.Take(bench.OpenJoined(false, 4)), "R3x");
    // The same panel once more: the old connection may hang. Its capture is not the new one's.
    bench.m_strAtStop = "i";
    const PanelId again = bench.OpenJoined(true, 1);
    EXPECT_EQ(bench.Take(commander), "G7x");
    EXPECT_EQ(bench.Take(again), "H");
    EXPECT_EQ(bench.m_strDone, "fs");
    EXPECT_EQ(bench.m_news.back(), "desk 1 (there) commands");

    CHubBench alone(1);
    EXPECT_EQ(alone.Take(alone.OpenJoined(false)), "R3x");
    EXPECT_EQ(alone.Take(alone.OpenJoined(true)), "H");
}

TEST(Hub, SaysWhatTheInstrumentIs) {
    CHubBench bench;
    bench.Broadcast("r");
    const PanelId viewer = bench.OpenJoined(false);
    const Bytes bytes = TakeBytes(*bench.m_hub.GetQueue(viewer));
    Hello hello = CPanelBench::MakeHello();
    hello.m_bCommands = false;
    hello.m_bRunning = true;
    EXPECT_EQ(ReadHello(ReadWholeFrame(bytes, 100)->m_payload), hello);
}

// What a panel sends after its connection is there, or after it has joined, and what it gets.
TEST(Hub, AnswersWhatBreaksTheRules) {
    const Bytes later{2, 9, 1};
    struct Case {
        bool m_bJoined;
        int m_nKind;
        Bytes m_payload;
        std::string m_strStream, m_strLine;
    };
    for (const Case& c : {Case{false, 4, Bytes(48), "R4x", "R4"},
                          {false, 6, {}, "R4x", "R4"},
                          {false, 3, {}, "", ""},
                          {false, 77, {}, "", ""},
                          {false, 8, {}, "x", ""},
                          {false, 1, {}, "R5x", "R5"},
                          {false, 1, Bytes{0, 1}, "R5x", "R5"},
                          {false, 1, Bytes{1, 1, 1}, "R5x", "R5"},
                          {false, 1, later, "R1x", "R1"},
                          {true, 1, CHubBench::MakeJoin(true), "G5x", "H"},
                          {true, 4, Bytes(4), "G5x", "G5"},
                          {true, 4, Bytes(1005), "G5x", "G5"},
                          {true, 4, FormMessage({0, Bytes(1)}), "G5x", "G5"},
                          {true, 4, FormMessage({2, Bytes(1)}), "G5x", "G5"},
                          {true, 8, Bytes(2), "G5x", "G5"},
                          {true, 8, FormParting({}), "x", ""},
                          {true, 2, {}, "", ""},
                          {true, 5, {}, "", ""},
                          {true, 128, Bytes(1024), "", ""},
                          {true, 6, Bytes(9), "", ""}})
        for (const LinkManner manner : {LinkManner::Stream, LinkManner::Line}) {
            CHubBench bench;
            const PanelId id = c.m_bJoined ? bench.OpenJoined(true, 7, manner) : bench.Open(manner);
            bench.Take(id);
            bench.Feed(id, static_cast<FrameKind>(c.m_nKind), c.m_payload);
            EXPECT_EQ(bench.Take(id), manner == LinkManner::Line ? c.m_strLine : c.m_strStream)
                << c.m_nKind << " " << c.m_bJoined << " " << c.m_payload.size();
        }
}

TEST(Hub, TakesAMessageOnceAndAnswersFirst) {
    CHubBench bench;
    const PanelId id = bench.OpenJoined(true);
    bench.m_strBefore = "si";
    bench.Message(id, 1);
    EXPECT_EQ(bench.Broadcast("r").Take(id), "HPPA1:0P");
    bench.m_strBefore = "";
    bench.m_result = AckResult::Impossible;
    EXPECT_EQ(bench.Message(id, 1).Message(id, 2).Message(id, 2).Take(id), "A1:0A2:4A2:4");
    EXPECT_EQ(bench.m_strDone, "fee");
    const PanelId viewer = bench.OpenJoined(false, 8);
    EXPECT_EQ(bench.Message(viewer, 1).Take(viewer), "HA1:2");
    EXPECT_EQ(bench.m_strDone, "fee");
    // Not old, not twice: a repeated frame number is dropped whatever it holds.
    bench.m_next[id] -= 1;
    EXPECT_EQ(bench.Message(id, 3).Take(id), "");
    EXPECT_EQ(bench.Message(id, 3).Take(id), "A3:4");
}

TEST(Hub, StopsTheCaptureOfAPanelThatIsGone) {
    for (const bool bLocked : {false, true})
        for (int nWay = 0; nWay < 5; ++nWay) {
            CHubBench bench(8, bLocked);
            const PanelId id = bench.OpenJoined(true);
            const PanelId viewer = bench.OpenJoined(false, 8);
            if (nWay == 0) bench.m_hub.OnClosed(id, "reset");
            if (nWay == 1) bench.Feed(id, FrameKind::Goodbye, FormParting({}));
            if (nWay == 2) bench.Pass(1500ms).Feed(viewer, FrameKind::KeepAlive).Pass(1500ms);
            if (nWay == 3) bench.m_hub.OnBytes(id, Bytes(1), bench.m_now);
            if (nWay == 4) bench.m_hub.OnClosed(viewer, "reset");
            EXPECT_EQ(bench.m_strDone, bLocked || nWay == 4 ? "f" : "fs") << nWay;
            EXPECT_NE(bench.m_hub.IsJoined(id), bench.m_hub.IsJoined(viewer));
            EXPECT_EQ(bench.Take(id).find('x') == std::string::npos, nWay == 0 || nWay == 4)
                << nWay;
        }
}

TEST(Hub, GivesAPanelItsTime) {
    CHubBench bench;
    const PanelId silent = bench.Open();
    const PanelId half = bench.Open();
    bench.m_hub.OnBytes(half, std::span(example::JOIN).first(20), bench.m_now);
    EXPECT_EQ(bench.Pass(1980ms).Take(half), "");
    EXPECT_EQ(bench.Pass(20ms).Take(half), "x");
    EXPECT_EQ(bench.Pass(2980ms).Take(silent), "");
    EXPECT_EQ(bench.Pass(20ms).Take(silent), "R9x");

    const PanelId id = bench.OpenJoined(true);
    std::string strSent;
    for (int i = 0; i < 149; ++i) strSent += bench.Pass(20ms).Take(id);
    EXPECT_EQ(strSent, "HKK");
    EXPECT_EQ(bench.Pass(20ms).Take(id), "G9x");

    // A line waits for ever.
    const PanelId line = bench.Open(LinkManner::Line);
    bench.Pass(60s).Feed(line, FrameKind::Join, CHubBench::MakeJoin(true));
    EXPECT_EQ(bench.Take(line), "H");
    EXPECT_EQ(bench.Pass(3s).Take(line), "G9");
    bench.Feed(line, FrameKind::KeepAlive).Feed(line, FrameKind::KeepAlive);
    EXPECT_EQ(bench.Take(line), "R4");
    EXPECT_EQ(bench.Pass(980ms).Message(line, 1).Take(line), "");
    EXPECT_EQ(bench.Pass(20ms).Message(line, 1).Take(line), "R4");
}

TEST(Hub, KeepsAPlaceForWhoJoinsAtOnce) {
    CHubBench bench;
    std::vector<PanelId> aId;
    for (int i = 0; i < 10; ++i) aId.push_back(bench.Open());
    for (std::size_t i = 0; i < aId.size(); ++i) EXPECT_EQ(bench.Take(aId[i]), i < 2 ? "x" : "");
    EXPECT_EQ(bench.Take(bench.OpenJoined(true)), "H");
    EXPECT_EQ(bench.Take(aId[2]), "x");
    EXPECT_EQ(bench.Take(aId[3]), "");
}

TEST(Hub, SendsAwayWhoDoesNotKeepUp) {
    CHubBench bench;
    const PanelId slow = bench.OpenJoined(true);
    const PanelId quick = bench.OpenJoined(false, 8);
    const PanelId line = bench.OpenJoined(false, 9, LinkManner::Line);
    const Bytes packet = MakePacketOf('s', 32'000);
    const auto fill = [&] {
        for (int n = 1;; ++n) {
            bench.m_hub.Broadcast(ReadPacket(packet).value(), 0, bench.m_now);
            EXPECT_EQ(bench.Take(quick).find('x'), std::string::npos);
            if (bench.m_hub.GetQueue(slow) == nullptr) return n;
        }
    };
    // A frame that is half written is sent to its end.
    const auto half = bench.m_hub.GetQueue(slow)->Take(1);
    EXPECT_TRUE(bench.Broadcast("s").m_hub.GetQueue(slow)->Take(1).empty());
    EXPECT_EQ(fill(), (2 << 20) / 64'032 + 1);
    EXPECT_EQ(bench.Take(slow), "G6x");
    EXPECT_EQ(bench.m_strDone, "fs");
    EXPECT_EQ(bench.Take(line), "G6");
    bench.Feed(line, FrameKind::Join, CHubBench::MakeJoin(false, 9));
    EXPECT_EQ(bench.Take(line), "H");
}

TEST(Hub, EndsAFlood) {
    CHubBench bench;
    const PanelId id = bench.OpenJoined(false);
    const PanelId line = bench.OpenJoined(true, 8, LinkManner::Line);
    for (int i = 0; i < 200; ++i) bench.Feed(id, FrameKind::KeepAlive);
    bench.Pass(1s);
    for (int i = 0; i < 200; ++i) bench.Feed(id, FrameKind{50});
    EXPECT_EQ(bench.Take(id), "H");
    EXPECT_EQ(bench.Feed(id, FrameKind{50}).Take(id), "G12x");

    for (std::uint32_t i = 1; i <= 50; ++i) bench.Message(line, i);
    bench.Take(line);
    EXPECT_EQ(bench.Message(line, 51).Take(line), "G12");
    const auto join = [&] {
        return bench.Feed(line, FrameKind::Join, CHubBench::MakeJoin(true, 8)).Take(line);
    };
    bench.Pass(980ms);
    EXPECT_EQ(join(), "");
    bench.Pass(20ms);
    EXPECT_EQ(join(), "H");
}

TEST(Hub, CountsAConnectionsFramesFromNull) {
    CHubBench bench;
    const PanelId line = bench.OpenJoined(true, 8, LinkManner::Line);
    EXPECT_EQ(bench.Message(line, 1).Broadcast("ss").Take(line), "HA1:0PP");
    bench.Feed(line, FrameKind::Join, CHubBench::MakeJoin(true, 8));
    const Bytes bytes = TakeBytes(*bench.m_hub.GetQueue(line));
    EXPECT_EQ(ReadWholeFrame(bytes, 100)->m_nSequence, 0u);
    EXPECT_EQ(bench.Message(line, 1).m_strDone, "fese");
    // What the instrument had waiting may be too much, and nothing is sent behind a GOODBYE.
    bench.Take(line);
    bench.m_strBefore = std::string((2 << 20) / 36 + 2, 's');
    EXPECT_EQ(bench.Message(line, 2).Take(line), "G6");
    bench.Feed(line, FrameKind::Join, CHubBench::MakeJoin(true, 8)).Take(line);
    bench.m_hub.Finish(bench.m_now);
    EXPECT_EQ(bench.Take(line), "G8");
}

TEST(SampleSplit, KeepsEveryValueAndLine) {
    // Header EE; lines 1 with 6 values; lines 2 with 2 values: two values are a set.
    const Bytes payload = FromHex("EE 01 0006 0100 0200 0300 0400 0500 0600 02 0002 0700 0800");
    EXPECT_EQ(SplitSamples(payload, payload.size(), 2), std::vector<Bytes>{payload});
    EXPECT_EQ(
        SplitSamples(payload, 14, 2),
        (std::vector<Bytes>{FromHex("EE 01 0004 0100 0200 0300 0400"),
                            FromHex("EE 01 0002 0500 0600"), FromHex("EE 02 0002 0700 0800")}));
    EXPECT_EQ(SplitSamples(payload, 15, 2)[1], FromHex("EE 01 0002 0500 0600 02 0002 0700 0800"));
    EXPECT_EQ(SplitSamples(payload, 1, 2).size(), 4u);
    Bytes cut = payload;
    cut.pop_back();
    EXPECT_EQ(SplitSamples(cut, 14, 2), std::vector<Bytes>{cut});
}

}  // namespace
