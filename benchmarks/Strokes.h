// The values that every program of a comparison draws. Knows nothing but the language of 2017,
// which is the newest that one of the other libraries compiles in.
#pragma once

#include <cmath>
#include <cstdint>

/// The size of the pictures and the value range of their axis.
constexpr int PICTURE_WIDTH = 842;
constexpr int PICTURE_HEIGHT = 420;
constexpr int LOWEST_VALUE = -5000;
constexpr int HIGHEST_VALUE = 5000;

/// Of the values of a curve the plot shows one of the two quantities: every second one.
constexpr std::size_t SHOWN_STEP = 2;
/// A new view shows so many values more, and the next one so many less.
constexpr unsigned VIEW_STEP = 256;

/// Three strokes of a press with noise on them, whatever the length.
/// @param values a sequence of 16-bit values
/// @param nCurve curves of different numbers have different noise
template <class Values>
void FillStrokes(Values& values, unsigned nCurve) {
    constexpr double PI = 3.14159265358979;
    const double dStep = 3 * PI / static_cast<double>(values.size());
    std::uint32_t nRandom = nCurve * 2654435761u + 1;
    double dPhase = 0;
    for (std::int16_t& nValue : values) {
        nRandom = nRandom * 1664525u + 1013904223u;
        const double dForce = std::sin(dPhase);
        dPhase += dStep;
        nValue = static_cast<std::int16_t>(4000 * dForce * dForce + (nRandom >> 24));
    }
}
