// The instrument's server, on real sockets and lines.
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <stdlib.h>

#include "link/InstrumentServer.h"
#include "link/PanelLink.h"
#include "tests/link/ScreenBench.h"
#include "tests/link/Transports.h"
#include "tests/link/WirePanel.h"

namespace {

/// An instrument whose packets the test makes.
class CHandInstrument : public IServedInstrument {
  public:
    void Push(Bytes packet) {
        const std::lock_guard lock(m_mutex);
        m_packets.push_back(std::move(packet));
        if (m_onPackets) m_onPackets();
    }
    std::string GetDone() {
        const std::lock_guard lock(m_mutex);
        return m_strDone;
    }

    void Begin(std::function<void()> onPackets) override { m_onPackets = std::move(onPackets); }
    void End() override {
        const std::lock_guard lock(m_mutex);
        m_onPackets = nullptr;
    }
    void HandOver(const SendPacket& send) override {
        for (const Bytes& packet : Take()) send(ReadPacket(packet).value(), 0);
    }
    AckResult Execute(PayloadView image, const SendPacket& send) override {
        HandOver(send);
        Note(image.size() == 44 ? 'e' : 'u');
        return image.size() == 44 ? AckResult::Taken : AckResult::NotUnderstood;
    }
    void StopCapture(const SendPacket& send) override {
        Note('s');
        send(ReadPacket(MakePacketOf('i')).value(), 0);
    }
    void OnFirstJoined() override { Note('f'); }

  private:
    std::deque<Bytes> Take() {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_packets, {});
    }
    void Note(char ch) {
        const std::lock_guard lock(m_mutex);
        m_strDone += ch;
    }

    std::mutex m_mutex;
    std::deque<Bytes> m_packets;
    std::string m_strDone;
    std::function<void()> m_onPackets;
};

class Server : public ::testing::Test {
  protected:
    Server() { Serve("tcp://127.0.0.1:0"); }

    void Serve(const std::string& strAddress, TlsFiles tls = {}) {
        ServerSettings settings;
        settings.m_hub.m_hello = CPanelBench::MakeHello();
        settings.m_addresses = {ReadLinkAddress(strAddress, LinkUse::Listen)};
        settings.m_tls = std::move(tls);
        settings.m_onNews = [this](const std::string& strLine) {
            const std::lock_guard lock(m_mutex);
            m_news.push_back(strLine);
        };
        m_pServer.reset();
        m_pServer = std::make_unique<CInstrumentServer>(std::move(settings), m_instrument);
        m_strAddress = m_pServer->GetAddresses().at(0);
        m_pServer->Start();
    }
    std::uint16_t GetPort() const {
        return static_cast<std::uint16_t>(
            std::stoi(m_strAddress.substr(m_strAddress.rfind(':') + 1)));
    }
    std::string GetNews() {
        const std::lock_guard lock(m_mutex);
        std::string strNews;
        for (const std::string& str : m_news) strNews += str + "\n";
        return strNews;
    }

    CHandInstrument m_instrument;
    std::mutex m_mutex;
    std::vector<std::string> m_news;
    std::string m_strAddress;
    std::unique_ptr<CInstrumentServer> m_pServer;
};

