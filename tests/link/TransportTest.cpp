// The panel's transports against the system's own ends of them.
#include <asio/read.hpp>
#include <asio/write.hpp>
#include <dlfcn.h>
#include <netdb.h>

#include "link/Connector.h"
#include "link/FrameReader.h"
#include "tests/link/Support.h"
#include "tests/link/Transports.h"

/// In place of the system's: "two.test" has two addresses.
extern "C" int getaddrinfo(const char* pszName, const char* pszService, const addrinfo* pHints,
                           addrinfo** ppFound) {
    static const auto pSystem =
        reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    const bool bTwo = pszName && std::string_view(pszName) == "two.test";
    const int nError = pSystem(bTwo ? "127.0.0.2" : pszName, pszService, pHints, ppFound);
    if (!bTwo || nError != 0) return nError;
    addrinfo* pLast = *ppFound;
    while (pLast->ai_next) pLast = pLast->ai_next;
    return pSystem("127.0.0.1", pszService, pHints, &pLast->ai_next);
}

namespace {

using namespace std::chrono_literals;

class Transport : public ::testing::Test {
  protected:
    /// Opens a stream to an address; m_strFailure says why there is none.
    bool Connect(const std::string& strAddress, const TlsFiles& files = {}) {
        m_connector.emplace(m_context, ReadLinkAddress(strAddress, LinkUse::Connect), files);
        m_connector->Open(
            [this](std::shared_ptr<CLinkStream> spStream) {
                m_spStream = std::move(spStream);
                m_spStream->Start({[this](std::span<const std::uint8_t> bytes) {
                                       m_in.insert(m_in.end(), bytes.begin(), bytes.end());
                                   },
                                   [this] {
                                       m_queue.OnSent();
                                       m_spStream->Send(m_queue);
                                   },
                                   [this](const std::string& strWhy, bool bPatient) {
                                       m_strFailure = strWhy;
                                       m_bPatient = bPatient;
                                   }});
            },
            [this](const std::string& strWhy, bool bPatient) {
                m_strFailure = strWhy;
                m_bPatient = bPatient;
            });
        return Await([this] { return m_spStream || !m_strFailure.empty(); }) && m_spStream;
    }
    bool Await(const std::function<bool()>& condition) { return RunUntil(m_context, condition); }
    std::string Tcp(const char* pScheme = "tcp://127.0.0.1:") {
        return pScheme + std::to_string(m_acceptor.local_endpoint().port());
    }
    void Send(int nFrames, std::size_t nPayload = 0) {
        for (int n = 0; n < nFrames; ++n)
            m_queue.Add(FrameKind::KeepAlive, 0, std::make_shared<Bytes>(nPayload));
        m_spStream->Send(m_queue);
    }

