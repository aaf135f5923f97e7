// A panel's session between a hand-made instrument and a hand-made screen, by a clock of its own.
#pragma once

#include "link/PanelSession.h"
#include "tests/link/Support.h"

using namespace std::chrono_literals;

/// One letter for each packet: s values, n new curve, c capture started, r running, i idle, o
/// other.
inline char GetLetter(const RTPacket& packet) {
    const PayloadView payload(packet.m_pData, static_cast<std::size_t>(packet.m_nLength));
    return "osncri"[static_cast<int>(FindMeaning({packet.m_nType, payload}))];
}

/// The packet of a letter.
inline Bytes MakePacketOf(char ch, std::size_t nValues = 2) {
    Bytes control(41);
    control[0] = ch == 'c' ? RTCMD_CAPTURE : RTCMD_STATUS;
    control[ch == 'c' ? 5 : 3] = ch == 'i' ? 0 : 1;
    if (ch == 's') return FormPacket({RTPACKET_SAMPLES, Bytes(4 + 2 * nValues)});
    if (ch == 'n') return FormPacket({RTPACKET_NEW_CURVE, Bytes{'P'}});
    if (ch == 'o') return FormPacket({77, Bytes(3)});
    return FormPacket({RTPACKET_CONTROL, control});
}

/// Payload of a REFUSE or GOODBYE.
inline Bytes MakeParting(int nReason, const char* pszText = "") {
    return FormParting({static_cast<LinkReason>(nReason), pszText});
}

/// What a side has sent: a letter for each frame, for MESSAGE, ACK, REFUSE and GOODBYE with its
/// number and, of an ACK, the result.
inline std::string DescribeFrames(const Bytes& bytes) {
    CFrameReader reader(LinkManner::Stream, MAX_PAYLOAD_TO_PANEL);
    reader.Add(bytes, {});
    std::string strFrames;
    while (const auto frame = reader.Read()) {
        const char ch = GetKindLetter(frame->m_kind);
        strFrames += ch;
        if (ch == 'J') strFrames += std::to_string(frame->m_payload[8]);
        if (std::strchr("MARG", ch)) strFrames += std::to_string(frame->m_payload[0]);
        if (ch == 'A') strFrames += ':' + std::to_string(frame->m_payload[4]);
    }
    return reader.GetFault() == CFrameReader::Fault::None ? strFrames : "damaged";
}

inline Bytes TakeBytes(CFrameQueue& queue) {
    Bytes bytes;
    for (auto frames = queue.Take(1 << 30); !frames.empty(); frames = queue.Take(1 << 30)) {
        for (const OutFrame& frame : frames) frame.AppendTo(bytes);
        queue.OnSent();
    }
    return bytes;
}

class CPanelBench : public IPanelTransport, public IPanelScreen {
  public:
    explicit CPanelBench(LinkManner manner = LinkManner::Stream, bool bCommand = true)
        : m_session({manner, bCommand, 0x11223344, "desk 1"}, *this, *this) {
        m_session.Start(m_now);
    }

    /// Opens the transport and says HELLO.
    CPanelBench& Join(Hello hello = MakeHello()) {
        m_session.OnOpened(m_now);
        return Answer(std::move(hello));
    }
    /// Says HELLO to the last JOIN.
    CPanelBench& Answer(Hello hello = MakeHello()) {
        Drain();
        hello.m_nAttempt =
            m_strSent.empty() ? 0 : static_cast<std::uint32_t>(m_strSent.back() - '0');
        m_nNext = 0;
        return Feed(FrameKind::Hello, FormHello(hello));
    }
    CPanelBench& Feed(FrameKind kind, Bytes payload = {}, std::uint16_t nFlags = 0) {
        Bytes bytes;
        MakeFrame(kind, nFlags, m_nNext++, std::make_shared<Bytes>(std::move(payload)))
            .AppendTo(bytes);
        m_session.OnBytes(bytes, m_now);
        return Drain();
    }
    CPanelBench& Feed(std::string_view strPackets, std::uint16_t nFlags = 0) {
        for (const char ch : strPackets) Feed(FrameKind::Packet, MakePacketOf(ch), nFlags);
        return *this;
    }
    CPanelBench& Ack(std::uint32_t nNumber, int nResult = 0) {
        return Feed(FrameKind::Ack, FormAck({nNumber, static_cast<AckResult>(nResult)}));
    }
    CPanelBench& Send(ImageKind kind) {
        m_session.Send(std::string(44, 'x'), kind, m_now);
        return Drain();
    }
    CPanelBench& Pass(LinkTime time) {
        for (const LinkTime end = m_now + time; m_now < end;) {
            m_now += 20ms;
            m_session.OnTime(m_now);
            Drain();
        }
        return *this;
    }
    /// Lets time pass while the instrument lives.
    CPanelBench& PassAlive(LinkTime time) {
        for (; time > 0s; time -= 500ms) Pass(500ms).Feed(FrameKind::KeepAlive);
        return *this;
    }

    /// Lets the transport take what waits.
    CPanelBench& Drain() {
        m_strSent += DescribeFrames(TakeBytes(m_session.GetPeer().GetQueue()));
        return *this;
    }
    std::string TakeSent() {
        Drain();
        return std::exchange(m_strSent, "");
    }
    /// Letters of the packets pushed; those pushed behind the screen are capitals.
    std::string TakePushed() { return std::exchange(m_strPushed, ""); }
    std::string GetText() const { return DescribeStatus(m_status, "tcp://a:1"); }
    PanelState GetState() const { return m_session.GetState(); }

    static Hello MakeHello() {
        return {1, 1, 1, true, false, false, 40000, 20000, 0, 0xCAFEF00D, 1, "press", "0042"};
    }

    void OpenTransport() override { m_openings.push_back(m_now); }
    void CloseTransport(std::vector<OutFrame> frames) override {
        ++m_nClosings;
        Bytes bytes = TakeBytes(m_session.GetPeer().GetQueue());
        for (const OutFrame& frame : frames) frame.AppendTo(bytes);
        m_strSent += DescribeFrames(bytes);
    }
    void PushPacket(std::shared_ptr<RTPacket> spPacket) override {
        m_strPushed += GetLetter(*spPacket);
        m_packets.push_back(std::move(spPacket));
    }
    void PushPacketBehindScreen(std::shared_ptr<RTPacket> spPacket) override {
        m_strPushed += static_cast<char>(std::toupper(GetLetter(*spPacket)));
    }
    void OnInstrumentKnown(const Hello& hello) override { m_known.push_back(hello); }
    void SetRates(std::uint16_t nValueRate, std::uint16_t nAuxRate) override {
        m_rates = {nValueRate, nAuxRate};
    }
    void SetSampleTime(unsigned nSeconds) override { m_sampleTimes.push_back(nSeconds); }
    void OnStatus(const LinkStatus& status) override { m_status = status; }

    LinkTime m_now = 100s;
    std::uint32_t m_nNext = 0;  ///< the instrument's next sequence number
    std::vector<LinkTime> m_openings;
    int m_nClosings = 0;
    std::string m_strSent;
    std::string m_strPushed;
    std::vector<std::shared_ptr<RTPacket>> m_packets;
    std::vector<Hello> m_known;
    std::pair<int, int> m_rates;
    std::vector<unsigned> m_sampleTimes;
    LinkStatus m_status;
    CPanelSession m_session;
};
