// Mean and deviation of some numbers.
#pragma once

#include <cmath>
#include <cstddef>

struct Distribution {
    double m_dMean;
    double m_dDeviation;  ///< of a sample; of one number there is none
};

/// In two passes, so that numbers that differ little lose nothing.
/// @param nCount 1 or more
/// @param value gives the number of an index
template <class Value>
Distribution FindDistribution(std::size_t nCount, Value value) {
    double dSum = 0;
    for (std::size_t n = 0; n < nCount; ++n) dSum += value(n);
    const double dMean = dSum / static_cast<double>(nCount);
    double dSquares = 0;
    for (std::size_t n = 0; n < nCount; ++n) dSquares += (value(n) - dMean) * (value(n) - dMean);
    return {dMean, std::sqrt(dSquares / static_cast<double>(nCount - 1))};
}
