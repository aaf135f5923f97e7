// Measuring pieces of work side by side.
//
// What is compared is measured in turn, round after round, so that whatever else the machine does
// meanwhile falls on all of it.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

/// What many measurements of one thing have given, in seconds.
struct Figures {
    /// Which figure is the same from run to run, and decides.
    enum Stable {
        Least,   ///< pure computing: everything else that goes on only adds to it
        Median,  ///< work that waits, for a disk, a clock or another thread, or takes pages of the
                 ///< system
    };
    double m_dLeast = 0;
    double m_dMedian = 0;
    Stable m_stable = Least;

    double Get() const { return m_stable == Least ? m_dLeast : m_dMedian; }
};

/// Of no measurements: all 0.
Figures FindFigures(std::vector<double> seconds, Figures::Stable stable = Figures::Least);

/// The value that a part of all values does not exceed.
/// @param dPart above 0, up to 1
double FindQuantile(std::vector<double> values, double dPart);

/// Takes one measurement of a piece of work, or several, each in seconds.
using Measure = std::function<std::vector<double>()>;

enum class Clock {
    Processor,  ///< the time that this process has computed: other programs do not lengthen it
    Wall,       ///< the time that has passed
};

/// Measures one call, or the mean of as many calls as make half a millisecond. The number is found
/// out by the first measurement, which also warms caches.
Measure TimeCalls(std::function<void()> work, Clock clock = Clock::Processor);

/// The processor seconds of one call.
double TimeOnce(const std::function<void()>& work);

/// Measures each in every round, beginning with another one each time.
std::vector<Figures> MeasureInTurn(const std::vector<Measure>& measures, int nRounds,
                                   Figures::Stable stable = Figures::Least);

/// Keeps the compiler from leaving out the work that led to a value.
template <class Value>
void KeepResult(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}
