// Forming the summary of a block in vector registers, of those who fill blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "curves/BlockSummary.h"

/// Values that one instruction compares with as many others. Even and odd indices stay apart by
/// themselves while the values are folded over a power of two.
using RTLanes [[gnu::vector_size(32)]] = std::int16_t;
constexpr std::size_t RT_LANE_VALUES = sizeof(RTLanes) / sizeof(std::int16_t);
constexpr std::size_t RT_BLOCK_LANES = RT_BLOCK_VALUES / RT_LANE_VALUES;

/// The smallest and largest values of what is included. Everything is inlined, so that it is
/// compiled for the processor that its caller is compiled for.
class CBlockFold {
  public:
    [[gnu::always_inline]] void Include(const RTLanes& lanes) {
        m_smallest = m_smallest < lanes ? m_smallest : lanes;
        m_largest = m_largest > lanes ? m_largest : lanes;
    }

    /// All the values of a block.
    [[gnu::always_inline]] void IncludeBlock(const std::int16_t* pValues) {
        for (std::size_t n = 0; n < RT_BLOCK_LANES; ++n) {
            RTLanes lanes;
            std::memcpy(&lanes, pValues + n * RT_LANE_VALUES, sizeof lanes);
            Include(lanes);
        }
    }

    [[gnu::always_inline]] void Store(RTBlockSummary* pSummary) const {
        const auto smaller = [](Half a, Half b) { return a < b ? a : b; };
        const auto larger = [](Half a, Half b) { return a > b ? a : b; };
        const Half summary = __builtin_shufflevector(
            FoldToPair(m_smallest, smaller), FoldToPair(m_largest, larger), 0, 8, 1, 9, 0, 8, 1, 9);
        std::memcpy(static_cast<void*>(pSummary), &summary, sizeof *pSummary);
    }

  private:
    using Half [[gnu::vector_size(16)]] = std::int16_t;

    /// Sixteen lanes folded to the first two.
    template <class Fold>
    [[gnu::always_inline]] static Half FoldToPair(const RTLanes& lanes, Fold fold) {
        const Half lanes8 =
            fold(__builtin_shufflevector(lanes, lanes, 0, 1, 2, 3, 4, 5, 6, 7),
                 __builtin_shufflevector(lanes, lanes, 8, 9, 10, 11, 12, 13, 14, 15));
        const Half lanes4 =
            fold(lanes8, __builtin_shufflevector(lanes8, lanes8, 4, 5, 6, 7, 4, 5, 6, 7));
        return fold(lanes4, __builtin_shufflevector(lanes4, lanes4, 2, 3, 2, 3, 2, 3, 2, 3));
    }

    RTLanes m_smallest = RTLanes{} + INT16_MAX;
    RTLanes m_largest = RTLanes{} + INT16_MIN;
};
