// One screen after the other, each for a random while.
#pragma once

#include <algorithm>
#include <random>

#include "platform/system/Threads.h"
#include "soak/LeftBehind.h"
#include "soak/Soak.h"

/// How long a screen is worked, in milliseconds: every fourth one for less than the first, the
/// others from the second on for less than the third more.
struct ScreenTimes {
    unsigned m_nShort;
    unsigned m_nLeast;
    unsigned m_nRange;
};

/// Until the time is over or something is wrong. What a screen leaves behind is a fault.
/// @param run called with the screen's number, from 0, and how long it is to be worked
template <class RunScreen>
void RunScreenByScreen(const SoakOptions& options, const ScreenTimes& times, CSoakRecord& record,
                       RunScreen run) {
    CLeftBehind leftBehind(record);
    std::mt19937 random(options.m_nSeed);
    const std::uint64_t nEnd =
        TickMilliseconds() + static_cast<std::uint64_t>(options.m_dSeconds * 1000);
    for (unsigned nScreen = 0; !record.HasFaults(); ++nScreen) {
        const std::uint64_t nNow = TickMilliseconds();
        if (nNow >= nEnd) break;
        const unsigned nLength = random() % 4 == 0 ? random() % times.m_nShort
                                                   : times.m_nLeast + random() % times.m_nRange;
        run(nScreen, static_cast<unsigned>(std::min<std::uint64_t>(nLength, nEnd - nNow)));
        leftBehind.Check();
    }
}
