#include "link/LinkPeer.h"

#include <utility>

void CLinkPeer::OnOpened(LinkTime now) {
    TakeNewDamages();
    m_reader.emplace(m_manner, m_nLimit);
    m_nDamagesSeen = 0;
    m_order.Restart();
    m_queue = {};
    m_bGoodFrame = false;
    m_heard = m_sent = now;
}

void CLinkPeer::Send(FrameKind kind, PayloadBytes payload, LinkTime now) {
    SharedBytes spPayload;
    if (!payload.empty())
        spPayload = std::make_shared<const std::vector<std::uint8_t>>(std::move(payload));
    SendShared(kind, 0, std::move(spPayload), now);
}

void CLinkPeer::SendShared(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload,
                           LinkTime now) {
    m_queue.Add(kind, nFlags, std::move(spPayload));
    m_sent = now;
}

void CLinkPeer::SendLast(FrameKind kind, const Parting& parting, LinkTime now) {
    m_queue.DropWaiting();
    Send(kind, FormParting(parting), now);
}

void CLinkPeer::OnFrame(LinkTime now) {
    m_heard = now;
    m_bGoodFrame = true;
    ++m_counts.m_nFrames;
}

std::optional<std::uint32_t> CLinkPeer::TakeNumber(std::uint32_t nSequence) {
    const auto nMissing = m_order.Take(nSequence);
    if (nMissing)
        m_counts.m_nLost += *nMissing;
    else
        ++m_counts.m_nOld;
    return nMissing;
}

void CLinkPeer::KeepAlive(LinkTime now) {
    if (now - m_sent >= KEEPALIVE_TIME && m_queue.IsEmpty()) Send(FrameKind::KeepAlive, {}, now);
}

void CLinkPeer::RestartWait(LinkTime now) {
    m_heard = now;
    m_reader->RestartWait(now);
}

std::uint64_t CLinkPeer::TakeNewDamages() {
    const std::uint64_t nDamages = m_reader->CountDamages();
    const std::uint64_t nNew = nDamages - std::exchange(m_nDamagesSeen, nDamages);
    m_counts.m_nDamages += nNew;
    return nNew;
}
