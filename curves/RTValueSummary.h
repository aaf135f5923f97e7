// Smallest and largest values of blocks of a curve, so that a question about a long stretch reads a
// few blocks instead of every value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "curves/BlockSummary.h"

/// Minimum and maximum of each block of 128 values, and of each group of 16 such blocks, apart for
/// even and odd indices. About 3.3 % of the memory of the values.
///
/// Thread safety: the curve's writer extends it before it publishes the count that covers the new
/// blocks; a reader may ask at the same time about any range below a count it has taken. Nothing is
/// locked: the count's release and acquire order the blocks as they order the values.
/// Invariants: a block is written once, when all of its values are there, and never changes; a
/// block that a count does not wholly cover is not read by whoever holds that count.
class RTValueSummary {
  public:
    /// Room for the blocks of a value array of nLength values, none of them filled.
    /// @throws std::bad_alloc
    explicit RTValueSummary(std::size_t nLength);

    /// Fills the blocks that the first nCount values have completed. The writer's thread only.
    void Extend(const std::int16_t* pValues, std::size_t nCount);

    /// The blocks that are not filled yet, for a writer that fills them itself and then tells how
    /// many are filled in all. The writer's thread only.
    RTBlockSummary* GetFreeBlocks() { return m_pBlocks.get() + m_nBlocks; }
    void TakeBlocks(std::size_t nBlocks) {
        const std::size_t nFirstGroup = m_nBlocks / GROUP_BLOCKS;
        m_nBlocks = nBlocks;
        if (nBlocks / GROUP_BLOCKS != nFirstGroup) ExtendGroups(nFirstGroup);
    }

    /// Smallest and largest of the values at nFirst, nFirst + 2, ... below nLast; the neutral range
    /// when there is no such value.
    RTMinMax Find(const std::int16_t* pValues, std::size_t nFirst, std::size_t nLast) const {
        RTMinMax range;
        const auto includeValues = [&](std::size_t nFrom, std::size_t nTo) {
            for (; nFrom < nTo; nFrom += 2) range.Include(pValues[nFrom]);
        };
        const std::size_t nParity = nFirst % 2;
        const auto includeAll = [&](const RTBlockSummary* pBlocks, std::size_t nFrom,
                                    std::size_t nTo) {
            for (; nFrom < nTo; ++nFrom) range.Include(pBlocks[nFrom][nParity]);
        };
        const std::size_t nBlock = (nFirst + RT_BLOCK_VALUES - 1) / RT_BLOCK_VALUES;
        const std::size_t nLastBlock = nLast / RT_BLOCK_VALUES;
        if (nBlock >= nLastBlock) {
            includeValues(nFirst, nLast);
            return range;
        }
        includeValues(nFirst, nBlock * RT_BLOCK_VALUES);
        includeValues(nLastBlock * RT_BLOCK_VALUES + nParity, nLast);

        const std::size_t nGroup = (nBlock + GROUP_BLOCKS - 1) / GROUP_BLOCKS;
        const std::size_t nLastGroup = nLastBlock / GROUP_BLOCKS;
        if (nGroup >= nLastGroup) {
            includeAll(m_pBlocks.get(), nBlock, nLastBlock);
            return range;
        }
        includeAll(m_pBlocks.get(), nBlock, nGroup * GROUP_BLOCKS);
        includeAll(m_pGroups.get(), nGroup, nLastGroup);
        includeAll(m_pBlocks.get(), nLastGroup * GROUP_BLOCKS, nLastBlock);
        return range;
    }

  private:
    static constexpr std::size_t GROUP_BLOCKS = 16;

    /// Fills the groups, from nFirst on, whose blocks are all filled.
    void ExtendGroups(std::size_t nFirst);

    std::unique_ptr<RTBlockSummary[]> m_pBlocks;
    std::unique_ptr<RTBlockSummary[]> m_pGroups;
    std::size_t m_nBlocks = 0;  ///< blocks filled so far; the writer's own
};
