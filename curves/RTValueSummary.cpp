#include "curves/RTValueSummary.h"

#include <algorithm>

namespace {

constexpr std::size_t BLOCK_VALUES = 128;
constexpr std::size_t GROUP_BLOCKS = 16;

/// Even and odd indices stay apart by themselves when the values are folded over a power of two;
/// plain minimum and maximum over a fixed number of lanes become vector instructions.
constexpr std::size_t LANES = 32;

std::array<RTMinMax, 2> SummariseBlock(const std::int16_t* pValues) {
    std::array<std::int16_t, LANES> anMin;
    std::array<std::int16_t, LANES> anMax;
    for (std::size_t nLane = 0; nLane < LANES; ++nLane)
        anMin[nLane] = anMax[nLane] = pValues[nLane];
    for (std::size_t nFrom = LANES; nFrom < BLOCK_VALUES; nFrom += LANES) {
        for (std::size_t nLane = 0; nLane < LANES; ++nLane) {
            anMin[nLane] = std::min(anMin[nLane], pValues[nFrom + nLane]);
            anMax[nLane] = std::max(anMax[nLane], pValues[nFrom + nLane]);
        }
    }
    for (std::size_t nLanes = LANES / 2; nLanes >= 2; nLanes /= 2) {
        for (std::size_t nLane = 0; nLane < nLanes; ++nLane) {
            anMin[nLane] = std::min(anMin[nLane], anMin[nLane + nLanes]);
            anMax[nLane] = std::max(anMax[nLane], anMax[nLane + nLanes]);
        }
    }
    return {RTMinMax{anMin[0], anMax[0]}, RTMinMax{anMin[1], anMax[1]}};
}

void IncludeValues(RTMinMax& range, const std::int16_t* pValues, std::size_t nFirst,
                   std::size_t nLast) {
    for (std::size_t nIndex = nFirst; nIndex < nLast; nIndex += 2) range.Include(pValues[nIndex]);
}

}  // namespace

RTValueSummary::RTValueSummary(std::size_t nLength)
    : m_pBlocks(std::make_unique_for_overwrite<Block[]>(nLength / BLOCK_VALUES)),
      m_pGroups(std::make_unique_for_overwrite<Block[]>(nLength / BLOCK_VALUES / GROUP_BLOCKS)) {}

void RTValueSummary::Extend(const std::int16_t* pValues, std::size_t nCount) {
    const std::size_t nBlocks = nCount / BLOCK_VALUES;
    for (; m_nBlocks < nBlocks; ++m_nBlocks) {
        m_pBlocks[m_nBlocks] = SummariseBlock(pValues + m_nBlocks * BLOCK_VALUES);
        if ((m_nBlocks + 1) % GROUP_BLOCKS != 0) continue;

        Block group;
        for (std::size_t nBlock = m_nBlocks + 1 - GROUP_BLOCKS; nBlock <= m_nBlocks; ++nBlock)
            for (std::size_t nParity = 0; nParity < 2; ++nParity)
                group[nParity].Include(m_pBlocks[nBlock][nParity]);
        m_pGroups[m_nBlocks / GROUP_BLOCKS] = group;
    }
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
    return (nBlocks + nBlocks / GROUP_BLOCKS) * sizeof(Block);
}
