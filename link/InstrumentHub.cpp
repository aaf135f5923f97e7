#include "link/InstrumentHub.h"

#include <algorithm>
#include <utility>

#include "acquisition/ValueLayout.h"
#include "link/LinkStatus.h"
#include "link/SampleSplit.h"
#include "link/ScreenPackets.h"

namespace {

using namespace std::chrono_literals;

constexpr LinkTime JOIN_TIME = 5s;
constexpr LinkTime REFUSE_PAUSE = 1s;       ///< between two refusals on a line
constexpr LinkTime DEAF_TIME = 1s;          ///< of a line behind a flood
constexpr std::uint64_t MAX_FRAMES = 200;   ///< in a second
constexpr std::uint64_t MAX_MESSAGES = 50;  ///< in a second
constexpr std::size_t MAX_VIEWERS = 7;

enum class State : std::uint8_t { Unjoined, Joined, Gone };

}  // namespace

struct CInstrumentHub::Panel {
    Panel(PanelId nPanel, PanelTransport way, LinkTime now)
        : m_id(nPanel), m_transport(std::move(way)),
          m_peer(m_transport.m_manner, MAX_PAYLOAD_TO_INSTRUMENT), m_since(now) {
        m_peer.OnOpened(now);
    }

    bool IsJoined() const { return m_state == State::Joined; }
    bool IsLine() const { return m_transport.m_manner == LinkManner::Line; }
    std::string Describe() const {
        return m_join.m_strName.empty() ? m_transport.m_strFrom
                                        : m_join.m_strName + " (" + m_transport.m_strFrom + ")";
    }

    const PanelId m_id;
    const PanelTransport m_transport;
    CLinkPeer m_peer;
    State m_state = State::Unjoined;
    LinkTime m_since;  ///< when it came
    Join m_join;
    std::uint32_t m_nMessage = 0;  ///< the last one taken
    AckResult m_result{};          ///< and its answer
    CRateWindow m_frameRate{1s, MAX_FRAMES};
    CRateWindow m_messageRate{1s, MAX_MESSAGES};
    LinkTime m_deafUntil{0};  ///< on a line
    LinkTime m_refusedAt{-REFUSE_PAUSE};
};

/// An operation of the hub. Behind the outermost one panels that are gone are forgotten, and the
/// instrument hears what follows.
class CInstrumentHub::CScope {
  public:
    explicit CScope(CInstrumentHub& hub) : m_hub(hub) { ++m_hub.m_nDepth; }
    CScope(const CScope&) = delete;
    CScope& operator=(const CScope&) = delete;
    ~CScope() {
        if (m_hub.m_nDepth == 1) {
            m_hub.StopIfDue();
            std::erase_if(m_hub.m_panels,
                          [](const auto& panel) { return panel.second->m_state == State::Gone; });
        }
        --m_hub.m_nDepth;
    }

  private:
    CInstrumentHub& m_hub;
};

CInstrumentHub::CInstrumentHub(HubSettings settings, IInstrumentPort& port)
    : m_settings(std::move(settings)), m_port(port) {}

CInstrumentHub::~CInstrumentHub() = default;

PanelId CInstrumentHub::OnOpened(PanelTransport transport, LinkTime now) {
    const CScope scope(*this);
    const PanelId id = ++m_nLast;
    m_panels.emplace(id, std::make_unique<Panel>(id, std::move(transport), now));
    CloseOldestUnjoined(now);
    return id;
}

void CInstrumentHub::CloseOldestUnjoined(LinkTime now) {
    Panel* pOldest = nullptr;
    std::size_t nUnjoined = 0;
    for (const auto& [id, pPanel] : m_panels) {
        if (pPanel->m_state != State::Unjoined || pPanel->IsLine()) continue;
        if (pOldest == nullptr) pOldest = pPanel.get();
        ++nUnjoined;
    }
    if (nUnjoined > MAX_UNJOINED) Leave(*pOldest, LinkReason::TooMany, "", now);
}

void CInstrumentHub::OnClosed(PanelId id, const std::string& strWhy) {
    const CScope scope(*this);
    const auto found = m_panels.find(id);
    if (found == m_panels.end()) return;
    Retire(*found->second, strWhy);
    found->second->m_state = State::Gone;
}

