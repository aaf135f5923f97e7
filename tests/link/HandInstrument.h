// An instrument that does what a test tells it, over a real socket.
#pragma once

#include <asio/read.hpp>
#include <asio/write.hpp>
#include <mutex>
#include <optional>
#include <thread>

#include "link/FrameReader.h"
#include "link/Payloads.h"
#include "tests/link/Support.h"
#include "tests/link/Transports.h"

/// Every wait is for 20 s at the most; what does not come fails the test.
class CHandInstrument {
  public:
    std::string GetAddress() const {
        return "tcp://127.0.0.1:" + std::to_string(m_acceptor.local_endpoint().port());
    }

    /// Takes the next panel that comes, in place of the one before.
    void Accept() {
        std::optional<asio::ip::tcp::socket> socket;
        m_acceptor.async_accept([&](const asio::error_code& error, asio::ip::tcp::socket accepted) {
            if (!error) socket = std::move(accepted);
        });
        ASSERT_TRUE(RunUntil(m_context, [&] { return socket.has_value(); })) << "no panel came";
        Take(std::move(*socket));
    }

    /// Accepts, and answers the JOIN.
    Join TakePanel(Hello hello = MakeHello()) {
        Accept();
        const auto join = ReadJoin(Read(FrameKind::Join)).value_or(Join());
        hello.m_nAttempt = join.m_nAttempt;
        Send(FrameKind::Hello, FormHello(hello));
        return join;
    }

    /// The payload of the panel's next frame of a kind; others are passed over.
    Bytes Read(FrameKind kind) {
        std::optional<Bytes> payload;
        RunUntil(m_context, [&] {
            while (const auto frame = m_reader->Read()) {
                if (frame->m_kind != kind) continue;
                payload.emplace(frame->m_payload.begin(), frame->m_payload.end());
                return true;
            }
            Receive();
            return m_bEnded;
        });
        EXPECT_TRUE(payload) << "no frame of kind " << static_cast<int>(kind);
        return payload.value_or(Bytes());
    }

    /// Reads until the panel has closed.
    /// @return the reason that it gave; nothing: none
    std::optional<LinkReason> ReadEnd() {
        std::optional<LinkReason> reason;
        EXPECT_TRUE(RunUntil(m_context, [&] {
            while (const auto frame = m_reader->Read())
                if (frame->m_kind == FrameKind::Goodbye)
                    reason = ReadParting(frame->m_payload).value_or(Parting()).m_reason;
            Receive();
            return m_bEnded;
        })) << "the panel has not closed";
        return reason;
    }

    void Send(FrameKind kind, Bytes payload = {}, std::uint16_t nFlags = 0) {
        const std::lock_guard lock(m_mutex);
        Bytes bytes;
        MakeFrame(kind, nFlags, m_nNext++, std::make_shared<Bytes>(std::move(payload)))
            .AppendTo(bytes);
        SendBytes(bytes);
    }
    /// As if the next frames were lost on their way.
    void LoseFrames(std::uint32_t nFrames) {
        const std::lock_guard lock(m_mutex);
        m_nNext += nFrames;
    }
    void SendBytes(const Bytes& bytes) {
        const std::lock_guard lock(m_mutex);
        if (!m_socket) return;
        asio::error_code ignored;  // a panel that has gone is found out by reading
        asio::write(*m_socket, asio::buffer(bytes), ignored);
    }
    /// Ends without a word.
    void Close() {
        const std::lock_guard lock(m_mutex);
        if (m_socket) Receive();  // with bytes unread it would reset the connection
        m_socket.reset();
    }
    /// From now on the panel hears of it twice a second.
    void Live() {
        m_heart = std::jthread([this](const std::stop_token& stop) {
            for (; !stop.stop_requested();
                 std::this_thread::sleep_for(std::chrono::milliseconds(500)))
                Send(FrameKind::KeepAlive);
        });
    }
    /// Nobody is there any more; Return listens again at the same place.
    void Leave() {
        Close();
        m_port = m_acceptor.local_endpoint();
        m_acceptor.close();
    }
    void Return() { m_acceptor = asio::ip::tcp::acceptor(m_context, m_port); }

    static Hello MakeHello() {
        return {1, 1, 1, true, false, false, 10000, 20000, 0, 0xCAFEF00D, 1, "press 3", "0042"};
    }

  private:
    void Take(asio::ip::tcp::socket socket) {
        const std::lock_guard lock(m_mutex);
        m_socket.emplace(std::move(socket));
        m_socket->non_blocking(false);
        m_reader.emplace(LinkManner::Stream, MAX_PAYLOAD_TO_INSTRUMENT);
        m_nNext = 0;
        m_bEnded = false;
    }
    /// What has come in until now.
    void Receive() {
        const std::lock_guard lock(m_mutex);
        Bytes bytes(65536);
        asio::error_code error;
        m_socket->non_blocking(true);
        const std::size_t nBytes = m_socket->read_some(asio::buffer(bytes), error);
        m_socket->non_blocking(false);
        m_bEnded = error && error != asio::error::would_block;
        m_reader->Add(std::span(bytes).first(nBytes), {});
    }

    asio::io_context m_context;
    asio::ip::tcp::acceptor m_acceptor = MakeAcceptor(m_context);
    asio::ip::tcp::endpoint m_port;
    std::optional<asio::ip::tcp::socket> m_socket;
    std::optional<CFrameReader> m_reader;
    bool m_bEnded = false;
    std::uint32_t m_nNext = 0;     ///< sequence number
    std::recursive_mutex m_mutex;  ///< guards the socket and the number
    std::jthread m_heart;
};
