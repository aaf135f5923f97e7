#include "curves/BlockSummary.h"

#include "curves/BlockFold.h"

namespace {

[[gnu::always_inline]] inline void Summarise(const std::int16_t* pValues, std::size_t nBlocks,
                                             RTBlockSummary* pSummaries) {
    for (std::size_t nBlock = 0; nBlock < nBlocks; ++nBlock) {
        CBlockFold fold;
        fold.IncludeBlock(pValues + nBlock * RT_BLOCK_VALUES);
        fold.Store(pSummaries + nBlock);
    }
}

#ifdef __x86_64__
/// For processors with registers as long as the lanes: twice as fast.
[[gnu::target("avx2")]] void SummariseWide(const std::int16_t* pValues, std::size_t nBlocks,
                                           RTBlockSummary* pSummaries) {
    Summarise(pValues, nBlocks, pSummaries);
}
#endif

}  // namespace

void SummariseBlocks(const std::int16_t* pValues, std::size_t nBlocks, RTBlockSummary* pSummaries) {
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2")) {
        SummariseWide(pValues, nBlocks, pSummaries);
        return;
    }
#endif
    Summarise(pValues, nBlocks, pSummaries);
}
