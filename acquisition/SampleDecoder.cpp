#include "acquisition/SampleDecoder.h"

#include <algorithm>
#include <cstddef>

#include "acquisition/ValueCopy.h"

namespace {

constexpr std::size_t PACKET_HEADER_SIZE = 1;
constexpr std::size_t BLOCK_HEADER_SIZE = 3;
constexpr std::size_t VALUE_SIZE = sizeof(std::int16_t);

/// Appends one block to the curves of the channels in use: as many values of each as nShare.
void AppendBlock(std::uint8_t byState, const std::uint8_t* pValues, std::size_t nShare,
                 ValueLayout layout, std::span<const std::shared_ptr<RTCurveData>> aspCurves) {
    RTValueTargets targets;
    for (std::size_t k = 0; k < aspCurves.size() && aspCurves[k]; ++k) {
        RTCurveData& curve = *aspCurves[k];
        const auto free = curve.GetFreeValues();
        targets[k] = {free.first(std::min(nShare, free.size())), curve.GetCount() % RT_BLOCK_VALUES,
                      curve.GetFreeBlocks()};
    }
    CopyValues(pValues, layout, targets);

    for (std::size_t k = 0; k < aspCurves.size(); ++k) {
        if (!aspCurves[k] || aspCurves[k]->GetCapacity() == 0) continue;
        RTCurveData& curve = *aspCurves[k];
        const std::uint32_t nCount =
            curve.GetCount() + static_cast<std::uint32_t>(targets[k].m_values.size());
        curve.PublishSummarised(nCount);
        curve.AddPulse(static_cast<std::int32_t>(nCount), byState);
    }
}

}  // namespace

void DecodeSamples(std::span<const std::uint8_t> payload, ValueLayout layout,
                   const RTCurrentCurves& aspCurves) {
    const auto used = std::span(aspCurves).first(layout.m_nChannels);
    auto rest = payload.subspan(std::min(payload.size(), PACKET_HEADER_SIZE));
    while (rest.size() >= BLOCK_HEADER_SIZE) {
        const unsigned nValues = unsigned{rest[1]} << 8 | rest[2];
        const std::size_t nBlockSize = BLOCK_HEADER_SIZE + nValues * VALUE_SIZE;
        if (rest.size() < nBlockSize) return;
        const unsigned nSets = nValues / layout.GetSetSize();
        AppendBlock(rest[0], rest.data() + BLOCK_HEADER_SIZE,
                    std::size_t{nSets} * layout.m_nPerChannel, layout, used);
        rest = rest.subspan(nBlockSize);
    }
}