void CInstrumentHub::OnBytes(PanelId id, std::span<const std::uint8_t> bytes, LinkTime now) {
    const CScope scope(*this);
    const auto found = m_panels.find(id);
    if (found == m_panels.end() || found->second->m_state == State::Gone) return;
    found->second->m_peer.GetReader().Add(bytes, now);
    ReadFrames(*found->second, now);
}

void CInstrumentHub::ReadFrames(Panel& panel, LinkTime now) {
    CFrameReader& reader = panel.m_peer.GetReader();
    while (panel.m_state != State::Gone) {
        const auto frame = reader.Read();
        if (!frame) break;
        TakeFrame(panel, *frame, now);
    }
    if (panel.m_state == State::Gone) return;
    const std::uint64_t nDamages = panel.m_peer.TakeNewDamages();
    if (panel.IsJoined() && !panel.m_frameRate.Add(nDamages, now))
        return Part(panel, {LinkReason::Flood, ""}, now);
    LinkReason reason{};
    switch (reader.GetFault()) {
    case CFrameReader::Fault::None:
        return;
    case CFrameReader::Fault::Damaged:
        reason = LinkReason::Damaged;
        break;
    case CFrameReader::Fault::Malformed:
        reason = LinkReason::Malformed;
        break;
    case CFrameReader::Fault::Stalled:
        reason = LinkReason::Silence;
        break;
    }
    // Who never sent a frame speaks something else.
    if (panel.m_peer.HasGoodFrame())
        Part(panel, {reason, ""}, now);
    else
        Leave(panel, reason, "", now);
}

void CInstrumentHub::TakeFrame(Panel& panel, const Frame& frame, LinkTime now) {
    panel.m_peer.OnFrame(now);
    if (frame.m_kind == FrameKind::Join && now < panel.m_deafUntil) return;
    if (panel.IsJoined() && !panel.m_frameRate.Add(1, now))
        return Part(panel, {LinkReason::Flood, ""}, now);
    if (frame.m_kind == FrameKind::Join) return TakeJoin(panel, frame, now);
    if (!panel.IsJoined()) return TakeUnjoined(panel, frame, now);
    if (!panel.m_peer.TakeNumber(frame.m_nSequence)) return;
    switch (frame.m_kind) {
    case FrameKind::Message:
        return TakeMessage(panel, frame, now);
    case FrameKind::KeepAlive:
        return;
    case FrameKind::Goodbye: {
        const auto parting = ReadParting(frame.m_payload);
        if (!parting) return Part(panel, {LinkReason::Malformed, ""}, now);
        panel.m_peer.GetQueue().DropWaiting();
        return Leave(panel, parting->m_reason, DescribeParting(*parting).m_strEnglish, now);
    }
    default:
        ++panel.m_peer.GetCounts().m_nIgnored;
    }
}

void CInstrumentHub::TakeUnjoined(Panel& panel, const Frame& frame, LinkTime now) {
    if (frame.m_kind == FrameKind::Goodbye && !panel.IsLine())
        return Leave(panel, LinkReason::Normal, "", now);
    if (frame.m_kind != FrameKind::Message && frame.m_kind != FrameKind::KeepAlive) {
        ++panel.m_peer.GetCounts().m_nIgnored;
    } else if (!panel.IsLine()) {
        Part(panel, {LinkReason::JoinFirst, ""}, now);
    } else if (now >= panel.m_deafUntil && now - panel.m_refusedAt >= REFUSE_PAUSE &&
               panel.m_peer.GetQueue().IsEmpty()) {
        panel.m_refusedAt = now;
        panel.m_peer.GetQueue().RestartNumbers();
        panel.m_peer.SendLast(FrameKind::Refuse, {LinkReason::JoinFirst, ""}, now);
    }
}

