// Moves the values of up to three channels out of a packet: low byte first, interleaved, without
// alignment.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "acquisition/ValueLayout.h"
#include "curves/RTCurves.h"

/// Where the values of a channel go, and the summaries of the blocks that they complete.
struct RTValueTarget {
    std::span<std::int16_t> m_values;     ///< its size is how many of them are wanted
    std::size_t m_nBegun = 0;             ///< how many of their first block stand in front of them
    RTBlockSummary* m_pBlocks = nullptr;  ///< for as many as they complete
};

using RTValueTargets = std::array<RTValueTarget, CRTCurves::CHANNEL_COUNT>;

/// Copies the first values of each channel in use from the sample sets at pSource, which must hold
/// as many as the longest target wants, and summarises the blocks. Targets may have different
/// sizes, also sizes that end within a pair; those of equal size, in equal places of their blocks,
/// are filled in one pass, with whole vectors on processors that have AVX2.
void CopyValues(const std::uint8_t* pSource, ValueLayout layout, const RTValueTargets& targets);
