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

std::size_t RTPulseList::FindRun(std::size_t nRuns, std::size_t nIndex) const {
    if (RunAt(nRuns - 1).m_nFirst <= nIndex) return nRuns - 1;
    std::size_t nFirst = 0;
    std::size_t nLast = nRuns - 1;  // begins behind the record
    while (nLast - nFirst > 1) {
        const std::size_t nMiddle = nFirst + (nLast - nFirst) / 2;
        (RunAt(nMiddle).m_nFirst <= nIndex ? nFirst : nLast) = nMiddle;
    }
    return nFirst;
}

std::size_t RTPulseList::FindPosition(std::size_t nCount, std::int64_t nPosition) const {
    std::size_t nFirst = 0;
    std::size_t nLength = nCount;
    while (nLength > 0) {
        const std::size_t nHalf = nLength / 2;
        if (At(nFirst + nHalf).m_nPosition < nPosition) {
            nFirst += nHalf + 1;
            nLength -= nHalf + 1;
        } else {
            nLength = nHalf;
        }
    }
    return nFirst;
}
