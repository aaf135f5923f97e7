// What a panel makes of the instrument's frames.
#include <algorithm>
#include <iterator>

#include "curves/InstrumentMode.h"
#include "link/PanelSession.h"

namespace {

constexpr std::size_t PACKET_COST = 256;  ///< of a packet, beside its payload, in bytes
constexpr std::uint64_t VALUE_TIME = 5;   ///< window of the values' bound, in seconds
constexpr std::uint64_t VALUE_SURPLUS = 8u << 20;

/// A packet that says when the screen has released it.
struct HeldPacket : RTPacket {
    HeldPacket(const PacketView& packet, std::shared_ptr<std::atomic<std::size_t>> spHeld)
        : m_payload(packet.m_payload.begin(), packet.m_payload.end()), m_spHeld(std::move(spHeld)) {
        m_nType = packet.m_nType;
        m_pData = m_payload.data();
        m_nLength = static_cast<std::int32_t>(m_payload.size());
        *m_spHeld += m_payload.size() + PACKET_COST;
    }
    HeldPacket(const HeldPacket&) = delete;
    HeldPacket& operator=(const HeldPacket&) = delete;
    ~HeldPacket() { *m_spHeld -= m_payload.size() + PACKET_COST; }

    const std::vector<std::uint8_t> m_payload;
    const std::shared_ptr<std::atomic<std::size_t>> m_spHeld;
};

/// Settings of a HELLO that differ, with what they were and are.
constexpr NumberedText MODE_CHANGED{3290, L"mode %1 is now %2"};
constexpr NumberedText SECOND_INPUT_CHANGED{3291, L"second input %1 is now %2"};
constexpr NumberedText RANGES_CHANGED{3292, L"parameter 50 %1 is now %2"};
constexpr NumberedText LOCK_CHANGED{3293, L"lock %1 is now %2"};
constexpr NumberedText VALUE_RATE_CHANGED{3294, L"value rate %1 is now %2"};
constexpr NumberedText SECOND_RATE_CHANGED{3295, L"second rate %1 is now %2"};
constexpr NumberedText SERIAL_NUMBER_CHANGED{3296, L"serial number %1 is now %2"};

/// By AckResult; the last one also stands for all others.
constexpr NumberedText NOT_DONE[] = {
    NO_TEXT,
    {3300, L"The instrument does not understand this command."},
    {3301, L"The instrument does not take commands of this panel."},
    {3302, L"Captures are controlled elsewhere."},
    {3303, L"The instrument cannot do this now."},
};

void AddChange(LinkText& changes, const NumberedText& text, std::uint32_t nOld,
               std::uint32_t nNew) {
    if (nOld != nNew)
        changes.Add(", ", LinkText(text, {std::to_string(nOld), std::to_string(nNew)}));
}

}  // namespace

void CPanelSession::OnBytes(std::span<const std::uint8_t> bytes, LinkTime now) {
    if (!m_bOpen) return;
    m_peer.GetReader().Add(bytes, now);
    ReadFrames(now);
    Report();
}

void CPanelSession::ReadFrames(LinkTime now) {
    while (m_bOpen) {
        const auto frame = m_peer.GetReader().Read();
        if (!frame) break;
        TakeFrame(*frame, &m_peer.GetOrder(), now);
    }
    if (!m_bOpen) return;
    const std::uint64_t nDamages = m_peer.TakeNewDamages();
    if (IsConnected() && !m_frameRate.Add(nDamages, now)) return BreakOff(LinkReason::Flood, now);
    switch (m_peer.GetReader().GetFault()) {
    case CFrameReader::Fault::None:
        return;
    case CFrameReader::Fault::Damaged:
        return Part({LinkReason::Damaged, ""}, m_peer.HasGoodFrame(), now);
    case CFrameReader::Fault::Malformed:
        return Part({LinkReason::Malformed, ""}, m_peer.HasGoodFrame(), now);
    case CFrameReader::Fault::Stalled:
        return Part({LinkReason::Silence, ""}, m_peer.HasGoodFrame(), now);
    }
}

void CPanelSession::OnBrokerMessage(BrokerTopic topic, std::span<const std::uint8_t> bytes,
                                    LinkTime now) {
    if (!m_bOpen || (topic == BrokerTopic::Packets && !IsConnected())) return;
    const auto frame = ReadWholeFrame(bytes, MAX_PAYLOAD_TO_PANEL);
    if (!frame) {
        ++m_peer.GetCounts().m_nDamages;
        if (IsConnected() && !m_frameRate.Add(1, now)) BreakOff(LinkReason::Flood, now);
    } else if (topic == BrokerTopic::Hello && frame->m_kind == FrameKind::Hello) {
        m_peer.OnFrame(now);
        TakeRetainedHello(*frame, now);
    } else {
        // A will was numbered long before it is published.
        const bool bWill = topic == BrokerTopic::Hello && frame->m_kind == FrameKind::Goodbye;
        CFrameOrder* const apOrder[] = {&m_helloOrder, &m_peer.GetOrder(), &m_downOrder};
        TakeFrame(*frame, bWill ? nullptr : apOrder[static_cast<std::size_t>(topic)], now);
    }
    Report();
}

