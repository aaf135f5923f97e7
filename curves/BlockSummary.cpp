#include "curves/BlockSummary.h"

#include <cstring>

namespace {

/// Eight values that one instruction compares with eight others. Even and odd indices stay apart by
/// themselves while the values are folded over a power of two.
using Lanes [[gnu::vector_size(16)]] = std::int16_t;
constexpr std::size_t LANE_COUNT = sizeof(Lanes) / sizeof(std::int16_t);

Lanes Smaller(Lanes a, Lanes b) { return a < b ? a : b; }
Lanes Larger(Lanes a, Lanes b) { return a > b ? a : b; }

/// Smallest and largest values, lane by lane.
struct Extremes {
    Lanes m_smallest;
    Lanes m_largest;
};

/// A block folded over the lanes of one register.
Extremes FoldBlock(const std::int16_t* pValues) {
    const auto load = [pValues](std::size_t nFrom) {
        Lanes lanes;
        std::memcpy(&lanes, pValues + nFrom, sizeof lanes);
        return lanes;
    };
    Extremes extremes{load(0), load(0)};
    for (std::size_t nFrom = LANE_COUNT; nFrom < RT_BLOCK_VALUES; nFrom += LANE_COUNT) {
        const Lanes lanes = load(nFrom);
        extremes.m_smallest = Smaller(extremes.m_smallest, lanes);
        extremes.m_largest = Larger(extremes.m_largest, lanes);
    }
    return extremes;
}

/// The lower and the upper four lanes of two, and of each four the first and the second pair.
Lanes LowerHalves(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
}
Lanes UpperHalves(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
}
Lanes FirstPairs(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 1, 4, 5, 8, 9, 12, 13);
}
Lanes SecondPairs(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 2, 3, 6, 7, 10, 11, 14, 15);
}

/// The halves of two, folded onto one another: four lanes of a, then four of b.
Extremes FoldHalves(const Extremes& a, const Extremes& b) {
    return {
        Smaller(LowerHalves(a.m_smallest, b.m_smallest), UpperHalves(a.m_smallest, b.m_smallest)),
        Larger(LowerHalves(a.m_largest, b.m_largest), UpperHalves(a.m_largest, b.m_largest))};
}

/// The pairs of two, folded onto one another: of each four lanes one pair, even and odd.
Extremes FoldPairs(const Extremes& a, const Extremes& b) {
    return {
        Smaller(FirstPairs(a.m_smallest, b.m_smallest), SecondPairs(a.m_smallest, b.m_smallest)),
        Larger(FirstPairs(a.m_largest, b.m_largest), SecondPairs(a.m_largest, b.m_largest))};
}

/// Stores the first lanes of a vector as summaries.
template <std::size_t COUNT>
void StoreSummaries(Lanes lanes, RTBlockSummary* pSummaries) {
    static_assert(sizeof(RTBlockSummary) == 4 * sizeof(std::int16_t));
    std::memcpy(static_cast<void*>(pSummaries), &lanes, COUNT * sizeof(RTBlockSummary));
}

}  // namespace

/// Blocks four at a time, whose lanes are folded together, and the rest one by one.
void SummariseBlocks(const std::int16_t* pValues, std::size_t nBlocks, RTBlockSummary* pSummaries) {
    const auto fold = [pValues](std::size_t nBlock) {
        return FoldBlock(pValues + nBlock * RT_BLOCK_VALUES);
    };
    std::size_t nBlock = 0;
    for (; nBlock + 4 <= nBlocks; nBlock += 4) {
        const auto [smallest, largest] = FoldPairs(FoldHalves(fold(nBlock), fold(nBlock + 1)),
                                                   FoldHalves(fold(nBlock + 2), fold(nBlock + 3)));
        StoreSummaries<2>(__builtin_shufflevector(smallest, largest, 0, 8, 1, 9, 2, 10, 3, 11),
                          pSummaries + nBlock);
        StoreSummaries<2>(__builtin_shufflevector(smallest, largest, 4, 12, 5, 13, 6, 14, 7, 15),
                          pSummaries + nBlock + 2);
    }
    for (; nBlock < nBlocks; ++nBlock) {
        const Extremes half = FoldHalves(fold(nBlock), fold(nBlock));
        const auto [smallest, largest] = FoldPairs(half, half);
        StoreSummaries<1>(__builtin_shufflevector(smallest, largest, 0, 8, 1, 9, 2, 10, 3, 11),
                          pSummaries + nBlock);
    }
}
