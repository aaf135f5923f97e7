// How the values of a sample block are laid out, by instrument mode.
#pragma once

#include <algorithm>
#include <cstdint>

#include "curves/InstrumentMode.h"

/// The values of a block are sample sets, one after another. A set holds the values of channel 1,
/// then those of channel 2, then those of channel 3, as far as the channels are in use.
struct ValueLayout {
    unsigned m_nChannels = 1;    ///< 1 to 3
    unsigned m_nPerChannel = 1;  ///< values of a channel in a set; 2: a pair

    constexpr unsigned GetSetSize() const { return m_nChannels * m_nPerChannel; }
    friend bool operator==(const ValueLayout&, const ValueLayout&) = default;
};

/// The layout of a mode for the channels in use, which set-up derives from the mode. A number of
/// channels that cannot be is taken as the nearest that can; three channels have no pairs.
constexpr ValueLayout FindValueLayout(std::uint8_t nMode, std::uint8_t nPositionInput,
                                      unsigned nChannels) {
    ValueLayout layout;
    layout.m_nChannels = std::clamp(nChannels, 1u, 3u);
    if (layout.m_nChannels < 3 && HasValuePairs(nMode, SecondInput{nPositionInput}))
        layout.m_nPerChannel = 2;
    return layout;
}

/// The layout of a mode with all of its channels.
constexpr ValueLayout FindValueLayout(std::uint8_t nMode, SecondInput secondInput) {
    return FindValueLayout(nMode, static_cast<std::uint8_t>(secondInput), CountChannels(nMode));
}
