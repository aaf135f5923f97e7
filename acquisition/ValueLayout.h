// How the values of a sample block are laid out, by instrument mode.
#pragma once

#include <algorithm>
#include <cstdint>

/// m_nPositionInput of the session: a position measured on an analogue input.
constexpr std::uint8_t POSITION_INPUT_ANALOGUE = 2;

/// The values of a block are sample sets, one after another. A set holds the values of channel 1,
/// then those of channel 2, then those of channel 3, as far as the channels are in use.
struct ValueLayout {
    unsigned m_nChannels = 1;    ///< 1 to 3
    unsigned m_nPerChannel = 1;  ///< values of a channel in a set; 2: a pair

    constexpr unsigned GetSetSize() const { return m_nChannels * m_nPerChannel; }
    friend bool operator==(const ValueLayout&, const ValueLayout&) = default;
};

/// Channels that an instrument mode has: 1 for a mode that is not known.
constexpr std::uint8_t CountChannels(std::uint8_t nMode) {
    switch (nMode) {
    case 2:
    case 12:
    case 20:
    case 22:
        return 2;
    case 3:
        return 3;
    default:
        return 1;
    }
}

/// Whether each time step of a mode brings a channel two values.
constexpr bool HasValuePairs(std::uint8_t nMode, std::uint8_t nPositionInput) {
    switch (nMode) {
    case 1:
    case 10:
    case 20:
        return true;
    case 2:
        return nPositionInput == POSITION_INPUT_ANALOGUE;
    default:
        return false;
    }
}

/// The layout of a mode for the channels in use, which set-up derives from the mode with
/// CountChannels. A number of channels that cannot be is taken as the nearest that can; three
/// channels have no pairs.
constexpr ValueLayout FindValueLayout(std::uint8_t nMode, std::uint8_t nPositionInput,
                                      unsigned nChannels) {
    ValueLayout layout;
    layout.m_nChannels = std::clamp(nChannels, 1u, 3u);
    if (layout.m_nChannels < 3 && HasValuePairs(nMode, nPositionInput)) layout.m_nPerChannel = 2;
    return layout;
}
