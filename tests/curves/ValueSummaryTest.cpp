// The min/max summary against a plain scan of the values.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "curves/RTCurveData.h"

namespace {

RTMinMax Scan(const std::vector<std::int16_t>& values, std::size_t nFirst, std::size_t nLast) {
    std::vector<std::int16_t> picked;
    for (std::size_t i = nFirst; i < nLast; i += 2) picked.push_back(values[i]);
    if (picked.empty()) return {32767, -32768};
    return {*std::min_element(picked.begin(), picked.end()),
            *std::max_element(picked.begin(), picked.end())};
}

std::vector<std::int16_t> MakeValues(std::size_t nCount, unsigned nSeed) {
    std::mt19937 random(nSeed);
    std::vector<std::int16_t> values(nCount);
    for (auto& nValue : values) nValue = static_cast<std::int16_t>(random());
    return values;
}

/// Stores the values as the reader does: a block, then the count.
void Append(RTCurveData& curve, const std::vector<std::int16_t>& values, std::size_t nBlock) {
    while (curve.GetCount() < values.size()) {
        const std::size_t nFrom = curve.GetCount();
        const std::size_t nTake = std::min(nBlock, values.size() - nFrom);
        std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(nFrom), nTake,
                    curve.GetFreeValues().begin());
        curve.PublishCount(static_cast<std::uint32_t>(nFrom + nTake));
    }
}

TEST(ValueSummary, GivesWhatAScanGivesForAnyRangeAndBlockSize) {
    std::mt19937 random(2);
    for (const std::size_t nBlock : {1u, 3u, 128u, 1000u, 30000u}) {
        const auto values = MakeValues(30000 + nBlock % 7, static_cast<unsigned>(nBlock));
        RTCurveData curve(static_cast<std::uint32_t>(values.size()));
        Append(curve, values, nBlock);
        std::uniform_int_distribution<std::uint32_t> anyIndex(0, curve.GetCount());
        for (int i = 0; i < 500; ++i) {
            const auto [nFirst, nLast] = std::minmax({anyIndex(random), anyIndex(random)});
            ASSERT_EQ(curve.FindMinMax(nFirst, nLast), Scan(values, nFirst, nLast))
                << nFirst << ".." << nLast << " in blocks of " << nBlock;
        }
    }
}

}  // namespace
