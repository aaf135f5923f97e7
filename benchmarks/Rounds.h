// Measuring pieces of work side by side.
//
// What is compared is measured in turn, round after round, so that whatever else the machine does
// meanwhile falls on all of it; of each, the median of the rounds counts.
#pragma once

#include <functional>
#include <string>
#include <vector>

/// Gives the seconds that a piece of work has taken.
using Measure = std::function<double()>;

enum class Clock {
    Processor,  ///< the time that this process has computed: other programs do not lengthen it
    Wall,       ///< the time that has passed
};

/// Measures one call, or the mean of as many calls as make half a millisecond. The number is found
/// out by the first measurement, which also warms caches.
Measure TimeCalls(std::function<void()> work, Clock clock = Clock::Processor);

/// Measures each in every round, beginning with another one each time.
/// @return the median of each
std::vector<double> MeasureInTurn(const std::vector<Measure>& measures, int nRounds);

/// 0 of no values.
double FindMedian(std::vector<double> values);

/// Keeps the compiler from leaving out the work that led to a value.
template <class Value>
void KeepResult(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}
