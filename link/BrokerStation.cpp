#include "link/BrokerStation.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "link/LinkThread.h"

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds RETRY_TIME{500};
constexpr std::chrono::milliseconds PATIENT_TIME{10'000};
constexpr std::chrono::milliseconds FINISH_TIME{500};

/// The will is written when the connection begins, and its number has to lie ahead of all that are
/// published until it is needed.
constexpr std::uint32_t WILL_AHEAD = 0x40000000;

std::string FormatToken(std::uint32_t nToken) {
    char szToken[16];
    std::snprintf(szToken, sizeof szToken, "%08x", nToken);
    return szToken;
}

bool IsToken(std::string_view str) {
    return str.size() == 8 && str.find_first_not_of("0123456789abcdef") == str.npos;
}

SharedBytes Share(PayloadBytes bytes) {
    return std::make_shared<const PayloadBytes>(std::move(bytes));
}

SharedBytes FormGoodbye() { return Share(FormParting({LinkReason::InstrumentEnds, ""})); }

FrameKind GetKind(const OutFrame& frame) { return FrameKind{frame.m_head[5]}; }

}  // namespace

CBrokerStation::CBrokerStation(asio::io_context& context, CInstrumentHub& hub,
                               BrokerSettings settings,
                               std::function<void(const std::string& strLine)> onNews)
    : m_context(context), m_hub(hub), m_settings(std::move(settings)), m_onNews(std::move(onNews)),
      m_strTopic(m_settings.m_address.m_strTopic + "/"), m_timer(context) {}

void CBrokerStation::Start() { Open(); }

BrokerSettings CBrokerStation::MakeSettings() const {
    BrokerSettings settings = m_settings;
    settings.m_subscriptions = {{m_strTopic + "up/+", BrokerCare::Once}};
    settings.m_will = MakeMessage(
        "hello", MakeFrame(FrameKind::Goodbye, 0, m_nHelloNumber + WILL_AHEAD, FormGoodbye()));
    settings.m_will->m_care = BrokerCare::Once;
    settings.m_will->m_bRetained = true;
    return settings;
}

BrokerMessage CBrokerStation::MakeMessage(const std::string& strTopic,
                                          const OutFrame& frame) const {
    BrokerMessage message;
    message.m_strTopic = m_strTopic + strTopic;
    frame.AppendTo(message.m_bytes);
    return message;
}

void CBrokerStation::Open() {
    BrokerEvents events;
    events.m_onOpened = [this] { OnConnected(); };
    events.m_onMessage = [this](const std::string& strTopic, std::span<const std::uint8_t> bytes) {
        OnMessage(strTopic, bytes);
    };
    events.m_onSent = [] {};
    events.m_onLost = [this](const std::string& strWhy, bool bPatient) {
        OnLost(strWhy, bPatient);
    };
    m_pClient = std::make_unique<CBrokerClient>(m_context, MakeSettings(), std::move(events));
}

void CBrokerStation::OnConnected() {
    m_bConnected = true;
    m_bTold = false;
    m_onNews(m_settings.m_address.m_strText + ": connected");
    m_hello.reset();
    SendAll();
}

void CBrokerStation::OnLost(const std::string& strWhy, bool bPatient) {
    m_bConnected = false;
    if (!std::exchange(m_bTold, true))
        m_onNews(m_settings.m_address.m_strText + ": " + strWhy + "; trying again");
    for (const auto& [strToken, writer] : std::exchange(m_writers, {}))
        m_hub.OnClosed(writer.m_id, strWhy);
    m_timer.expires_after(bPatient ? PATIENT_TIME : RETRY_TIME);
    m_timer.async_wait([this](const asio::error_code& cancelled) {
        if (!cancelled) Open();
    });
}

void CBrokerStation::OnMessage(const std::string& strTopic, std::span<const std::uint8_t> bytes) {
    const std::string strUp = m_strTopic + "up/";
    if (!strTopic.starts_with(strUp)) return;
    const std::string strToken = strTopic.substr(strUp.size());
    const auto frame = ReadWholeFrame(bytes, MAX_PAYLOAD_TO_INSTRUMENT);
    if (!IsToken(strToken) || !frame) return;
    if (frame->m_kind == FrameKind::Join) {
        const auto join = ReadJoin(frame->m_payload);
        // A topic is its panel's own.
        if (join && FormatToken(join->m_nToken) != strToken) return;
        if (join && !join->m_bCommand && join->m_versions.m_nLowest <= LINK_VERSION)
            return Welcome(strToken, *join);
    }
    m_hub.OnBytes(FindWriter(strToken).m_id, bytes, CLinkThread::Now());
    SendAll();
}

