// The runs that rtsoak offers. Each works real screens, counts what it does in the record, and
// reports there what it finds wrong.
#pragma once

#include <cstdint>
#include <optional>

#include "soak/Counts.h"

struct SoakOptions {
    double m_dSeconds = 10;  ///< of random work
    std::uint32_t m_nSeed = 1;
    std::optional<std::uint8_t> m_nMode;  ///< instrument mode; none: a random one for each screen
    unsigned m_nPatience = 0;             ///< longest answer allowed, milliseconds; 0: the default
};

/// Screens worked at random, one after the other, until the time is over or something is wrong.
void RunRandomScreens(const SoakOptions& options, CSoakRecord& record);

/// A continuous capture at the highest speed that the reader takes, until as many blocks have come
/// as the instrument sends in so many hours. Prints how memory goes.
/// @param nStrokeSeconds time between new curves; 0: one curve only, which fills and stays full
void RunContinuous(const SoakOptions& options, double dHours, unsigned nStrokeSeconds,
                   CSoakRecord& record);

/// The same with a linked instrument, on whose link bytes are held up, damaged and lost.
void RunLinkedScreens(const SoakOptions& options, CSoakRecord& record);

/// A screen on an instrument in a process of its own, which is killed in the midst of captures and
/// started again, so many times. Prints how soon the screen is connected again.
void RunRestarts(const SoakOptions& options, unsigned nTimes, CSoakRecord& record);

/// A continuous capture of three channels at the highest rate, from an instrument in a process of
/// its own, for so many minutes: holds every value to what the press sends. Runs of two minutes and
/// more hold memory and the link's processor time to their limits. Prints both, minute by minute.
void RunLinkRate(const SoakOptions& options, double dMinutes, CSoakRecord& record);