void CPanelSession::TakeFrame(const Frame& frame, CFrameOrder* pOrder, LinkTime now) {
    m_peer.OnFrame(now);
    if (IsJoining()) return TakeWhileJoining(frame, now);
    if (!IsConnected()) return;
    if (IsFlood(frame, now)) return BreakOff(LinkReason::Flood, now);
    // An instrument that was restarted counts from 0 again, and says so by a REFUSE.
    if (frame.m_kind == FrameKind::Refuse && m_settings.m_manner != LinkManner::Broker)
        return TakeParting(frame, now);
    const auto nMissing = pOrder ? pOrder->Take(frame.m_nSequence) : 0;
    if (!nMissing) {
        ++m_peer.GetCounts().m_nOld;
        return;
    }
    m_peer.GetCounts().m_nLost += *nMissing;
    if (m_gate.IsRunning()) m_status.m_nLostInCapture += *nMissing;
    TakeWhileConnected(frame, now);
}

/// On a line these may be what is left of a connection before.
void CPanelSession::TakeWhileJoining(const Frame& frame, LinkTime now) {
    switch (frame.m_kind) {
    case FrameKind::Hello:
        return TakeHello(frame, now);
    case FrameKind::Refuse:
        return TakeParting(frame, now);
    case FrameKind::Goodbye:
        if (!IsLine() || IsSilent()) TakeParting(frame, now);
        return;
    case FrameKind::Packet:
    case FrameKind::Ack:
    case FrameKind::KeepAlive:
        if (!IsLine()) BreakOff(LinkReason::Malformed, now);
        return;
    default:
        ++m_peer.GetCounts().m_nIgnored;
    }
}

void CPanelSession::TakeWhileConnected(const Frame& frame, LinkTime now) {
    switch (frame.m_kind) {
    case FrameKind::Hello:
        if (!IsLine()) BreakOff(LinkReason::Malformed, now);
        return;
    case FrameKind::Packet:
        return TakePacket(frame, now);
    case FrameKind::Ack:
        return TakeAck(frame, now);
    case FrameKind::KeepAlive:
        return;
    case FrameKind::Refuse:
    case FrameKind::Goodbye:
        return TakeParting(frame, now);
    default:
        ++m_peer.GetCounts().m_nIgnored;
    }
}

void CPanelSession::BreakOff(LinkReason reason, LinkTime now) { Part({reason, ""}, true, now); }

void CPanelSession::TakeParting(const Frame& frame, LinkTime now) {
    const auto parting = ReadParting(frame.m_payload);
    if (!parting) return BreakOff(LinkReason::Malformed, now);
    Part(*parting, false, now);
    m_status.m_bRefused = frame.m_kind == FrameKind::Refuse;
}

void CPanelSession::TakeHello(const Frame& frame, LinkTime now) {
    const auto hello = ReadHello(frame.m_payload);
    if (!hello) return BreakOff(LinkReason::Malformed, now);
    if (!m_bAsked || IsSilent() || hello->m_nAttempt != m_nAttempt) {
        if (!IsLine()) BreakOff(LinkReason::Malformed, now);
        return;
    }
    m_peer.GetOrder().Restart();
    m_downOrder.Restart();
    if (m_settings.m_manner == LinkManner::Broker)
        m_downOrder.Take(frame.m_nSequence);
    else
        m_peer.GetOrder().Take(frame.m_nSequence);
    Accept(*hello, now);
}

void CPanelSession::TakeRetainedHello(const Frame& frame, LinkTime now) {
    const auto hello = ReadHello(frame.m_payload);
    if (!IsSilent() || !hello || hello->m_nAttempt != 0 || !m_helloOrder.Take(frame.m_nSequence)) {
        ++m_peer.GetCounts().m_nIgnored;
        return;
    }
    if (IsConnected()) {
        // A capture that begins or ends is told by its packets.
        Hello old = m_hello;
        old.m_bRunning = hello->m_bRunning;
        if (*hello == old) return;
        Part({LinkReason::JoinFirst, ""}, false, now);
    }
    m_peer.GetOrder().Restart();
    Accept(*hello, now);
}

void CPanelSession::Accept(const Hello& hello, LinkTime now) {
    m_bAsked = false;
    if (!SuitsScreen(hello, now)) return;
    m_hello = hello;
    const bool bBack = m_status.m_bLost;
    m_nReconnections += bBack ? 1 : 0;
    m_joinedAt = m_since = now;
    m_gate.OnConnected();
    m_frameRate.Restart(now);
    m_valueRate.Restart(now, 4 * VALUE_TIME * CountChannels(hello.m_nMode) * hello.m_nValueRate *
                                     sizeof(std::int16_t) +
                                 VALUE_SURPLUS);

    const auto lost = m_status.m_nLostInCapture;
    const LinkText notice = m_status.m_notice;
    m_status = {};
    m_status.m_state = PanelState::Connected;
    m_status.m_strName = hello.m_strName;
    m_status.m_strSerialNumber = hello.m_strSerialNumber;
    m_status.m_bCommands = m_first->m_bCommands;
    m_status.m_nLostInCapture = lost;
    m_status.m_notice = notice;
    if (bBack) m_status.m_away = std::chrono::duration_cast<std::chrono::seconds>(now - m_lostAt);
}