/// Who views needs no place: it gets what all get.
void CBrokerStation::Welcome(const std::string& strToken, const Join& join) {
    Hello hello = m_hub.MakeHello();
    hello.m_nAttempt = join.m_nAttempt;
    Publish("down/" + strToken, MakeFrame(FrameKind::Hello, 0, 0, Share(FormHello(hello))),
            BrokerCare::Once);
}

CBrokerStation::Writer& CBrokerStation::FindWriter(const std::string& strToken) {
    const auto found = m_writers.find(strToken);
    if (found != m_writers.end()) return found->second;
    if (m_writers.size() >= MAX_PANELS) {
        // One that has not joined gives its place up: at most one has.
        const auto oldest = std::ranges::min_element(m_writers, {}, [&](const auto& writer) {
            return std::pair(m_hub.IsJoined(writer.second.m_id), writer.second.m_id);
        });
        m_hub.OnClosed(oldest->second.m_id, "");
        m_writers.erase(oldest);
    }
    Writer& writer = m_writers[strToken];
    writer.m_id =
        m_hub.OnOpened({LinkManner::Line, m_settings.m_address.m_strText}, CLinkThread::Now());
    return writer;
}

void CBrokerStation::Send(const PacketView& packet, std::uint16_t nFlags) {
    PublishOnPackets(FrameKind::Packet, nFlags, Share(FormPacket(packet)));
}

void CBrokerStation::SendAll() {
    if (!m_bConnected) return;
    for (auto& [strToken, writer] : m_writers) SendTo(strToken, writer);
    PublishHello();
}

void CBrokerStation::SendTo(const std::string& strToken, Writer& writer) {
    CFrameQueue* const pQueue = m_hub.GetQueue(writer.m_id);
    for (const OutFrame& frame : pQueue->Take(SIZE_MAX)) {
        const FrameKind kind = GetKind(frame);
        // Packets, and that there are none, everybody gets.
        if (kind == FrameKind::Packet || kind == FrameKind::KeepAlive) continue;
        if (kind == FrameKind::Ack) {
            PublishOnPackets(kind, 0, frame.m_spPayload);
            continue;
        }
        if (kind != FrameKind::Goodbye) writer.m_nNext = 0;
        Publish("down/" + strToken, MakeFrame(kind, 0, writer.m_nNext++, frame.m_spPayload),
                BrokerCare::Once);
    }
    pQueue->OnSent();
}

void CBrokerStation::PublishHello() {
    const Hello hello = m_hub.MakeHello();
    if (m_hello == hello) return;
    m_hello = hello;
    Publish("hello", MakeFrame(FrameKind::Hello, 0, m_nHelloNumber++, Share(FormHello(hello))),
            BrokerCare::Once, true);
}

void CBrokerStation::PublishOnPackets(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload) {
    // The number is used up whether or not the frame goes.
    const OutFrame frame = MakeFrame(kind, nFlags, m_nPacketsNumber++, std::move(spPayload));
    if (!m_bConnected || m_pClient->CountUnsent() + frame.GetSize() > MAX_UNSENT) return;
    m_published = CLinkThread::Now();
    Publish("packets", frame, BrokerCare::None);
}

void CBrokerStation::Publish(const std::string& strTopic, const OutFrame& frame, BrokerCare care,
                             bool bRetained) {
    BrokerMessage message = MakeMessage(strTopic, frame);
    message.m_care = care;
    message.m_bRetained = bRetained;
    m_pClient->Publish(message);
}

void CBrokerStation::OnTime(LinkTime now) {
    if (now - m_published >= CLinkPeer::KEEPALIVE_TIME)
        PublishOnPackets(FrameKind::KeepAlive, 0, nullptr);
    SendAll();
}

void CBrokerStation::Finish() {
    m_timer.cancel();
    if (!m_pClient) return;
    if (std::exchange(m_bConnected, false)) {
        for (auto& [strToken, writer] : m_writers) SendTo(strToken, writer);
        Publish("hello", MakeFrame(FrameKind::Goodbye, 0, m_nHelloNumber++, FormGoodbye()),
                BrokerCare::Once, true);
    }
    m_pClient->Close().wait_for(FINISH_TIME);
    m_pClient.reset();
}
