// A panel made by hand, on a real socket or line.
#pragma once

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <deque>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "link/ByteOrder.h"
#include "link/FrameOrder.h"
#include "link/FrameReader.h"
#include "link/Payloads.h"
#include "link/ScreenPackets.h"
#include "tests/link/Support.h"

using namespace std::chrono_literals;

/// Tells what an instrument's frames are, and keeps what they bring. A letter for each frame: H, A0
/// (ACK with its result), K, R2, G8 with their reasons; packets as GetLetter says, those for
/// viewers as capitals.
class CFrameTeller {
  public:
    std::string Tell(const Frame& frame) {
        if (const auto nMissing = m_order.Take(frame.m_nSequence)) m_nLost += *nMissing;
        if (frame.m_kind == FrameKind::Packet)
            return TellPacket(ReadPacket(frame.m_payload).value(), frame.m_nFlags);
        if (frame.m_kind == FrameKind::Hello) {
            m_hello = ReadHello(frame.m_payload).value();
            m_order.Restart();
            m_order.Take(frame.m_nSequence);
        }
        const char ch = GetKindLetter(frame.m_kind);
        std::string strTold(1, ch);
        if (std::strchr("ARG", ch)) strTold += std::to_string(frame.m_payload[ch == 'A' ? 4 : 0]);
        return strTold;
    }

    Hello m_hello;
    std::uint64_t m_nLost = 0;
    std::vector<std::int16_t> m_values;       ///< since the last running-state report
    std::string m_strLines;                   ///< a digit for each block
    std::atomic<std::size_t> m_nPackets = 0;  ///< of values; may be read on any thread
    std::vector<unsigned> m_started;          ///< milliseconds and rate of the last one announced

  private:
    std::string TellPacket(const PacketView& packet, std::uint16_t nFlags) {
        const char ch = "osncri"[static_cast<int>(FindMeaning(packet))];
        if (ch == 's') TakeValues(packet.m_payload);
        if (ch == 'r') m_values.clear();
        if (ch == 'c')
            m_started = {GetNumber<std::uint16_t>(packet.m_payload.subspan(6)),
                         GetNumber<std::uint16_t>(packet.m_payload.subspan(8))};
        return std::string(1, static_cast<char>(nFlags == 0 ? ch : std::toupper(ch)));
    }
    void TakeValues(PayloadView payload) {
        ++m_nPackets;
        for (std::size_t n = 1; n + 3 <= payload.size();) {
            const unsigned nValues = payload[n + 1] * 256u + payload[n + 2];
            m_strLines += static_cast<char>('0' + payload[n]);
            n += 3;
            for (unsigned i = 0; i < nValues; ++i, n += 2)
                m_values.push_back(static_cast<std::int16_t>(payload[n] | payload[n + 1] << 8));
        }
    }

    CFrameOrder m_order;
};

class CWirePanel : public CFrameTeller {
  public:
    /// @param nPort on this machine; @param bSmall with the smallest buffer for what comes in
    explicit CWirePanel(std::uint16_t nPort, bool bSmall = false)
        : m_nHandle(::socket(AF_INET, SOCK_STREAM, 0)) {
        const int nBuffer = 1;
        if (bSmall) ::setsockopt(m_nHandle, SOL_SOCKET, SO_RCVBUF, &nBuffer, sizeof nBuffer);
        sockaddr_in address{AF_INET, htons(nPort), {htonl(INADDR_LOOPBACK)}, {}};
        if (::connect(m_nHandle, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            m_bClosed = true;
    }
    /// Takes a descriptor over.
    static CWirePanel On(int nHandle) { return CWirePanel(nHandle, 0, 0); }
    CWirePanel(CWirePanel&& other) noexcept : m_nHandle(std::exchange(other.m_nHandle, -1)) {}
    ~CWirePanel() {
        if (m_nHandle >= 0) ::close(m_nHandle);
    }

    CWirePanel& Write(const Bytes& bytes) {
        for (std::size_t n = 0; n < bytes.size();) {
            auto nWritten = ::send(m_nHandle, bytes.data() + n, bytes.size() - n, MSG_NOSIGNAL);
            if (nWritten < 0 && errno == ENOTSOCK)
                nWritten = ::write(m_nHandle, bytes.data() + n, bytes.size() - n);
            if (nWritten <= 0) break;
            n += static_cast<std::size_t>(nWritten);
        }
        return *this;
    }
    CWirePanel& Send(FrameKind kind, Bytes payload = {}) {
        if (kind == FrameKind::Join) m_nNext = 0;
        return Write(MakeBytes(kind, m_nNext++, std::move(payload)));
    }
    CWirePanel& Join(bool bCommand, std::uint32_t nToken = 7, std::string strName = "desk") {
        return Send(FrameKind::Join, FormJoin({{1, 1}, bCommand, nToken, 1, std::move(strName)}));
    }
    CWirePanel& Message(std::uint32_t nNumber, Bytes image = Bytes(44)) {
        return Send(FrameKind::Message, FormMessage({nNumber, image}));
    }

    /// Reads until what has come says so, or the other side closes ("x"), or time is up. Of
    /// values in a row only the first is told.
    std::string Await(std::string_view strEnd, std::chrono::milliseconds time = 5s) {
        const auto end = std::chrono::steady_clock::now() + time;
        std::string strTold;
        for (;;) {
            while (!m_told.empty()) {
                const std::string str = std::move(m_told.front());
                m_told.pop_front();
                if (str == "s" && strTold.ends_with('s')) continue;
                strTold += str;
                if (!strEnd.empty() && strTold.ends_with(strEnd)) return strTold;
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            pollfd input{m_nHandle, POLLIN, 0};
            if (m_bClosed || left <= 0ms || ::poll(&input, 1, int(left.count())) != 1)
                return strTold;
            Bytes bytes(65536);
            const auto nRead = ::read(m_nHandle, bytes.data(), bytes.size());
            if (nRead <= 0) {
                m_bClosed = true;
                m_told.push_back(nRead == 0 ? "x" : "!");
                continue;
            }
            bytes.resize(static_cast<std::size_t>(nRead));
            m_reader.Add(bytes, {});
            while (const auto frame = m_reader.Read()) m_told.push_back(Tell(*frame));
        }
    }

  private:
    CWirePanel(int nHandle, int, int) : m_nHandle(nHandle) {}

    int m_nHandle;
    std::uint32_t m_nNext = 0;
    bool m_bClosed = false;
    CFrameReader m_reader{LinkManner::Stream, MAX_PAYLOAD_TO_PANEL};
    std::deque<std::string> m_told;  ///< and not given out
};
