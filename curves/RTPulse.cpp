#include "curves/RTPulse.h"

#include <new>

#include "platform/Exceptions.h"

void RTPulseList::Append(RTPulse pulse) {
    const std::size_t nCount = m_nCount.load(std::memory_order_relaxed);
    if (nCount == MAX_COUNT) throw CMemoryException();

    const Place place = FindPlace(nCount);
    std::unique_ptr<RTPulse[]>& pChunk = m_apChunks[place.nChunk];
    if (!pChunk) {
        try {
            pChunk = std::make_unique_for_overwrite<RTPulse[]>(GetChunkLength(place.nChunk));
        } catch (const std::bad_alloc&) {
            throw CMemoryException();
        }
    }
    pChunk[place.nOffset] = pulse;
    m_nCount.store(nCount + 1, std::memory_order_release);
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
