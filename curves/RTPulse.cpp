#include "curves/RTPulse.h"

#include <new>

#include "platform/system/Exceptions.h"

void RTPulseList::Append(RTPulse pulse) {
    const std::size_t nCount = m_nCount.load(std::memory_order_relaxed);
    if (nCount == MAX_COUNT) throw CMemoryException();

    const std::size_t nRuns = m_nRuns.load(std::memory_order_relaxed);
    if (nRuns > 0 && RunAt(nRuns - 1).m_pulse == pulse) {
        m_nCount.store(nCount + 1, std::memory_order_release);
        return;
    }
    const Place place = FindPlace(nRuns);
    std::unique_ptr<Run[]>& pChunk = m_apChunks[place.m_nChunk];
    if (!pChunk) {
        try {
            pChunk = std::make_unique_for_overwrite<Run[]>(GetChunkLength(place.m_nChunk));
        } catch (const std::bad_alloc&) {
            throw CMemoryException();
        }
    }
    pChunk[place.m_nOffset] = {pulse, static_cast<std::uint32_t>(nCount)};
    m_nRuns.store(nRuns + 1, std::memory_order_release);
    m_nCount.store(nCount + 1, std::memory_order_release);
}
