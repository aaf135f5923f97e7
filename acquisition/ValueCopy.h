// Moves the values of two or three channels out of a packet: low byte first, interleaved, without
// alignment.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "acquisition/ValueLayout.h"
#include "curves/RTCurves.h"

/// Where the values of each channel go; its size is how many of them are wanted.
using RTValueTargets = std::array<std::span<std::int16_t>, CRTCurves::CHANNEL_COUNT>;

/// Copies the first values of each channel in use from the sample sets at pSource, which must hold
/// as many as the longest target wants. Targets may have different sizes, also sizes that end
/// within a pair.
void CopyValues(const std::uint8_t* pSource, ValueLayout layout, const RTValueTargets& targets);
