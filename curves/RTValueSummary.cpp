#include "curves/RTValueSummary.h"

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
    AppendBlocks(pValues + m_nBlocks * RT_BLOCK_VALUES, nCount / RT_BLOCK_VALUES - m_nBlocks);
}

void RTValueSummary::AppendBlocks(const void* pValues, std::size_t nBlocks, std::int16_t* pCopy) {
    if (nBlocks == 0) return;
    SummariseBlocks(pValues, nBlocks, &m_pBlocks[m_nBlocks], pCopy);
    const std::size_t nFirstGroup = m_nBlocks / GROUP_BLOCKS;
    m_nBlocks += nBlocks;
    for (std::size_t nGroup = nFirstGroup; nGroup < m_nBlocks / GROUP_BLOCKS; ++nGroup) {
        RTBlockSummary group;
        for (std::size_t nBlock = nGroup * GROUP_BLOCKS; nBlock < (nGroup + 1) * GROUP_BLOCKS;
             ++nBlock)
            for (std::size_t nParity = 0; nParity < 2; ++nParity)
                group[nParity].Include(m_pBlocks[nBlock][nParity]);
        m_pGroups[nGroup] = group;
    }
}
