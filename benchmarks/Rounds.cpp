#include "Rounds.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

namespace {

constexpr double LEAST_SECONDS = 0.0005;

double ReadClock(Clock clock) {
    if (clock == Clock::Processor) {
        timespec time{};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double TimeRepeated(const std::function<void()>& work, Clock clock, std::size_t nCalls) {
    const double dBegin = ReadClock(clock);
    for (std::size_t i = 0; i < nCalls; ++i) work();
    return ReadClock(clock) - dBegin;
}

}  // namespace

Figures FindFigures(std::vector<double> seconds, Figures::Stable stable) {
    if (seconds.empty()) return {.m_stable = stable};
    const double dLeast = *std::ranges::min_element(seconds);
    return {dLeast, FindQuantile(std::move(seconds), 0.5), stable};
}

double FindQuantile(std::vector<double> values, double dPart) {
    const auto nRank =
        static_cast<std::ptrdiff_t>(std::ceil(dPart * static_cast<double>(values.size())));
    const auto at = values.begin() + nRank - 1;
    std::ranges::nth_element(values, at);
    return *at;
}

Measure TimeCalls(std::function<void()> work, Clock clock) {
    return [work = std::move(work), clock, nCalls = std::size_t{0}]() mutable {
        if (nCalls == 0) {
            // Twice: the first calls may take much longer than all others.
            const auto isTooShort = [&] {
                return TimeRepeated(work, clock, nCalls) < LEAST_SECONDS;
            };
            for (nCalls = 1; isTooShort() || isTooShort();) nCalls *= 2;
        }
        return std::vector{TimeRepeated(work, clock, nCalls) / static_cast<double>(nCalls)};
    };
}

double TimeOnce(const std::function<void()>& work) {
    return TimeRepeated(work, Clock::Processor, 1);
}

std::vector<Figures> MeasureInTurn(const std::vector<Measure>& measures, int nRounds,
                                   Figures::Stable stable) {
    const std::size_t nCount = measures.size();
    std::vector<std::vector<double>> seconds(nCount);
    for (int nRound = 0; nRound < nRounds; ++nRound) {
        for (std::size_t i = 0; i < nCount; ++i) {
            const std::size_t nAt = (i + static_cast<std::size_t>(nRound)) % nCount;
            const std::vector<double> taken = measures[nAt]();
            seconds[nAt].insert(seconds[nAt].end(), taken.begin(), taken.end());
        }
    }
    std::vector<Figures> figures;
    figures.reserve(nCount);
    for (auto& ofOne : seconds) figures.push_back(FindFigures(std::move(ofOne), stable));
    return figures;
}
