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

    /// Copies nValues values, as they stand in memory, behind the nCount values of an array that
    /// the summary has been extended over, and extends it over them. The writer's thread only.
    void Append(std::int16_t* pValues, std::size_t nCount, const std::uint8_t* pBytes,
                std::size_t nValues);

    /// Smallest and largest of the values at nFirst, nFirst + 2, ... below nLast; the neutral range
    /// when there is no such value.
    RTMinMax Find(const std::int16_t* pValues, std::size_t nFirst, std::size_t nLast) const;

    /// Bytes taken on behalf of a value array of nLength values.
    static std::size_t GetMemorySize(std::size_t nLength);

  private:
    void CompleteBlocks(std::size_t nBlocks);

    std::unique_ptr<RTBlockSummary[]> m_pBlocks;
    std::unique_ptr<RTBlockSummary[]> m_pGroups;
    std::size_t m_nBlocks = 0;  ///< blocks filled so far; the writer's own
};
