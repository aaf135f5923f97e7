#include "link/PanelSession.h"

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr LinkTime OPEN_TIME = 2s;
constexpr LinkTime HELLO_TIME = 2s;
constexpr LinkTime JOIN_PAUSE = 1s;  ///< on a line
constexpr LinkTime PATIENT_PAUSE = 10s;
constexpr LinkTime LASTING = 5s;  ///< a connection that lasted so long was a good one
constexpr LinkTime FINISH_TIME = 500ms;
constexpr LinkTime NEVER = LinkTime::max();

constexpr std::uint64_t MAX_FRAMES = 2000;  ///< in a second, without packets of values

constexpr NumberedText UNSENT_VIEWING{3285, L"Nothing was sent: this panel views."};
constexpr NumberedText UNSENT_UNCONNECTED{3286, L"Nothing was sent: not connected."};
constexpr NumberedText UNSENT_TOO_MANY{3287, L"Nothing was sent: too many commands wait."};
constexpr NumberedText NO_ANSWER{3288, L"no answer"};

/// How long to wait after a reason; nothing: as after any failure.
std::optional<LinkTime> FindDelay(LinkReason reason) {
    switch (reason) {
    case LinkReason::Normal:
    case LinkReason::JoinFirst:
    case LinkReason::Malformed:
    case LinkReason::NotKeepingUp:
    case LinkReason::InstrumentEnds:
    case LinkReason::Silence:
    case LinkReason::Damaged:
        return std::nullopt;
    case LinkReason::OtherCommands:
    case LinkReason::TooMany:
        return 2s;
    case LinkReason::Replaced:
        return NEVER;
    default:
        return PATIENT_PAUSE;
    }
}

}  // namespace

CPanelSession::CPanelSession(PanelSettings settings, IPanelTransport& transport,
                             IPanelScreen& screen)
    : m_settings(std::move(settings)), m_transport(transport), m_screen(screen),
      m_peer(m_settings.m_manner, MAX_PAYLOAD_TO_PANEL), m_frameRate(1s, MAX_FRAMES),
      m_valueRate(5s, 0), m_spHeld(std::make_shared<std::atomic<std::size_t>>(0)) {}

void CPanelSession::Start(LinkTime now) {
    Connect(now);
    m_reported = m_status;
    m_screen.OnStatus(m_status);
}

void CPanelSession::Connect(LinkTime now) {
    m_status.m_state = PanelState::Connecting;
    m_since = now;
    m_bOpening = true;
    m_transport.OpenTransport();
}

void CPanelSession::OnOpened(LinkTime now) {
    if (!m_bOpening) return;
    m_bOpening = false;
    m_bOpen = true;
    m_peer.OnOpened(now);
    m_helloOrder.Restart();
    m_status.m_state = PanelState::Joining;
    m_since = now;
    SendJoin(now);
    Report();
}

void CPanelSession::OnTransportLost(const std::string& strWhy, bool bPatient, LinkTime now) {
    if (!m_bOpen && !m_bOpening) return;
    m_bOpen = m_bOpening = false;
    if (bPatient) m_status.m_bLost = false;
    Lose(DescribeTransportTrouble(strWhy), bPatient ? std::optional(PATIENT_PAUSE) : std::nullopt,
         now);
    Report();
}

void CPanelSession::SendJoin(LinkTime now) {
    m_bAsked = true;
    m_next = now + JOIN_PAUSE;
    if (IsSilent()) return;
    m_peer.GetQueue().DropWaiting();
    m_peer.GetQueue().RestartNumbers();
    m_peer.Send(FrameKind::Join,
                FormJoin({{LINK_VERSION, LINK_VERSION},
                          m_settings.m_bCommand,
                          m_settings.m_nToken,
                          ++m_nAttempt,
                          m_settings.m_strName}),
                now);
}

void CPanelSession::OnTime(LinkTime now) {
    if (m_bPaused && *m_spHeld < RESUME_HELD) {
        m_bPaused = false;
        m_peer.RestartWait(now);
    }
    if (m_bOpen && !m_bPaused) {
        m_peer.GetReader().CheckStall(now);
        ReadFrames(now);
    }
    switch (m_status.m_state) {
    case PanelState::Connecting:
        if (now - m_since >= OPEN_TIME) Lose(NO_ANSWER, std::nullopt, now);
        break;
    case PanelState::Joining:
        if (IsLine() ? now >= m_next : now - m_since >= HELLO_TIME)
            IsLine() ? SendJoin(now) : Lose(NO_ANSWER, std::nullopt, now);
        break;
    case PanelState::Connected:
        KeepConnection(now);
        break;
    case PanelState::Waiting:
        if (now >= m_next) Connect(now);
        break;
    default:
        break;
    }
    if (m_finish && (now >= *m_finish || m_sender.IsIdle() || !IsConnected())) {
        if (IsConnected() && !IsSilent())
            m_peer.SendLast(FrameKind::Goodbye, {LinkReason::Normal, ""}, now);
        EndFor(PanelState::Ended);
    }
    Report();
}

void CPanelSession::KeepConnection(LinkTime now) {
    if (!m_bPaused && m_peer.IsSilent(now)) return Part({LinkReason::Silence, ""}, true, now);
    if (m_sender.HasFailed(now))
        return Part({LinkReason::Silence, "a message was not answered"}, true, now);
    if (now - m_joinedAt >= LASTING) m_nFailures = 0;
    SendDue(now);
    if (!IsSilent()) m_peer.KeepAlive(now);
}

