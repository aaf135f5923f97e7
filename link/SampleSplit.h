// Makes a packet of values small enough for a slow line.
#pragma once

#include <cstddef>
#include <vector>

#include "link/Payloads.h"

/// Splits the payload of a sample packet into payloads of at most so many bytes, between two sample
/// sets: together they hold the same values and lines. One that is short enough, or not laid out as
/// a sample packet, comes back as it is.
/// @param nMost bytes; a payload holds at least one set, however long that is
/// @param nSetValues values of a sample set
std::vector<PayloadBytes> SplitSamples(PayloadView payload, std::size_t nMost,
                                       std::size_t nSetValues);
