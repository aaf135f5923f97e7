// Splits the data blocks of a sample packet among the channels.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "acquisition/ValueLayout.h"
#include "curves/RTCurves.h"

/// The curve that each channel is filling; null: none. Entries beyond the channels in use are not
/// looked at.
using RTCurrentCurves = std::array<std::shared_ptr<RTCurveData>, CRTCurves::CHANNEL_COUNT>;

/// Appends the values of every block to the channels' curves, and for each block one pulse record
/// with the block's status byte. RTPacket describes the payload.
///
/// Room: each channel's share of a block is stored as far as its curve has free places; what is
/// beyond is dropped. A channel without a curve, and every channel after it, stores no values.
/// Pulse records go to each curve that has a capacity, also from an empty block, also into a full
/// curve.
///
/// Malformed payloads: a block whose header or values run past the end ends the packet, and nothing
/// of it is stored; of a block that is not a whole number of sample sets the whole sets are stored.
///
/// Thread: the writer of the curves. Allocates nothing but room for pulse records, now and then.
/// @throws CMemoryException from a pulse record; the values counted so far are stored
void DecodeSamples(std::span<const std::uint8_t> payload, ValueLayout layout,
                   const RTCurrentCurves& aspCurves);
