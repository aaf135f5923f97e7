#include "link/ScreenGate.h"

#include <utility>

void CScreenGate::OnConnected() {
    m_bOpen = false;
    m_bAwaitsCurve = false;
}

void CScreenGate::OnStartHanded() {
    m_bRunning = true;
    m_bOpen = false;
    m_bAwaitsCurve = false;
    ++m_nUnanswered;
    m_nKeptOut = 0;
}

std::uint64_t CScreenGate::OnStartAnswered(bool bTaken, bool bSentAgain) {
    if (m_nUnanswered > 0) --m_nUnanswered;
    if (!bTaken || m_nUnanswered > 0) return 0;
    m_bOpen = true;
    return bSentAgain ? std::exchange(m_nKeptOut, 0) : 0;
}

bool CScreenGate::Passes(const PacketView& packet) {
    const PacketMeaning meaning = FindMeaning(packet);
    if (m_nUnanswered > 0 && IsOfCapture(packet.m_nType)) {
        if (meaning == PacketMeaning::Samples) ++m_nKeptOut;
        return false;
    }
    switch (meaning) {
    case PacketMeaning::NewCurve:
    case PacketMeaning::CaptureStarted:
    case PacketMeaning::Running:
        m_bOpen = true;
        m_bRunning = true;
        m_bAwaitsCurve = false;
        return true;
    case PacketMeaning::Idle:
        m_bRunning = false;
        m_bAwaitsCurve = false;
        return true;
    case PacketMeaning::Samples:
        m_bAwaitsCurve = !m_bOpen;
        return m_bOpen;
    default:
        return true;
    }
}