/// Compares a HELLO with what the screen was made for.
bool CPanelSession::SuitsScreen(const Hello& hello, LinkTime now) {
    m_status.m_notice = {};
    if (!m_first) {
        m_first = hello;
        m_first->m_bCommands = hello.m_bCommands && m_settings.m_bCommand;
        m_screen.OnInstrumentKnown(*m_first);
        return true;
    }
    Hello& first = *m_first;
    LinkText change;
    AddChange(change, MODE_CHANGED, first.m_nMode, hello.m_nMode);
    AddChange(change, SECOND_INPUT_CHANGED, first.m_nSecondInput, hello.m_nSecondInput);
    AddChange(change, RANGES_CHANGED, first.m_nDevice24V, hello.m_nDevice24V);
    AddChange(change, LOCK_CHANGED, first.m_bLocked, hello.m_bLocked);
    const bool bStarts = first.m_bCommands && !first.m_bLocked;
    LinkText rates;
    AddChange(rates, VALUE_RATE_CHANGED, first.m_nValueRate, hello.m_nValueRate);
    AddChange(rates, SECOND_RATE_CHANGED, first.m_nAuxRate, hello.m_nAuxRate);
    if (!bStarts && !rates.IsEmpty()) change.Add(", ", rates);
    if (!change.IsEmpty()) {
        if (!IsSilent())
            m_peer.SendLast(FrameKind::Goodbye, {LinkReason::Changed, change.m_strEnglish}, now);
        EndFor(PanelState::Changed);
        m_status.m_change = change;
        return false;
    }
    if (first.m_bCommands && !hello.m_bCommands) {
        BreakOff(LinkReason::OtherCommands, now);
        return false;
    }
    if (!rates.IsEmpty()) {
        m_screen.SetRates(hello.m_nValueRate, hello.m_nAuxRate);
        m_status.m_notice = rates;
    }
    if (first.m_strSerialNumber != hello.m_strSerialNumber)
        m_status.m_notice.Add(
            ", ", {SERIAL_NUMBER_CHANGED, {first.m_strSerialNumber, hello.m_strSerialNumber}});
    first.m_nValueRate = hello.m_nValueRate;
    first.m_nAuxRate = hello.m_nAuxRate;
    first.m_strSerialNumber = hello.m_strSerialNumber;
    return true;
}

void CPanelSession::TakeAck(const Frame& frame, LinkTime now) {
    const auto ack = ReadAck(frame.m_payload);
    if (!ack) return BreakOff(LinkReason::Malformed, now);
    const auto answered = m_sender.OnAck(ack->m_nNumber);
    if (!answered) return;
    const bool bTaken = ack->m_result == AckResult::Taken;
    if (!bTaken)
        m_status.m_notice =
            NOT_DONE[std::min(static_cast<std::size_t>(ack->m_result), std::size(NOT_DONE) - 1)];
    if (answered->m_kind == ImageKind::Start) {
        m_status.m_nLostInCapture += m_gate.OnStartAnswered(bTaken, answered->m_bSentAgain);
        // The screen shows the last start's capture.
        if (!bTaken && !m_gate.HasUnansweredStart()) TellIdle(true);
    }
    SendDue(now);
}

void CPanelSession::TakePacket(const Frame& frame, LinkTime now) {
    const auto packet = ReadPacket(frame.m_payload);
    if (!packet) return BreakOff(LinkReason::Malformed, now);
    if ((frame.m_nFlags & FRAMEFLAG_FOR_VIEWERS) != 0 && m_first->m_bCommands) return;
    const bool bWasRunning = m_gate.IsRunning();
    if (!m_gate.Passes(*packet)) return;
    const PacketMeaning meaning = FindMeaning(*packet);
    if (meaning == PacketMeaning::CaptureStarted || (!bWasRunning && m_gate.IsRunning())) {
        m_status.m_nLostInCapture = 0;
        m_status.m_away.reset();
    }
    // A screen that starts captures has chosen their sample time itself.
    unsigned nSeconds = 0;
    if (!m_first->m_bCommands || m_first->m_bLocked)
        nSeconds = std::min((GetStartedSampleTime(*packet) + 999u) / 1000, 60u);
    Deliver(std::make_shared<HeldPacket>(*packet, m_spHeld), nSeconds);
    if (*m_spHeld >= MAX_HELD) m_bPaused = true;
}

bool CPanelSession::IsFlood(const Frame& frame, LinkTime now) {
    const auto packet =
        frame.m_kind == FrameKind::Packet ? ReadPacket(frame.m_payload) : std::nullopt;
    if (packet && packet->m_nType == RTPACKET_SAMPLES)
        return !m_valueRate.Add(packet->m_payload.size(), now);
    return !m_frameRate.Add(1, now);
}
