#include "curves/RTValueSummary.h"

#include <cstring>

namespace {

constexpr std::size_t BLOCK_VALUES = 128;
constexpr std::size_t GROUP_BLOCKS = 16;

/// Eight values that one instruction compares with eight others. Even and odd indices stay apart by
/// themselves while the values are folded over a power of two.
using Lanes [[gnu::vector_size(16)]] = std::int16_t;
constexpr std::size_t LANE_COUNT = sizeof(Lanes) / sizeof(std::int16_t);

Lanes LoadLanes(const std::int16_t* pValues) {
    Lanes lanes;
    std::memcpy(&lanes, pValues, sizeof lanes);
    return lanes;
}

Lanes Smaller(Lanes a, Lanes b) { return a < b ? a : b; }
Lanes Larger(Lanes a, Lanes b) { return a > b ? a : b; }

/// The upper four lanes brought down to the lower four, and the third and fourth to the first two.
Lanes UpperHalf(Lanes v) { return __builtin_shufflevector(v, v, 4, 5, 6, 7, 4, 5, 6, 7); }
Lanes SecondPair(Lanes v) { return __builtin_shufflevector(v, v, 2, 3, 2, 3, 2, 3, 2, 3); }

std::array<RTMinMax, 2> SummariseBlock(const std::int16_t* pValues) {
    Lanes smallest = LoadLanes(pValues);
    Lanes largest = smallest;
    for (std::size_t nFrom = LANE_COUNT; nFrom < BLOCK_VALUES; nFrom += LANE_COUNT) {
        const Lanes lanes = LoadLanes(pValues + nFrom);
        smallest = Smaller(smallest, lanes);
        largest = Larger(largest, lanes);
    }
    smallest = Smaller(smallest, UpperHalf(smallest));
    largest = Larger(largest, UpperHalf(largest));
    smallest = Smaller(smallest, SecondPair(smallest));
    largest = Larger(largest, SecondPair(largest));
    return {RTMinMax{smallest[0], largest[0]}, RTMinMax{smallest[1], largest[1]}};
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
