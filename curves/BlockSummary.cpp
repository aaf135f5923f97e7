#include "curves/BlockSummary.h"

#include <cstring>

namespace {

/// Values that one instruction compares with as many others. Even and odd indices stay apart by
/// themselves while the values are folded over a power of two.
using Lanes [[gnu::vector_size(32)]] = std::int16_t;
using HalfLanes [[gnu::vector_size(16)]] = std::int16_t;
constexpr std::size_t LANES_PER_BLOCK = RT_BLOCK_VALUES * sizeof(std::int16_t) / sizeof(Lanes);

HalfLanes Smaller(HalfLanes a, HalfLanes b) { return a < b ? a : b; }
HalfLanes Larger(HalfLanes a, HalfLanes b) { return a > b ? a : b; }

/// Sixteen lanes folded to the first two.
template <class Fold>
[[gnu::always_inline]] inline HalfLanes FoldToPair(const Lanes& lanes, Fold fold) {
    const HalfLanes lanes8 =
        fold(__builtin_shufflevector(lanes, lanes, 0, 1, 2, 3, 4, 5, 6, 7),
             __builtin_shufflevector(lanes, lanes, 8, 9, 10, 11, 12, 13, 14, 15));
    const HalfLanes lanes4 =
        fold(lanes8, __builtin_shufflevector(lanes8, lanes8, 4, 5, 6, 7, 4, 5, 6, 7));
    return fold(lanes4, __builtin_shufflevector(lanes4, lanes4, 2, 3, 2, 3, 2, 3, 2, 3));
}

template <bool COPY>
[[gnu::always_inline]] inline void Summarise(const void* pValues, std::size_t nBlocks,
                                             RTBlockSummary* pSummaries, std::int16_t* pCopy) {
    const auto* pFrom = static_cast<const std::uint8_t*>(pValues);
    auto* pTo = reinterpret_cast<std::uint8_t*>(pCopy);
    for (std::size_t nBlock = 0; nBlock < nBlocks; ++nBlock) {
        Lanes smallest;
        Lanes largest;
        for (std::size_t n = 0; n < LANES_PER_BLOCK; ++n, pFrom += sizeof(Lanes)) {
            Lanes lanes;
            std::memcpy(&lanes, pFrom, sizeof lanes);
            if constexpr (COPY) {
                std::memcpy(pTo, &lanes, sizeof lanes);
                pTo += sizeof lanes;
            }
            if (n == 0) smallest = largest = lanes;
            smallest = smallest < lanes ? smallest : lanes;
            largest = largest > lanes ? largest : lanes;
        }
        const HalfLanes summary = __builtin_shufflevector(
            FoldToPair(smallest, Smaller), FoldToPair(largest, Larger), 0, 8, 1, 9, 0, 8, 1, 9);
        std::memcpy(static_cast<void*>(pSummaries + nBlock), &summary, sizeof(RTBlockSummary));
    }
}

[[gnu::always_inline]] inline void SummariseOrCopy(const void* pValues, std::size_t nBlocks,
                                                   RTBlockSummary* pSummaries,
                                                   std::int16_t* pCopy) {
    if (pCopy)
        Summarise<true>(pValues, nBlocks, pSummaries, pCopy);
    else
        Summarise<false>(pValues, nBlocks, pSummaries, pCopy);
}

#ifdef __x86_64__
/// For processors with registers as long as Lanes: twice as fast.
[[gnu::target("avx2")]] void SummariseWide(const void* pValues, std::size_t nBlocks,
                                           RTBlockSummary* pSummaries, std::int16_t* pCopy) {
    SummariseOrCopy(pValues, nBlocks, pSummaries, pCopy);
}
#endif

}  // namespace

void SummariseBlocks(const void* pValues, std::size_t nBlocks, RTBlockSummary* pSummaries,
                     std::int16_t* pCopy) {
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2")) {
        SummariseWide(pValues, nBlocks, pSummaries, pCopy);
        return;
    }
#endif
    SummariseOrCopy(pValues, nBlocks, pSummaries, pCopy);
}
