// How the values of one sample set are laid out: which channels, and how many values of each.
#pragma once

#include <cstdint>

/// Kind of second input.
enum class SecondInput : std::uint8_t {
    Voltage = 0,   ///< no position input: the second value of a pair is a voltage
    Position = 1,  ///< a position
    Analogue = 2,  ///< a position measured on an analogue input, 0-10 V or 0-24 V
};

struct SampleLayout {
    unsigned m_nChannels = 1;          ///< 1 to 3
    unsigned m_nValuesPerChannel = 1;  ///< per set: 2 where values come in pairs

    unsigned GetSetSize() const { return m_nChannels * m_nValuesPerChannel; }
    friend bool operator==(const SampleLayout&, const SampleLayout&) = default;
};

/// The layout of an instrument mode. Modes that are not known have one channel of single values.
SampleLayout FindSampleLayout(std::uint8_t nMode, SecondInput secondInput);