// What a peer writes as soon as it has connected, and what it gets; "x" closed, "!" reset.
TEST_F(Server, CostsABadPeerItsOwnConnection) {
    CWirePanel good(GetPort());
    EXPECT_EQ(good.Join(true).Await("H"), "H");
    Bytes longest(FRAME_HEAD);
    const OutFrame frame = MakeFrame(FrameKind::Join, 0, 0, std::make_shared<Bytes>(1025));
    std::ranges::copy(frame.m_head, longest.begin());
    const Bytes join = MakeBytes(FrameKind::Join, 0, FormJoin({{1, 1}, false, 9, 1, "x"}));
    const auto text = [](const char* psz) { return Bytes(psz, psz + std::strlen(psz)); };
    const auto after = [&](FrameKind kind, Bytes payload, unsigned nTimes = 1) {
        Bytes bytes = join;
        for (unsigned n = 1; n <= nTimes; ++n) bytes = bytes + MakeBytes(kind, n, payload);
        return bytes;
    };
    Bytes damaged = join;
    damaged.back() ^= 1;
    const std::tuple<const char*, Bytes, std::string> cases[] = {
        {"HTTP", text("GET / HTTP/1.1\r\nHost: a\r\n\r\n"), "x"},
        {"TLS", FromHex("16030100C8010000C40303"), "x"},
        {"an announcement of too much", longest, "x"},
        {"a damaged JOIN", damaged, "x"},
        {"another commander", MakeBytes(FrameKind::Join, 0, FormJoin({{1, 1}, true, 9, 1, ""})),
         "R2x"},
        {"damage behind a frame", join + text("\xA5RTZ----------------------"), "G10x"},
        {"a flood", after(FrameKind{99}, {}, 300), "G12x"},
        {"a flood of messages", after(FrameKind::Message, FormMessage({1, Bytes(44)}), 60), "G12x"},
        {"half a JOIN", Bytes(join.begin(), join.begin() + 30), "x"},
        {"silence", {}, "R9x"},
        {"silence behind a JOIN", join, "HKKG9x"},
    };
    const auto isSlow = [](const std::string& str) { return str == "x" || str.ends_with("9x"); };
    std::vector<CWirePanel> peers;
    for (const auto& [pszName, bytes, strAnswer] : cases) {
        good.Send(FrameKind::KeepAlive);
        peers.emplace_back(GetPort()).Write(bytes);
        // More than eight that have not joined would close the oldest.
        if (isSlow(strAnswer)) continue;
        EXPECT_TRUE(peers.back().Await("x").ends_with(strAnswer)) << pszName;
    }
    for (int n = 0; n < 12; ++n) {
        std::this_thread::sleep_for(500ms);
        good.Send(FrameKind::KeepAlive);
    }
    for (std::size_t n = 0; n < peers.size(); ++n) {
        const auto& [pszName, bytes, strAnswer] = cases[n];
        if (!isSlow(strAnswer)) continue;
        EXPECT_EQ(peers[n].Await("x", 1s), strAnswer) << pszName;
    }
    EXPECT_EQ(good.Message(1).Await("A0").back(), '0');
    EXPECT_EQ(good.m_nLost, 0u);
}

