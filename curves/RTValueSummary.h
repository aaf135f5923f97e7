// Smallest and largest values of blocks of a curve, so that a question about a long stretch reads a
// few blocks instead of every value.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

struct RTMinMax {
    std::int16_t m_nMin = INT16_MAX;
    std::int16_t m_nMax = INT16_MIN;

    void Include(std::int16_t nValue) {
        if (nValue < m_nMin) m_nMin = nValue;
        if (nValue > m_nMax) m_nMax = nValue;
    }
    void Include(const RTMinMax& other) {
        if (other.m_nMin < m_nMin) m_nMin = other.m_nMin;
        if (other.m_nMax > m_nMax) m_nMax = other.m_nMax;
    }
    friend bool operator==(const RTMinMax&, const RTMinMax&) = default;
};

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

    /// Smallest and largest of the values at nFirst, nFirst + 2, ... below nLast; the neutral range
    /// when there is no such value.
    RTMinMax Find(const std::int16_t* pValues, std::size_t nFirst, std::size_t nLast) const;

    /// Bytes taken on behalf of a value array of nLength values.
    static std::size_t GetMemorySize(std::size_t nLength);

  private:
    using Block = std::array<RTMinMax, 2>;  ///< by parity of the index

    std::unique_ptr<Block[]> m_pBlocks;
    std::unique_ptr<Block[]> m_pGroups;
    std::size_t m_nBlocks = 0;  ///< blocks filled so far; the writer's own
};
