#include "acquisition/PacketReader.h"

#include <exception>

#include "acquisition/Capture.h"
#include "platform/system/Threads.h"

namespace {

constexpr unsigned IDLE_PAUSE_MS = 10;

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
    switch (FindMeaning(packet.m_nType, payload)) {
    case PacketMeaning::Samples:
        OnSamples(payload);
        break;
    case PacketMeaning::NewCurve:
        m_capture.BeginAnnouncedCurve();
        TraceDebug(L"New Curve");
        break;
    case PacketMeaning::CaptureStarted:
        OnCaptureStarted(payload);
        break;
    case PacketMeaning::Idle:
        m_capture.ReportIdle();
        ReturnToIdle();
        break;
    case PacketMeaning::Running:
    case PacketMeaning::Other:
        break;
    }
}

void CPacketReader::OnSamples(PacketPayload payload) {
    const auto outcome = m_capture.StoreSamples(payload);
    m_screen.RepaintPlot(outcome.m_nShownPlot);
    if (outcome.m_bCaptureEnded) ReturnToIdle();
}

void CPacketReader::OnCaptureStarted(PacketPayload payload) {
    const auto nPlot = m_capture.CaptureStarted(IsStartedContinuous(payload));
    if (nPlot) m_screen.RepaintPlot(*nPlot);
}

/// The data and its picture first: the commands that the idle controls offer work on them.
void CPacketReader::ReturnToIdle() {
    if (const auto nPlot = m_capture.FinishCapture()) m_screen.RepaintPlot(*nPlot);
    m_screen.ReturnToIdle();
}
