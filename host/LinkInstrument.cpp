#include "host/LinkInstrument.h"

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <utility>

#include "acquisition/PacketMeaning.h"
#include "instrument/InstrumentCommand.h"
#include "link/LineRate.h"
#include "platform/commandline/CommandLine.h"
#include "platform/system/Text.h"
#include "platform/windows/Dialog.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"

namespace {

ImageKind FindKind(std::string_view image) {
    const auto command = ReadCommand(image);
    if (!command) return ImageKind::Other;
    if (std::holds_alternative<CaptureRequest>(*command)) return ImageKind::Start;
    return std::holds_alternative<StopRequest>(*command) ? ImageKind::Stop : ImageKind::Other;
}

}  // namespace

CLinkInstrument::CLinkInstrument(CWnd& ui, const PanelLinkSettings& settings)
    : m_ui(ui), m_address(settings.m_address), m_link(settings, *this) {}

CLinkInstrument::~CLinkInstrument() {
    const auto [counts, nReconnections] = m_link.End();
    std::printf("link  frames %" PRIu64 ", lost %" PRIu64 ", old %" PRIu64 ", damaged %" PRIu64
                ", reconnections %u\n",
                counts.m_nFrames, counts.m_nLost, counts.m_nOld, counts.m_nDamages, nReconnections);
    std::fflush(stdout);
}

void CLinkInstrument::Send(std::string_view image) {
    const ImageKind kind = FindKind(image);
    if (kind == ImageKind::Start) {
        const std::lock_guard lock(m_mutex);
        m_strTrouble.clear();
    }
    m_link.Send(std::string(image), kind);
}

InstrumentState CLinkInstrument::GetState() const {
    const std::lock_guard lock(m_mutex);
    InstrumentState state;
    if (m_status.m_state != PanelState::Connected)
        state.m_activity = InstrumentActivity::Unreachable;
    else if (m_status.m_bRunning)
        state.m_activity = InstrumentActivity::Capturing;
    state.m_strText = FromUtf8(m_status.m_strName);
    return state;
}

LinkStatus CLinkInstrument::GetStatus() const {
    const std::lock_guard lock(m_mutex);
    return m_status;
}

std::optional<Hello> CLinkInstrument::GetHello() const {
    const std::lock_guard lock(m_mutex);
    return m_hello;
}

CLinkInstrument::Progress CLinkInstrument::GetProgress() const {
    const std::lock_guard lock(m_mutex);
    return m_progress;
}

std::string CLinkInstrument::FindTrouble() const {
    const std::lock_guard lock(m_mutex);
    return m_strTrouble;
}

void CLinkInstrument::AttachScreen(CDialog& screen, CRealTimeData& session,
                                   const CPacketSink& sink) {
    {
        const std::lock_guard lock(m_sinkMutex);
        for (auto& spPacket : std::exchange(m_awaiting, {})) sink(std::move(spPacket));
        m_sink.emplace(sink);
    }
    m_pScreen = &screen;
    m_pSession = &session;
    // What came before is due once the screen has its controls.
    if (m_nSampleSeconds > 0) m_ui.PostCall([this] { ApplySampleTime(); });
}

void CLinkInstrument::PushPacket(std::shared_ptr<RTPacket> spPacket) {
    Note(*spPacket);
    const std::lock_guard lock(m_sinkMutex);
    if (m_sink)
        (*m_sink)(std::move(spPacket));
    else
        m_awaiting.push_back(std::move(spPacket));
}

void CLinkInstrument::Note(const RTPacket& packet) {
    const PacketMeaning meaning = FindMeaning(packet.m_nType, GetPayload(packet));
    const std::lock_guard lock(m_mutex);
    if (meaning == PacketMeaning::Idle)
        m_progress = m_progress == Progress::None ? Progress::None : Progress::Over;
    else if (meaning != PacketMeaning::Samples && meaning != PacketMeaning::Other)
        m_progress = Progress::Running;
}

void CLinkInstrument::PushPacketBehindScreen(std::shared_ptr<RTPacket> spPacket) {
    m_ui.PostCall([this, spPacket] { PushPacket(spPacket); });
}

void CLinkInstrument::OnInstrumentKnown(const Hello& hello) {
    {
        const std::lock_guard lock(m_mutex);
        m_hello = hello;
    }
    CheckLine(hello);
}

void CLinkInstrument::SetRates(std::uint16_t nValueRate, std::uint16_t nAuxRate) {
    Hello hello;
    {
        const std::lock_guard lock(m_mutex);
        m_hello->m_nValueRate = nValueRate;
        m_hello->m_nAuxRate = nAuxRate;
        hello = *m_hello;
    }
    CheckLine(hello);
    m_ui.PostCall([this, nValueRate, nAuxRate] {
        if (!m_pSession) return;  // it will be made by the HELLO
        std::atomic_ref(m_pSession->m_nHostValueRate).store(nValueRate);
        std::atomic_ref(m_pSession->m_nHostAuxRate).store(nAuxRate);
    });
}

void CLinkInstrument::SetSampleTime(unsigned nSeconds) {
    m_ui.PostCall([this, nSeconds] {
        m_nSampleSeconds = nSeconds;
        if (m_pScreen) ApplySampleTime();
    });
}

void CLinkInstrument::ApplySampleTime() {
    if (m_nSampleSeconds == 0) return;
    m_pScreen->SetControlText(IDC_SAMPLE_TIME, std::to_wstring(m_nSampleSeconds));
    m_pScreen->UpdateData();
    m_nSampleSeconds = 0;
    m_link.OnSampleTimeSet();
}

void CLinkInstrument::OnStatus(const LinkStatus& status) {
    {
        const std::lock_guard lock(m_mutex);
        m_status = status;
        if (status.m_bCutShort || status.m_nLostInCapture > 0 || !status.m_notice.IsEmpty())
            m_strTrouble = DescribeStatus(status, GetAddress());
    }
    Log(status);
}

/// A number of lost packets that grows is said once a second.
void CLinkInstrument::Log(const LinkStatus& status) {
    const std::string strText = DescribeStatus(status, GetAddress());
    if (strText == m_strLogged) return;
    LinkStatus same = status;
    same.m_nLostInCapture = m_logged.m_nLostInCapture;
    const LinkTime now = std::chrono::steady_clock::now().time_since_epoch();
    if (m_logged.m_nLostInCapture > 0 && status.m_nLostInCapture > 0 && same == m_logged &&
        now - m_loggedAt < std::chrono::seconds(1))
        return;
    m_strLogged = strText;
    m_logged = status;
    m_loggedAt = now;
    std::fprintf(stderr, "link  %s\n", MakePrintable(strText).c_str());
}

void CLinkInstrument::CheckLine(const Hello& hello) {
    const std::string strShortage = DescribeShortage(m_address, hello);
    if (!strShortage.empty())
        std::fprintf(stderr, "link  %s\n", MakePrintable(strShortage).c_str());
}
