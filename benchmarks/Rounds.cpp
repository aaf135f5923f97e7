#include "Rounds.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace {

constexpr double LEAST_SECONDS = 0.0005;

double ReadClock(Clock clock) {
    if (clock == Clock::Processor) return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double TimeRepeated(const std::function<void()>& work, Clock clock, std::size_t nCalls) {
    const double dBegin = ReadClock(clock);
    for (std::size_t i = 0; i < nCalls; ++i) work();
    return ReadClock(clock) - dBegin;
}

}  // namespace

Measure TimeCalls(std::function<void()> work, Clock clock) {
    return [work = std::move(work), clock, nCalls = std::size_t{0}]() mutable {
        if (nCalls == 0) {
            nCalls = 1;
            while (TimeRepeated(work, clock, nCalls) < LEAST_SECONDS) nCalls *= 2;
        }
        return TimeRepeated(work, clock, nCalls) / static_cast<double>(nCalls);
    };
}

std::vector<double> MeasureInTurn(const std::vector<Measure>& measures, int nRounds) {
    const std::size_t nCount = measures.size();
    std::vector<std::vector<double>> times(nCount);
    for (int nRound = 0; nRound < nRounds; ++nRound) {
        for (std::size_t i = 0; i < nCount; ++i) {
            const std::size_t nAt = (i + static_cast<std::size_t>(nRound)) % nCount;
            times[nAt].push_back(measures[nAt]());
        }
    }
    std::vector<double> medians;
    for (auto& ofOne : times) medians.push_back(FindMedian(std::move(ofOne)));
    return medians;
}

double FindMedian(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