    asio::io_context m_context;
    asio::ip::tcp::acceptor m_acceptor = MakeAcceptor(m_context);
    std::optional<CConnector> m_connector;
    std::shared_ptr<CLinkStream> m_spStream;
    CFrameQueue m_queue;
    Bytes m_in;
    std::string m_strFailure;
    bool m_bPatient = false;
};

/// What a peer has read, in the background, until the other side ended its sending.
struct Reading {
    template <class Socket>
    void Start(Socket& socket) {
        asio::async_read(socket, asio::dynamic_buffer(m_bytes),
                         [this](const asio::error_code& error, std::size_t) { m_error = error; });
    }
    Bytes m_bytes;
    asio::error_code m_error;
};

TEST_F(Transport, TcpCarriesBothWaysAndTakesLeaveBehindItsLastFrame) {
    ASSERT_TRUE(Connect(Tcp()));
    asio::ip::tcp::socket peer = m_acceptor.accept();
    asio::write(peer, asio::buffer(example::HELLO));
    EXPECT_TRUE(Await([&] { return m_in == example::HELLO; }));

    Send(300, 1000);  // more than one write takes
    const Bytes more = {1, 2, 3};
    asio::write(peer, asio::buffer(more));  // unread when it closes: no reset for that
    m_spStream->Close({MakeFrame(FrameKind::Goodbye, 0, 300, nullptr)});
    Reading reading;
    reading.Start(peer);
    EXPECT_TRUE(Await([&] { return bool(reading.m_error); }));
    EXPECT_EQ(reading.m_error, asio::error::eof);
    CFrameReader reader(LinkManner::Stream, 2000);
    reader.Add(reading.m_bytes, {});
    std::uint32_t nFrames = 0;
    FrameKind last{};
    while (const auto frame = reader.Read()) {
        // What the write under way had taken, then the last one.
        EXPECT_TRUE(frame->m_nSequence == nFrames || frame->m_nSequence == 300u);
        last = frame->m_kind;
        ++nFrames;
    }
    EXPECT_EQ(last, FrameKind::Goodbye);
    EXPECT_EQ(nFrames, 65u);  // 64 of 1,024 bytes in a piece
    EXPECT_EQ(m_in.size(), example::HELLO.size());
    EXPECT_EQ(m_strFailure, "");
}

TEST_F(Transport, WhatFailsSaysWhy) {
    const std::string strAddress = Tcp();
    m_acceptor.close();
    EXPECT_FALSE(Connect(strAddress));
    EXPECT_EQ(m_strFailure, "connection refused");
    EXPECT_FALSE(m_bPatient);
    m_strFailure.clear();
    EXPECT_FALSE(Connect("tcp://no-such-host.invalid"));
    EXPECT_NE(m_strFailure, "");
    m_strFailure.clear();
    EXPECT_FALSE(Connect("serial:/dev/no-such-line"));
    EXPECT_EQ(m_strFailure, "no such file or directory");
    m_strFailure.clear();
    EXPECT_FALSE(Connect("serial:/dev/null"));
    EXPECT_EQ(m_strFailure, "inappropriate ioctl for device");
}

TEST_F(Transport, AllAddressesOfANameAreTried) {
    EXPECT_FALSE(Connect("tcp://two.test:1"));
    EXPECT_EQ(m_strFailure, "connection refused");
    // Somebody listens at the second.
    m_strFailure.clear();
    ASSERT_TRUE(Connect(Tcp("tcp://two.test:"))) << m_strFailure;
    EXPECT_EQ(m_acceptor.accept().local_endpoint().address().to_string(), "127.0.0.1");
}

TEST_F(Transport, APeerThatGoesIsALossAndACancelledOpeningTellsNothing) {
    ASSERT_TRUE(Connect(Tcp()));
    m_acceptor.accept().close();
    EXPECT_TRUE(Await([&] { return !m_strFailure.empty(); }));
    EXPECT_EQ(m_strFailure, "closed by the other side");
    m_strFailure.clear();
    m_spStream.reset();
    m_connector->Open([&](auto) { m_strFailure = "opened"; },
                      [&](auto...) { m_strFailure = "failed"; });
    m_connector->Cancel();
    m_context.restart();
    m_context.run_for(100ms);
    EXPECT_EQ(m_strFailure, "");
}

TEST_F(Transport, WithoutReadingThePeerIsHeldBack) {
    ASSERT_TRUE(Connect(Tcp()));
    asio::ip::tcp::socket peer = m_acceptor.accept();
    m_spStream->SetReading(false);
    std::size_t nWritten = 0;
    const Bytes bytes(24u << 20);
    asio::async_write(peer, asio::buffer(bytes),
                      [&](const asio::error_code&, std::size_t n) { nWritten = n; });
    m_context.restart();
    m_context.run_for(300ms);
    EXPECT_EQ(nWritten, 0u);
    EXPECT_LE(m_in.size(), CLinkStream::PIECE);  // the read that was under way
    m_spStream->SetReading(true);
    EXPECT_TRUE(Await([&] { return m_in.size() == bytes.size(); }));
}

TEST_F(Transport, APeerThatNeverReadsIsClosedAfterASecond) {
    ASSERT_TRUE(Connect(Tcp()));
    asio::ip::tcp::socket peer = m_acceptor.accept();
    Send(200, 60000);
    while (m_queue.CountBytes() > 0 && m_context.run_for(50ms) > 0) m_context.restart();
    const auto begin = std::chrono::steady_clock::now();
    m_spStream->Close({MakeFrame(FrameKind::Goodbye, 0, 0, nullptr)});
    m_context.restart();
    m_context.run();  // until nothing is under way
    const auto time = std::chrono::steady_clock::now() - begin;
    EXPECT_GT(time, 900ms);
    EXPECT_LT(time, 3s);
}

TEST_F(Transport, TlsTakesOnlyTheHostsOwnCertificateFromItsAuthority) {
    const TemporaryFolder folder;
    const TlsFiles mine = MakeCertificate(folder, "mine", "IP:127.0.0.1");
    const TlsFiles other = MakeCertificate(folder, "other", "IP:127.0.0.1,DNS:localhost");
    asio::ssl::context tls = MakeInstrumentTls({"", mine.m_strCertificate, mine.m_strKey});
    std::optional<TlsSocket> peer;
    bool bShaken = false;
    const auto accept = [&](const char* pScheme, const TlsFiles& files) {
        m_spStream.reset();
        m_strFailure.clear();
        m_acceptor.async_accept([&](const asio::error_code&, asio::ip::tcp::socket socket) {
            peer.emplace(std::move(socket), tls);
            peer->async_handshake(asio::ssl::stream_base::server,
                                  [&](const asio::error_code& error) { bShaken = !error; });
        });
        return Connect(Tcp(pScheme), files);
    };
    ASSERT_TRUE(accept("tls://127.0.0.1:", {mine.m_strAuthorities, "", ""})) << m_strFailure;
    ASSERT_TRUE(Await([&] { return bShaken; }));
    Send(100, 1000);
    m_spStream->Close({MakeFrame(FrameKind::Goodbye, 0, 0, nullptr)});
    Reading reading;
    reading.Start(*peer);
    EXPECT_TRUE(Await([&] { return bool(reading.m_error); }));
    EXPECT_EQ(reading.m_error, asio::error::eof);  // and not cut off
    EXPECT_EQ(reading.m_bytes.size(), 64 * 1024u + 24);

    EXPECT_FALSE(accept("tls://127.0.0.1:", {other.m_strAuthorities, "", ""}));
    EXPECT_EQ(m_strFailure, "certificate: self-signed certificate");
    EXPECT_TRUE(m_bPatient);
    EXPECT_FALSE(accept("tls://127.0.0.1:", {}));  // the system's authorities
    EXPECT_EQ(m_strFailure, "certificate: self-signed certificate");
    EXPECT_FALSE(accept("tls://localhost:", {mine.m_strAuthorities, "", ""}));
    EXPECT_EQ(m_strFailure, "certificate: hostname mismatch");
    // The instrument says what it does not take only behind the panel's handshake.
    tls = MakeInstrumentTls(mine);
    if (accept("tls://127.0.0.1:", {mine.m_strAuthorities, "", ""}))
        Await([&] { return !m_strFailure.empty(); });
    EXPECT_NE(m_strFailure.find("certificate required"), std::string::npos) << m_strFailure;
    EXPECT_TRUE(m_bPatient);
    EXPECT_THROW(MakePanelTls({"/no/such/file", "", ""}), CTlsError);
    EXPECT_THROW(MakePanelTls({"", mine.m_strCertificate, other.m_strKey}), CTlsError);
}

TEST_F(Transport, ALineIsRawAndExclusiveAndItsDeviceMayVanish) {
    std::optional<CPseudoTerminal> terminal(std::in_place);
    ASSERT_EQ(::write(terminal->m_hFile, "old", 3), 3);
    const std::string strAddress = "serial:" + terminal->GetDevice() + "?baud=250000";
    ASSERT_TRUE(Connect(strAddress)) << m_strFailure;
    asio::error_code error;
    EXPECT_FALSE(OpenLine(m_context, ReadLinkAddress(strAddress, LinkUse::Connect), error));
    EXPECT_EQ(DescribeTransportError(error), "device or resource busy");

    Bytes every(256);
    for (int n = 0; n < 256; ++n) every[static_cast<std::size_t>(n)] = static_cast<std::uint8_t>(n);
    ASSERT_EQ(::write(terminal->m_hFile, every.data(), every.size()), 256);
    EXPECT_TRUE(Await([&] { return m_in.size() >= 256; }));
    EXPECT_EQ(m_in, every);
    m_queue.Add(FrameKind::KeepAlive, 0, std::make_shared<Bytes>(every));
    m_spStream->Send(m_queue);
    m_context.restart();
    m_context.run_for(50ms);
    Bytes out(1000);
    // A terminal that nobody has opened yet echoes what is written, which may still be there.
    const ssize_t nRead = ::read(terminal->m_hFile, out.data(), out.size());
    ASSERT_TRUE(nRead == 24 + 256 || nRead == 3 + 24 + 256) << nRead;
    EXPECT_TRUE(std::equal(every.begin(), every.end(), out.begin() + nRead - 256 - 4));

    terminal.reset();
    EXPECT_TRUE(Await([&] { return !m_strFailure.empty(); }));
    EXPECT_EQ(m_strFailure, "the device is gone");
}

}  // namespace