void CInstrumentHub::TakeJoin(Panel& panel, const Frame& frame, LinkTime now) {
    if (panel.IsJoined()) {
        if (!panel.IsLine()) return Part(panel, {LinkReason::Malformed, ""}, now);
        panel.m_peer.GetQueue().DropWaiting();
        Leave(panel, LinkReason::Normal, "joins anew", now);
    }
    const auto versions = ReadVersions(frame.m_payload);
    if (!versions) return Part(panel, {LinkReason::Malformed, ""}, now);
    if (versions->m_nLowest > LINK_VERSION || versions->m_nHighest < LINK_VERSION)
        return Part(panel, {LinkReason::NoCommonVersion, "versions 1 to 1"}, now);
    const auto join = ReadJoin(frame.m_payload);
    if (!join) return Part(panel, {LinkReason::Malformed, ""}, now);

    panel.m_join = *join;
    const std::size_t nViewers = std::min<std::size_t>(m_settings.m_nMaxPanels - 1, MAX_VIEWERS);
    if (!join->m_bCommand && CountViewers() >= nViewers)
        return Part(panel, {LinkReason::TooMany, ""}, now);
    if (Panel* const pOther = FindCommander(); join->m_bCommand && pOther != nullptr) {
        if (pOther->m_join.m_nToken != join->m_nToken)
            return Part(panel, {LinkReason::OtherCommands, pOther->m_join.m_strName}, now);
        Part(*pOther, {LinkReason::Replaced, ""}, now);
    }
    StopIfDue();
    Admit(panel, *join, frame.m_nSequence, now);
}

void CInstrumentHub::Admit(Panel& panel, const Join& join, std::uint32_t nSequence, LinkTime now) {
    panel.m_state = State::Joined;
    panel.m_nMessage = 0;
    panel.m_frameRate.Restart(now);
    panel.m_messageRate.Restart(now);
    panel.m_peer.GetOrder().Restart();
    panel.m_peer.TakeNumber(nSequence);
    panel.m_peer.GetQueue().DropWaiting();
    panel.m_peer.GetQueue().RestartNumbers();

    Hello hello = MakeHello();
    hello.m_bCommands = join.m_bCommand;
    hello.m_nAttempt = join.m_nAttempt;
    panel.m_peer.Send(FrameKind::Hello, FormHello(hello), now);
    m_port.OnNews(panel.Describe() + (join.m_bCommand ? " commands" : " views"));
    if (!std::exchange(m_bAnyJoined, true)) m_port.OnFirstJoined();
}

void CInstrumentHub::TakeMessage(Panel& panel, const Frame& frame, LinkTime now) {
    if (!panel.m_messageRate.Add(1, now)) return Part(panel, {LinkReason::Flood, ""}, now);
    const auto message = ReadMessage(frame.m_payload);
    if (!message || message->m_nNumber == 0 ||
        (message->m_nNumber != panel.m_nMessage && message->m_nNumber != panel.m_nMessage + 1))
        return Part(panel, {LinkReason::Malformed, ""}, now);
    if (message->m_nNumber != panel.m_nMessage) {
        panel.m_nMessage = message->m_nNumber;
        panel.m_result =
            panel.m_join.m_bCommand ? m_port.Execute(message->m_image) : AckResult::NotAllowed;
    }
    // What Execute has broadcast may have been too much for this panel.
    if (panel.IsJoined())
        panel.m_peer.Send(FrameKind::Ack, FormAck({message->m_nNumber, panel.m_result}), now);
}

void CInstrumentHub::OnTime(LinkTime now) {
    const CScope scope(*this);
    for (const auto& [id, pPanel] : m_panels) {
        if (pPanel->m_state == State::Gone) continue;
        pPanel->m_peer.GetReader().CheckStall(now);
        ReadFrames(*pPanel, now);
        KeepConnection(*pPanel, now);
    }
}

void CInstrumentHub::KeepConnection(Panel& panel, LinkTime now) {
    if (panel.IsJoined()) {
        if (panel.m_peer.IsSilent(now)) return Part(panel, {LinkReason::Silence, ""}, now);
        panel.m_peer.KeepAlive(now);
    } else if (panel.m_state == State::Unjoined && !panel.IsLine() &&
               now - panel.m_since >= JOIN_TIME) {
        Part(panel, {LinkReason::Silence, ""}, now);
    }
}

