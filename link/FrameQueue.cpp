#include "link/FrameQueue.h"

#include <iterator>
#include <utility>

void CFrameQueue::Add(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload) {
    m_waiting.push_back(MakeFrame(kind, nFlags, m_nNext++, std::move(spPayload)));
    m_nWaitingBytes += m_waiting.back().GetSize();
}

void CFrameQueue::DropWaiting() {
    m_waiting.clear();
    m_nWaitingBytes = 0;
}

std::vector<OutFrame> CFrameQueue::Take(std::size_t nBytes) {
    std::vector<OutFrame> frames;
    if (m_nTakenBytes > 0) return frames;
    while (!m_waiting.empty() &&
           (frames.empty() || m_nTakenBytes + m_waiting.front().GetSize() <= nBytes)) {
        const std::size_t nSize = m_waiting.front().GetSize();
        m_nTakenBytes += nSize;
        m_nWaitingBytes -= nSize;
        frames.push_back(std::move(m_waiting.front()));
        m_waiting.pop_front();
    }
    return frames;
}

std::vector<OutFrame> CFrameQueue::TakeRest() {
    std::vector<OutFrame> frames(std::move_iterator(m_waiting.begin()),
                                 std::move_iterator(m_waiting.end()));
    DropWaiting();
    return frames;
}
