#include "curves/RTPulse.h"

#include <new>

#include "platform/system/Exceptions.h"

/// The place of a chunk in its table, which is made when it is needed first.
std::unique_ptr<RTPulseList::Run[]>& RTPulseList::GetChunk(std::size_t nChunk) {
    if (nChunk == 0) return m_pFirstChunk;
    if (!m_pLaterChunks) m_pLaterChunks = std::make_unique<LaterChunks>();
    return (*m_pLaterChunks)[nChunk - 1];
}

void RTPulseList::Append(RTPulse pulse) {
    const std::uint32_t nCount = m_nCount.load(std::memory_order_relaxed);
    if (nCount == MAX_COUNT) throw CMemoryException();

    const std::uint32_t nRuns = m_nRuns.load(std::memory_order_relaxed);
    if (nRuns > 0 && RunAt(nRuns - 1).m_pulse == pulse) {
        m_nCount.store(nCount + 1, std::memory_order_release);
        return;
    }
    const Place place = FindPlace(nRuns);
    if (place.m_nOffset == 0) {
        try {
            GetChunk(place.m_nChunk) =
                std::make_unique_for_overwrite<Run[]>(GetChunkLength(place.m_nChunk));
        } catch (const std::bad_alloc&) {
            throw CMemoryException();
        }
    }
    GetChunk(place.m_nChunk)[place.m_nOffset] = {pulse, nCount};
    m_nRuns.store(nRuns + 1, std::memory_order_release);
    m_nCount.store(nCount + 1, std::memory_order_release);
}
