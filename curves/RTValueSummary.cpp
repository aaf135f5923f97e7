#include "curves/RTValueSummary.h"

#include <cstring>

namespace {

constexpr std::size_t BLOCK_VALUES = RT_BLOCK_VALUES;
constexpr std::size_t GROUP_BLOCKS = 16;
constexpr std::size_t VALUE_SIZE = sizeof(std::int16_t);
/// Fewer blocks than this are copied at once and read again: they are at hand still.
constexpr std::size_t FEW_BLOCKS = 4;

void IncludeValues(RTMinMax& range, const std::int16_t* pValues, std::size_t nFirst,
                   std::size_t nLast) {
    for (std::size_t nIndex = nFirst; nIndex < nLast; nIndex += 2) range.Include(pValues[nIndex]);
}

}  // namespace

RTValueSummary::RTValueSummary(std::size_t nLength)
    : m_pBlocks(std::make_unique_for_overwrite<RTBlockSummary[]>(nLength / BLOCK_VALUES)),
      m_pGroups(
          std::make_unique_for_overwrite<RTBlockSummary[]>(nLength / BLOCK_VALUES / GROUP_BLOCKS)) {
}

void RTValueSummary::Extend(const std::int16_t* pValues, std::size_t nCount) {
    const std::size_t nBlocks = nCount / BLOCK_VALUES;
    if (nBlocks == m_nBlocks) return;
    SummariseBlocks(pValues + m_nBlocks * BLOCK_VALUES, nBlocks - m_nBlocks, &m_pBlocks[m_nBlocks]);
    CompleteBlocks(nBlocks);
}

void RTValueSummary::Append(std::int16_t* pValues, std::size_t nCount, const std::uint8_t* pBytes,
                            std::size_t nValues) {
    const std::size_t nFirst = nCount % BLOCK_VALUES;
    if (nFirst + nValues < FEW_BLOCKS * BLOCK_VALUES) {
        std::memcpy(pValues + nCount, pBytes, nValues * VALUE_SIZE);
        Extend(pValues, nCount + nValues);
        return;
    }
    const std::size_t nHead = nFirst == 0 ? 0 : BLOCK_VALUES - nFirst;
    std::memcpy(pValues + nCount, pBytes, nHead * VALUE_SIZE);
    Extend(pValues, nCount + nHead);

    const std::size_t nBlocks = (nValues - nHead) / BLOCK_VALUES;
    CopyBlocks(pBytes + nHead * VALUE_SIZE, nBlocks, pValues + nCount + nHead,
               &m_pBlocks[m_nBlocks]);
    CompleteBlocks(m_nBlocks + nBlocks);

    const std::size_t nDone = nHead + nBlocks * BLOCK_VALUES;
    std::memcpy(pValues + nCount + nDone, pBytes + nDone * VALUE_SIZE,
                (nValues - nDone) * VALUE_SIZE);
}

/// Counts blocks that have been filled, and fills the groups that they complete.
void RTValueSummary::CompleteBlocks(std::size_t nBlocks) {
    for (std::size_t nGroup = m_nBlocks / GROUP_BLOCKS; nGroup < nBlocks / GROUP_BLOCKS; ++nGroup) {
        RTBlockSummary group;
        for (std::size_t nBlock = nGroup * GROUP_BLOCKS; nBlock < (nGroup + 1) * GROUP_BLOCKS;
             ++nBlock)
            for (std::size_t nParity = 0; nParity < 2; ++nParity)
                group[nParity].Include(m_pBlocks[nBlock][nParity]);
        m_pGroups[nGroup] = group;
    }
    m_nBlocks = nBlocks;
}

RTMinMax RTValueSummary::Find(const std::int16_t* pValues, std::size_t nFirst,
                              std::size_t nLast) const {
    RTMinMax range;
    const std::size_t nParity = nFirst % 2;
    std::size_t nBlock = (nFirst + BLOCK_VALUES - 1) / BLOCK_VALUES;
    const std::size_t nLastBlock = nLast / BLOCK_VALUES;
    if (nBlock >= nLastBlock) {
        IncludeValues(range, pValues, nFirst, nLast);
        return range;
    }
    IncludeValues(range, pValues, nFirst, nBlock * BLOCK_VALUES);
    IncludeValues(range, pValues, nLastBlock * BLOCK_VALUES + nParity, nLast);

    std::size_t nGroup = (nBlock + GROUP_BLOCKS - 1) / GROUP_BLOCKS;
    const std::size_t nLastGroup = nLastBlock / GROUP_BLOCKS;
    if (nGroup < nLastGroup) {
        while (nBlock < nGroup * GROUP_BLOCKS) range.Include(m_pBlocks[nBlock++][nParity]);
        while (nGroup < nLastGroup) range.Include(m_pGroups[nGroup++][nParity]);
        nBlock = nLastGroup * GROUP_BLOCKS;
    }
    while (nBlock < nLastBlock) range.Include(m_pBlocks[nBlock++][nParity]);
    return range;
}

std::size_t RTValueSummary::GetMemorySize(std::size_t nLength) {
    const std::size_t nBlocks = nLength / BLOCK_VALUES;
    return (nBlocks + nBlocks / GROUP_BLOCKS) * sizeof(RTBlockSummary);
}
