#include "link/FrameReader.h"

#include <algorithm>

namespace {

/// How often the length of overlapping damaged frames may be wasted on them before all are dropped.
constexpr std::uint64_t MAX_PASSES = 8;

bool BeginsWithSync(std::span<const std::uint8_t> bytes) {
    const auto nBytes = std::min(bytes.size(), FRAME_SYNC.size());
    return std::ranges::equal(bytes.first(nBytes), std::span(FRAME_SYNC).first(nBytes));
}

}  // namespace

void CFrameReader::Add(std::span<const std::uint8_t> bytes, LinkTime now) {
    m_buffer.erase(m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(m_nBegin));
    m_nBegin = 0;
    m_now = now;
    if (m_fault != Fault::None) return;
    if (m_buffer.empty()) m_progress = now;
    m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
}

std::optional<Frame> CFrameReader::Read() {
    while (m_fault == Fault::None) {
        if (m_nPosition >= m_nFar) {
            m_nOrigin = m_nFar = m_nPosition;
            m_nWasted = 0;
        }
        const auto held = GetHeld();
        if (!BeginsWithSync(held)) {
            const auto next = std::find(held.begin() + 1, held.end(), FRAME_SYNC[0]);
            Reject(Fault::Damaged, static_cast<std::size_t>(next - held.begin()));
            continue;
        }
        if (held.size() < FRAME_HEAD) return std::nullopt;
        if (!m_head) {
            m_nChecked += FRAME_CHECKED_HEAD;
            FrameHead head;
            if (!ReadHead(held, head)) {
                Reject(Fault::Damaged, 1);
                continue;
            }
            if (head.m_nVersion != LINK_VERSION || head.m_nPayload > m_nLimit) {
                Reject(Fault::Malformed, 1);
                continue;
            }
            m_head = head;
        }

        const std::size_t nFrame = FRAME_HEAD + m_head->m_nPayload + FRAME_TAIL;
        if (held.size() < nFrame) return std::nullopt;
        m_nChecked += nFrame;
        if (!CheckFrame(held.first(nFrame))) {
            RejectFrame(nFrame);
            continue;
        }
        Frame frame = m_head->m_frame;
        frame.m_payload = held.subspan(FRAME_HEAD, m_head->m_nPayload);
        Advance(nFrame);
        m_bInDamage = false;
        return frame;
    }
    return std::nullopt;
}

void CFrameReader::CheckStall(LinkTime now) {
    m_now = now;
    if (CountHeld() > 0 && now - m_progress >= STALL_TIME) Reject(Fault::Stalled, 1);
}

void CFrameReader::Advance(std::size_t nBytes) {
    m_nBegin += nBytes;
    m_nPosition += nBytes;
    m_progress = m_now;
    m_head.reset();
}

void CFrameReader::Drop(std::size_t nBytes) {
    if (!m_bInDamage) ++m_nDamages;
    m_bInDamage = true;
    m_nDropped += nBytes;
    Advance(nBytes);
}

void CFrameReader::Reject(Fault fault, std::size_t nBytes) {
    if (m_bLine) {
        Drop(nBytes);
    } else if (m_fault == Fault::None) {
        m_fault = fault;
        if (fault == Fault::Damaged) ++m_nDamages;
    }
}

void CFrameReader::RejectFrame(std::size_t nBytes) {
    m_nWasted += nBytes;
    m_nFar = std::max(m_nFar, m_nPosition + nBytes);
    const bool bWorn = m_nWasted > MAX_PASSES * (m_nFar - m_nOrigin);
    Reject(Fault::Damaged, bWorn ? static_cast<std::size_t>(m_nFar - m_nPosition) : 1);
}

std::optional<Frame> ReadWholeFrame(std::span<const std::uint8_t> bytes, std::size_t nLimit) {
    FrameHead head;
    if (bytes.size() < FRAME_HEAD + FRAME_TAIL || !BeginsWithSync(bytes) ||
        !ReadHead(bytes, head) || head.m_nVersion != LINK_VERSION || head.m_nPayload > nLimit ||
        bytes.size() != FRAME_HEAD + head.m_nPayload + FRAME_TAIL || !CheckFrame(bytes))
        return std::nullopt;
    Frame frame = head.m_frame;
    frame.m_payload = bytes.subspan(FRAME_HEAD, head.m_nPayload);
    return frame;
}
