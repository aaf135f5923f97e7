#include "curves/RTValueSummary.h"

#include <cstring>

namespace {

/// Short curves have none; they do not pay for an array without elements.
std::unique_ptr<RTBlockSummary[]> Allocate(std::size_t nLength) {
    return nLength ? std::make_unique_for_overwrite<RTBlockSummary[]>(nLength) : nullptr;
}

}  // namespace

RTValueSummary::RTValueSummary(std::size_t nLength)
    : m_pBlocks(Allocate(nLength / RT_BLOCK_VALUES)),
      m_pGroups(Allocate(nLength / RT_BLOCK_VALUES / GROUP_BLOCKS)) {}

void RTValueSummary::Extend(const std::int16_t* pValues, std::size_t nCount) {
    const std::size_t nBlocks = nCount / RT_BLOCK_VALUES;
    SummariseBlocks(pValues + m_nBlocks * RT_BLOCK_VALUES, nBlocks - m_nBlocks, GetFreeBlocks());
    TakeBlocks(nBlocks);
}

void RTValueSummary::ExtendGroups(std::size_t nFirst) {
    using Fields [[gnu::vector_size(sizeof(RTBlockSummary))]] = std::int16_t;
    for (std::size_t nGroup = nFirst; nGroup < m_nBlocks / GROUP_BLOCKS; ++nGroup) {
        const RTBlockSummary* pBlock = &m_pBlocks[nGroup * GROUP_BLOCKS];
        Fields smallest = Fields{} + INT16_MAX;
        Fields largest = Fields{} + INT16_MIN;
        for (std::size_t n = 0; n < GROUP_BLOCKS; ++n) {
            Fields fields;
            std::memcpy(&fields, pBlock + n, sizeof fields);
            smallest = smallest < fields ? smallest : fields;
            largest = largest > fields ? largest : fields;
        }
        const Fields group = __builtin_shufflevector(smallest, largest, 0, 5, 2, 7);
        std::memcpy(static_cast<void*>(&m_pGroups[nGroup]), &group, sizeof group);
    }
}