void CInstrumentHub::Broadcast(const PacketView& packet, std::uint16_t nFlags, LinkTime now) {
    const CScope scope(*this);
    const PacketMeaning meaning = FindMeaning(packet);
    if (meaning == PacketMeaning::Running || meaning == PacketMeaning::Idle)
        m_bRunning = meaning == PacketMeaning::Running;
    const auto spWhole = std::make_shared<const PayloadBytes>(FormPacket(packet));
    for (const auto& [id, pPanel] : m_panels) {
        if (!pPanel->IsJoined()) continue;
        const std::size_t nMost = pPanel->m_transport.m_nMaxFrame;
        constexpr std::size_t NO_VALUES = FRAME_HEAD + sizeof packet.m_nType + FRAME_TAIL;
        if (meaning != PacketMeaning::Samples || NO_VALUES + packet.m_payload.size() <= nMost) {
            SendPacket(*pPanel, nFlags, spWhole, now);
            continue;
        }
        const Hello& hello = m_settings.m_hello;
        const auto layout = FindValueLayout(hello.m_nMode, SecondInput{hello.m_nSecondInput});
        for (const PayloadBytes& part :
             SplitSamples(packet.m_payload, nMost - NO_VALUES, layout.GetSetSize()))
            SendPacket(*pPanel, nFlags,
                       std::make_shared<const PayloadBytes>(FormPacket({packet.m_nType, part})),
                       now);
    }
}

void CInstrumentHub::SendPacket(Panel& panel, std::uint16_t nFlags, const SharedBytes& spPayload,
                                LinkTime now) {
    if (!panel.IsJoined()) return;
    if (panel.m_peer.GetQueue().CountBytes() + spPayload->size() > MAX_QUEUED)
        return Part(panel, {LinkReason::NotKeepingUp, ""}, now);
    panel.m_peer.SendShared(FrameKind::Packet, nFlags, spPayload, now);
}

void CInstrumentHub::Finish(LinkTime now) {
    const CScope scope(*this);
    for (const auto& [id, pPanel] : m_panels) {
        if (pPanel->IsJoined())
            Part(*pPanel, {LinkReason::InstrumentEnds, ""}, now);
        else if (pPanel->m_state == State::Unjoined)
            Leave(*pPanel, LinkReason::InstrumentEnds, "", now);
    }
}

void CInstrumentHub::Part(Panel& panel, const Parting& why, LinkTime now) {
    const bool bJoined = panel.IsJoined();
    if (!bJoined) panel.m_peer.GetQueue().RestartNumbers();
    panel.m_peer.SendLast(bJoined ? FrameKind::Goodbye : FrameKind::Refuse, why, now);
    if (!bJoined)
        m_port.OnNews(panel.Describe() + " refused: " + DescribeParting(why).m_strEnglish);
    Leave(panel, why.m_reason, DescribeParting(why).m_strEnglish, now);
}

void CInstrumentHub::Leave(Panel& panel, LinkReason reason, const std::string& strWhy,
                           LinkTime now) {
    Retire(panel, strWhy);
    if (panel.IsLine()) {
        panel.m_state = State::Unjoined;
        if (reason == LinkReason::Flood) panel.m_deafUntil = now + DEAF_TIME;
    } else {
        panel.m_state = State::Gone;
        m_port.CloseConnection(panel.m_id, panel.m_peer.GetQueue().TakeRest());
    }
}

void CInstrumentHub::Retire(Panel& panel, const std::string& strWhy) {
    if (panel.IsJoined()) {
        m_port.OnNews(panel.Describe() + " gone: " + strWhy);
        m_bStopDue = m_bStopDue || (panel.m_join.m_bCommand && !m_settings.m_hello.m_bLocked);
    }
    panel.m_join = {};
}

void CInstrumentHub::StopIfDue() {
    if (std::exchange(m_bStopDue, false)) m_port.StopCapture();
}

CInstrumentHub::Panel* CInstrumentHub::FindCommander() {
    for (const auto& [id, pPanel] : m_panels)
        if (pPanel->IsJoined() && pPanel->m_join.m_bCommand) return pPanel.get();
    return nullptr;
}

std::size_t CInstrumentHub::CountViewers() const {
    return static_cast<std::size_t>(std::ranges::count_if(m_panels, [](const auto& panel) {
        return panel.second->IsJoined() && !panel.second->m_join.m_bCommand;
    }));
}

bool CInstrumentHub::IsJoined(PanelId id) const {
    const auto found = m_panels.find(id);
    return found != m_panels.end() && found->second->IsJoined();
}

Hello CInstrumentHub::MakeHello() const {
    Hello hello = m_settings.m_hello;
    hello.m_bCommands = false;
    hello.m_bRunning = m_bRunning;
    hello.m_nAttempt = 0;
    return hello;
}

CFrameQueue* CInstrumentHub::GetQueue(PanelId id) {
    const auto found = m_panels.find(id);
    return found == m_panels.end() ? nullptr : &found->second->m_peer.GetQueue();
}
