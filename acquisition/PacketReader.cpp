#include "acquisition/PacketReader.h"

#include <exception>

#include "acquisition/Capture.h"
#include "platform/system/Threads.h"

namespace {

constexpr unsigned IDLE_PAUSE_MS = 10;

/// First payload byte of an event packet that announces a new curve.
constexpr std::uint8_t NEW_CURVE_MARK = 'P';

/// Payload bytes of control packets.
constexpr std::size_t STATUS_RUNNING_STATE = 3;
constexpr std::size_t STARTED_CONTINUOUS = 5;

std::span<const std::uint8_t> GetPayload(const RTPacket& packet) {
    if (packet.m_pData == nullptr || packet.m_nLength <= 0) return {};
    return {packet.m_pData, static_cast<std::size_t>(packet.m_nLength)};
}

}  // namespace

void CPacketReader::Run() {
    if (m_session.m_bStopReader != 0) return;
    std::shared_ptr<RTPacket> spPacket;
    do {
        DrainQueue(spPacket);
        if (m_bLeave) return;
        SleepMilliseconds(IDLE_PAUSE_MS);
    } while (m_session.m_bStopReader == 0);
}

void CPacketReader::DrainQueue(std::shared_ptr<RTPacket>& spPacket) {
    while (!m_bLeave) {
        // The host may take its queue away at any time.
        RTPacketQueue* pQueue =
            std::atomic_ref(m_session.m_pPacketQueue).load(std::memory_order_acquire);
        if (pQueue == nullptr || !pQueue->try_pop(spPacket)) return;
        if (spPacket == nullptr) continue;
        try {
            HandlePacket(*spPacket);
        } catch (const std::exception&) {
            TraceDebug(L"Packet dropped: no memory to store it");
        }
    }
}

void CPacketReader::HandlePacket(const RTPacket& packet) {
    const auto payload = GetPayload(packet);
    switch (packet.m_nType) {
    case RTPACKET_SAMPLES:
        OnSamples(payload);
        break;
    case RTPACKET_NEW_CURVE:
        OnNewCurve(payload);
        break;
    case RTPACKET_CONTROL:
        OnControl(payload);
        break;
    default:
        break;
    }
}

void CPacketReader::OnSamples(std::span<const std::uint8_t> payload) {
    const auto outcome = m_capture.StoreSamples(payload);
    m_screen.RepaintPlot(outcome.m_nShownPlot);
    if (outcome.m_bCaptureEnded) ReturnToIdle();
}

void CPacketReader::OnNewCurve(std::span<const std::uint8_t> payload) {
    if (payload.empty() || payload[0] != NEW_CURVE_MARK) return;
    m_capture.BeginAnnouncedCurve();
    TraceDebug(L"New Curve");
}

void CPacketReader::OnControl(std::span<const std::uint8_t> payload) {
    if (payload.empty()) return;
    if (payload[0] == RTCMD_STATUS && payload.size() > STATUS_RUNNING_STATE) {
        if (payload[STATUS_RUNNING_STATE] != 0) return;
        m_capture.ReportIdle();
        ReturnToIdle();
    } else if (payload[0] == RTCMD_CAPTURE && payload.size() > STARTED_CONTINUOUS) {
        const auto nPlot = m_capture.CaptureStarted(payload[STARTED_CONTINUOUS] != 0);
        if (nPlot) m_screen.RepaintPlot(*nPlot);
    }
}

/// The data and its picture first: the commands that the idle controls offer work on them.
void CPacketReader::ReturnToIdle() {
    if (const auto nPlot = m_capture.FinishCapture()) m_screen.RepaintPlot(*nPlot);
    m_screen.ReturnToIdle();
}