TEST_F(Server, SendsAwayWhoDoesNotReadAndNobodyElse) {
    CWirePanel lazy(GetPort(), true);
    EXPECT_EQ(lazy.Join(true).Await("H"), "H");
    std::vector<CWirePanel> viewers;
    for (std::uint32_t n = 0; n < 7; ++n)
        EXPECT_EQ(viewers.emplace_back(GetPort()).Join(false, 20 + n).Await("H"), "H");
    // 13 MB, more than the system keeps for a socket and the queue together, as fast as those who
    // read take it.
    constexpr std::size_t PACKETS = 400;
    const auto isTaken = [&](std::size_t nPackets) {
        return std::ranges::all_of(
            viewers, [&](const CWirePanel& viewer) { return viewer.m_nPackets >= nPackets; });
    };
    std::thread pusher([&] {
        bool bTaken = true;
        for (std::size_t n = 0; n < PACKETS; ++n) {
            for (int i = 0; i < 5000 && bTaken && !isTaken(n < 20 ? 0 : n - 20); ++i)
                std::this_thread::sleep_for(1ms);
            bTaken = isTaken(n < 20 ? 0 : n - 20);
            m_instrument.Push(MakePacketOf('s', 16'000));
        }
        m_instrument.Push(MakePacketOf('n'));
    });
    std::vector<std::thread> readers;
    for (CWirePanel& viewer : viewers)
        readers.emplace_back([&viewer] {
            for (int n = 0; n < 30 && !viewer.Await("n", 300ms).ends_with("n"); ++n)
                viewer.Send(FrameKind::KeepAlive);
        });
    pusher.join();
    for (std::thread& reader : readers) reader.join();
    for (CWirePanel& viewer : viewers) {
        EXPECT_EQ(viewer.m_nLost, 0u);
        EXPECT_EQ(viewer.m_nPackets, PACKETS);
    }
    EXPECT_NE(GetNews().find("gone: this panel does not keep up"), std::string::npos) << GetNews();
    EXPECT_EQ(m_instrument.GetDone(), "fs");
}

TEST_F(Server, LetsInOverTlsWhomItsAuthorityKnows) {
    const TemporaryFolder folder;
    const TlsFiles press = MakeCertificate(folder, "press", "IP:127.0.0.1");
    const TlsFiles desk = MakeCertificate(folder, "desk", "DNS:desk");
    Serve("tls://127.0.0.1:0", {desk.m_strAuthorities, press.m_strCertificate, press.m_strKey});
    const auto isKnown = [&](const TlsFiles& files, std::chrono::milliseconds time) {
        CScreenBench screen;
        PanelLinkSettings settings;
        settings.m_address = ReadLinkAddress(m_strAddress, LinkUse::Connect);
        settings.m_tlsFiles = files;
        const CPanelLink link(settings, screen);
        return screen.AwaitState(PanelState::Connected, time);
    };
    // Those who never shake hands are the first to go.
    std::vector<CWirePanel> idle;
    for (int n = 0; n < 20; ++n) idle.emplace_back(GetPort());
    EXPECT_TRUE(isKnown({press.m_strAuthorities, desk.m_strCertificate, desk.m_strKey}, 5000ms));
    EXPECT_FALSE(isKnown({press.m_strAuthorities, "", ""}, 500ms));
    EXPECT_FALSE(isKnown({press.m_strAuthorities, press.m_strCertificate, press.m_strKey}, 500ms));
    for (const char* const pszWhy : {" refused: peer did not return a certificate",
                                     " refused: certificate: self-signed certificate\n"})
        EXPECT_NE(GetNews().find(pszWhy), std::string::npos) << GetNews();
    EXPECT_FALSE(idle[0].Await("x", 100ms).empty());
    EXPECT_TRUE(idle[19].Await("x", 3s).ends_with("x"));
    EXPECT_NE(GetNews().find("the handshake takes too long"), std::string::npos) << GetNews();
    const std::string strPlain = "GET / HTTP/1.1\r\n\r\n";
    CWirePanel plain(GetPort());
    EXPECT_FALSE(plain.Write(Bytes(strPlain.begin(), strPlain.end())).Await("x").empty());
    CWirePanel late(GetPort());
    m_pServer.reset();  // with a handshake under way
    EXPECT_EQ(m_instrument.GetDone(), "fs");
}

TEST(Loopback, IsKnownByEveryNameOfIt) {
    for (const auto& [pszHost, bLoopback] : {std::pair("127.0.0.1", true),
                                             {"::1", true},
                                             {"localhost", true},
                                             {"127.9.9.9", true},
                                             {"0.0.0.0", false},
                                             {"::", false},
                                             {"::ffff:10.0.0.1", false},
                                             {"no.such.host", false}})
        EXPECT_EQ(IsLoopback(pszHost), bLoopback) << pszHost;
}

TEST_F(Server, ServesALineThatComesAndGoes) {
    const auto openMaster = [] {
        const int nHandle = ::posix_openpt(O_RDWR | O_NOCTTY);
        ::grantpt(nHandle);
        ::unlockpt(nHandle);
        return nHandle;
    };
    const int nFirst = openMaster();
    const std::string strLink = ::testing::TempDir() + "line" + std::to_string(::getpid());
    ASSERT_EQ(::symlink(::ptsname(nFirst), strLink.c_str()), 0);
    CWirePanel panel = CWirePanel::On(nFirst);
    Serve("serial:" + strLink + "?baud=9600");
    // Noise, then a JOIN; nothing is sent before it.
    EXPECT_EQ(panel.Write(Bytes{1, 2, 0xA5, 'R'}).Await("", 100ms), "");
    EXPECT_EQ(panel.Join(true).Await("H"), "H");
    // 1,200 values in one packet, in frames of at most 256 bytes.
    m_instrument.Push(FormPacket({RTPACKET_SAMPLES, FromHex("00 05 04B0") + Bytes(2400)}));
    m_instrument.Push(MakePacketOf('i'));
    EXPECT_EQ(panel.Await("i"), "si");
    EXPECT_EQ(panel.m_values.size(), 1200u);
    EXPECT_GE(panel.m_nPackets, 10u);
    EXPECT_EQ(panel.Message(1).Await("A0"), "A0");
    // A JOIN at any time begins anew.
    EXPECT_EQ(panel.Join(true).Await("H"), "H");
    EXPECT_EQ(panel.Message(1).Await("A0"), "A0");

    { const CWirePanel gone = std::move(panel); }
    for (int n = 0; n < 100 && GetNews().find("waiting for it") == std::string::npos; ++n)
        std::this_thread::sleep_for(20ms);
    const int nSecond = openMaster();
    ASSERT_EQ(::unlink(strLink.c_str()), 0);
    ASSERT_EQ(::symlink(::ptsname(nSecond), strLink.c_str()), 0);
    CWirePanel back = CWirePanel::On(nSecond);
    for (int n = 0; n < 100 && GetNews().find("is back") == std::string::npos; ++n)
        std::this_thread::sleep_for(20ms);
    EXPECT_EQ(back.Join(true).Await("H"), "H");
    m_pServer.reset();
    EXPECT_TRUE(back.Await("!").starts_with("G8")) << GetNews();
    ::unlink(strLink.c_str());
}

}  // namespace