void CPanelSession::SendDue(LinkTime now) {
    if (auto payload = m_sender.TakeDue(now))
        m_peer.Send(FrameKind::Message, std::move(*payload), now);
}

void CPanelSession::Part(const Parting& why, bool bGoodbye, LinkTime now) {
    if (bGoodbye && !IsSilent())
        m_peer.SendLast(FrameKind::Goodbye, why, now);
    else
        m_peer.GetQueue().DropWaiting();
    const auto delay = FindDelay(why.m_reason);
    const bool bLost = IsConnected();
    Lose(DescribeParting(why), delay, now);
    // What the instrument says itself counts more than what was told before.
    if (!bLost) m_status.m_trouble = DescribeParting(why);
    m_status.m_bOtherCommands = why.m_reason == LinkReason::OtherCommands;
    m_status.m_strOtherPanel = m_status.m_bOtherCommands ? why.m_strText : "";
    m_status.m_bTriesAgain = delay != NEVER;
}

void CPanelSession::Lose(const LinkText& why, std::optional<LinkTime> delay, LinkTime now) {
    if (IsConnected()) {
        m_status.m_bLost = true;
        m_status.m_notice = {};
        m_status.m_trouble = why;
        m_lostAt = now;
    } else if (!m_status.m_bLost) {
        m_status.m_trouble = why;
    }
    m_status.m_bRefused = m_status.m_bOtherCommands = false;
    DropWork();
    m_bAsked = false;
    if (IsLine() && m_bOpen) {
        m_status.m_state = PanelState::Joining;
        // The last JOIN was a pause ago, or has that long to go.
        if (delay) m_next = *delay == NEVER ? NEVER : now + *delay;
    } else {
        EndTransport();
        m_status.m_state = PanelState::Waiting;
        m_next = delay == NEVER ? NEVER : now + delay.value_or(FindPause());
    }
    m_since = now;
}

LinkTime CPanelSession::FindPause() {
    const LinkTime pause = std::min<LinkTime>(100ms * (1 << std::min(m_nFailures, 3u)), 500ms);
    ++m_nFailures;
    return pause + std::chrono::duration_cast<LinkTime>(pause * 0.2 * m_settings.m_random());
}

/// No message goes to a later connection, and no capture is left open on the screen.
void CPanelSession::DropWork() {
    const bool bJustAsked = m_gate.HasUnansweredStart();
    m_sender.Restart();
    m_gate.ForgetStarts();
    if (!m_gate.IsRunning()) return;
    m_status.m_bCutShort = true;
    TellIdle(bJustAsked);
}

void CPanelSession::EndTransport() {
    if (!m_bOpen && !m_bOpening) return;
    m_bOpen = m_bOpening = false;
    m_bPaused = false;
    m_transport.CloseTransport(m_peer.GetQueue().TakeRest());
}

void CPanelSession::EndFor(PanelState state) {
    EndTransport();
    m_status.m_state = state;
    m_sender.Restart();
    m_finish.reset();
}

void CPanelSession::Finish(LinkTime now) {
    if (m_status.m_state == PanelState::Ended) return;
    m_finish = now + FINISH_TIME;
    OnTime(now);
}

void CPanelSession::Send(std::string_view image, ImageKind kind, LinkTime now) {
    m_status.m_notice = {};
    if (m_first && !m_first->m_bCommands) {
        if (kind != ImageKind::Stop) m_status.m_notice = UNSENT_VIEWING;
    } else if (!IsConnected()) {
        LeaveUnsent(kind, UNSENT_UNCONNECTED);
    } else if (!m_sender.Add(image, kind)) {
        LeaveUnsent(kind, UNSENT_TOO_MANY);
    } else {
        if (kind == ImageKind::Start) {
            m_gate.OnStartHanded();
            m_status.m_nLostInCapture = 0;
            m_status.m_away.reset();
        }
        SendDue(now);
    }
    Report();
}

void CPanelSession::LeaveUnsent(ImageKind kind, const LinkText& notice) {
    m_status.m_notice = notice;
    if (kind != ImageKind::Other) TellIdle(true);
}

void CPanelSession::TellIdle(bool bBehindScreen) {
    m_gate.OnIdlePushed();
    if (bBehindScreen)
        m_screen.PushPacketBehindScreen(MakeIdlePacket());
    else
        Deliver(MakeIdlePacket());
}

void CPanelSession::Deliver(std::shared_ptr<RTPacket> spPacket, unsigned nSampleSeconds) {
    if (m_behind.empty() && nSampleSeconds == 0) return m_screen.PushPacket(std::move(spPacket));
    m_behind.push_back({std::move(spPacket), nSampleSeconds});
    if (m_behind.size() == 1) m_screen.SetSampleTime(nSampleSeconds);
}

void CPanelSession::OnSampleTimeSet(LinkTime /*now*/) {
    while (!m_behind.empty()) {
        m_screen.PushPacket(std::move(m_behind.front().m_spPacket));
        m_behind.pop_front();
        if (!m_behind.empty() && m_behind.front().m_nSampleSeconds > 0)
            return m_screen.SetSampleTime(m_behind.front().m_nSampleSeconds);
    }
}

void CPanelSession::Report() {
    m_status.m_bRunning = m_gate.IsRunning();
    m_status.m_bAwaitsCurve = IsConnected() && m_gate.AwaitsCurve();
    if (m_status == m_reported) return;
    m_reported = m_status;
    m_screen.OnStatus(m_status);
}
