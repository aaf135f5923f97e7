// What an instrument mode means. Screen, decoder, painter and simulated instrument go by this
// table.
#pragma once

#include <cstdint>

/// Kind of second input (m_nPositionInput of the session).
enum class SecondInput : std::uint8_t {
    Voltage = 0,   ///< no position input: the second value of a pair is a voltage
    Position = 1,  ///< a position
    Analogue = 2,  ///< a position measured on an analogue input, 0-10 V or 0-24 V
};

/// With which second input a mode has something.
enum class ModeHas : std::uint8_t { Never, WithAnalogueInput, Always };

struct InstrumentMode {
    std::uint8_t m_nCode;
    std::uint8_t m_nChannels;         ///< 1 to 3
    ModeHas m_pairs;                  ///< each time step brings a channel two values
    ModeHas m_pairViews;              ///< the display list offers both values of a pair
    std::uint8_t m_nColumnGroup = 1;  ///< value indices that a column of a plot never splits
};

/// The modes that are known.
constexpr InstrumentMode INSTRUMENT_MODES[] = {
    {1, 1, ModeHas::Always, ModeHas::Always},
    {2, 2, ModeHas::WithAnalogueInput, ModeHas::WithAnalogueInput},
    {3, 3, ModeHas::Never, ModeHas::Never, 3},
    {10, 1, ModeHas::Always, ModeHas::Always},
    {12, 2, ModeHas::Never, ModeHas::Never},
    {20, 2, ModeHas::Always, ModeHas::Always},
    {21, 1, ModeHas::Never, ModeHas::Always},
    {22, 2, ModeHas::Never, ModeHas::Always},
};

/// The mode of a code; one channel of single values for a code that is not known.
constexpr InstrumentMode FindInstrumentMode(std::uint8_t nMode) {
    for (const InstrumentMode& mode : INSTRUMENT_MODES)
        if (mode.m_nCode == nMode) return mode;
    return {nMode, 1, ModeHas::Never, ModeHas::Never};
}

constexpr bool IsWith(ModeHas has, SecondInput secondInput) {
    return has == ModeHas::Always ||
           (has == ModeHas::WithAnalogueInput && secondInput == SecondInput::Analogue);
}

constexpr std::uint8_t CountChannels(std::uint8_t nMode) {
    return FindInstrumentMode(nMode).m_nChannels;
}

constexpr bool HasValuePairs(std::uint8_t nMode, SecondInput secondInput) {
    return IsWith(FindInstrumentMode(nMode).m_pairs, secondInput);
}

constexpr bool OffersPairViews(std::uint8_t nMode, SecondInput secondInput) {
    return IsWith(FindInstrumentMode(nMode).m_pairViews, secondInput);
}

constexpr std::uint8_t GetColumnGroup(std::uint8_t nMode) {
    return FindInstrumentMode(nMode).m_nColumnGroup;
}
