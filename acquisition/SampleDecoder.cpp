#include "acquisition/SampleDecoder.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace {

constexpr std::size_t PACKET_HEADER_SIZE = 1;
constexpr std::size_t BLOCK_HEADER_SIZE = 3;
constexpr std::size_t VALUE_SIZE = sizeof(std::int16_t);

/// Copies every STRIDE-th unit of the packet. The source has no alignment. A fixed stride and
/// pointers that do not overlap let the compiler use vector instructions.
template <class Unit, std::size_t STRIDE>
void CopyUnits(std::int16_t* __restrict pTarget, const std::uint8_t* __restrict pSource,
               std::size_t nUnits) {
    for (std::size_t i = 0; i < nUnits; ++i) {
        Unit unit;
        std::memcpy(&unit, pSource + i * STRIDE * sizeof(Unit), sizeof(Unit));
        std::memcpy(pTarget + i * (sizeof(Unit) / VALUE_SIZE), &unit, sizeof(Unit));
    }
}

/// Fills the target with one channel's values; the source stands at the channel's first one.
void CopyChannel(std::span<std::int16_t> target, const std::uint8_t* pSource, ValueLayout layout) {
    const std::size_t nValues = target.size();
    if (layout.m_nChannels == 1) {
        std::memcpy(target.data(), pSource, nValues * VALUE_SIZE);
    } else if (layout.m_nPerChannel == 2) {
        CopyUnits<std::uint32_t, 2>(target.data(), pSource, nValues / 2);
        // A curve may end within a pair.
        if (nValues % 2 != 0)
            std::memcpy(&target.back(), pSource + (nValues - 1) * 2 * VALUE_SIZE, VALUE_SIZE);
    } else if (layout.m_nChannels == 2) {
        CopyUnits<std::uint16_t, 2>(target.data(), pSource, nValues);
    } else {
        CopyUnits<std::uint16_t, 3>(target.data(), pSource, nValues);
    }
    if constexpr (std::endian::native == std::endian::big) {
        for (std::int16_t& nValue : target) {
            const auto n = static_cast<std::uint16_t>(nValue);
            nValue = static_cast<std::int16_t>(static_cast<std::uint16_t>((n << 8) | (n >> 8)));
        }
    }
}

/// Appends one block, whose values are whole sample sets.
void AppendBlock(std::uint8_t byState, std::span<const std::uint8_t> values, ValueLayout layout,
                 std::span<const std::shared_ptr<RTCurveData>> aspCurves) {
    const std::size_t nShare = values.size() / VALUE_SIZE / layout.m_nChannels;
    const std::uint8_t* pFirst = values.data();
    for (const auto& spCurve : aspCurves) {
        if (!spCurve) break;
        const auto free = spCurve->GetFreeValues();
        const auto target = free.first(std::min(nShare, free.size()));
        if (!target.empty()) {
            CopyChannel(target, pFirst, layout);
            spCurve->PublishCount(spCurve->GetCount() + static_cast<std::uint32_t>(target.size()));
        }
        pFirst += layout.m_nPerChannel * VALUE_SIZE;
    }
    for (const auto& spCurve : aspCurves) {
        if (spCurve && spCurve->GetCapacity() != 0)
            spCurve->AddPulse(static_cast<std::int32_t>(spCurve->GetCount()), byState);
    }
}

}  // namespace

void DecodeSamples(std::span<const std::uint8_t> payload, ValueLayout layout,
                   const RTCurrentCurves& aspCurves) {
    const auto used = std::span(aspCurves).first(layout.m_nChannels);
    auto rest = payload.subspan(std::min(payload.size(), PACKET_HEADER_SIZE));
    while (rest.size() >= BLOCK_HEADER_SIZE) {
        const std::size_t nValues = std::size_t{rest[1]} << 8 | rest[2];
        const std::size_t nBlockSize = BLOCK_HEADER_SIZE + nValues * VALUE_SIZE;
        if (rest.size() < nBlockSize) return;
        const std::size_t nWhole = nValues - nValues % layout.GetSetSize();
        AppendBlock(rest[0], rest.subspan(BLOCK_HEADER_SIZE, nWhole * VALUE_SIZE), layout, used);
        rest = rest.subspan(nBlockSize);
    }
}
