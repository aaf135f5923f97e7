#include "acquisition/ValueCopy.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t VALUE_SIZE = sizeof(std::int16_t);

using Target = std::span<std::int16_t>;

/// Copies every STRIDE-th unit. A fixed stride and pointers that do not overlap let the compiler
/// use vector instructions.
template <class Unit, std::size_t STRIDE>
void CopyUnits(std::int16_t* __restrict pTarget, const std::uint8_t* __restrict pSource,
               std::size_t nUnits) {
    for (std::size_t i = 0; i < nUnits; ++i) {
        Unit unit;
        std::memcpy(&unit, pSource + i * STRIDE * sizeof(Unit), sizeof(Unit));
        std::memcpy(pTarget + i * (sizeof(Unit) / VALUE_SIZE), &unit, sizeof(Unit));
    }
}

/// One channel of two with pairs.
void CopyPairs(Target target, const std::uint8_t* pSource) {
    CopyUnits<std::uint32_t, 2>(target.data(), pSource, target.size() / 2);
    if (target.size() % 2 != 0)
        std::memcpy(&target.back(), pSource + (target.size() - 1) * 2 * VALUE_SIZE, VALUE_SIZE);
}

using Lanes [[gnu::vector_size(16)]] = std::int16_t;
constexpr std::size_t LANE_COUNT = sizeof(Lanes) / VALUE_SIZE;

Lanes LoadLanes(const std::uint8_t* pSource, std::size_t nFirst) {
    Lanes lanes;
    std::memcpy(&lanes, pSource + nFirst * VALUE_SIZE, sizeof lanes);
    return lanes;
}

void StoreLanes(Lanes lanes, std::int16_t* pTarget) { std::memcpy(pTarget, &lanes, sizeof lanes); }

/// 24 values as a deck of cards: its halves are dealt alternately.
void ShuffleDeck(Lanes& a, Lanes& b, Lanes& c) {
    const Lanes first = __builtin_shufflevector(a, b, 0, 12, 1, 13, 2, 14, 3, 15);
    const Lanes second = __builtin_shufflevector(a, c, 4, 8, 5, 9, 6, 10, 7, 11);
    const Lanes third = __builtin_shufflevector(b, c, 0, 12, 1, 13, 2, 14, 3, 15);
    a = first;
    b = second;
    c = third;
}

/// Three channels of single values. A shuffle of 24 values moves the one at place p to 2p modulo
/// 23, so three shuffles move it to 8p: the values at 0, 3, 6, ... come to 0, 1, 2, ..., those at
/// 1, 4, 7, ... behind them to 8, 9, 10, ..., the others to 16 and after.
void CopyThreeChannels(const std::uint8_t* pSource, const RTValueTargets& targets) {
    const auto [nShort, nLong] =
        std::minmax({targets[0].size(), targets[1].size(), targets[2].size()});
    std::size_t nSet = 0;
    for (; nSet + LANE_COUNT <= nShort; nSet += LANE_COUNT) {
        Lanes a = LoadLanes(pSource, 3 * nSet);
        Lanes b = LoadLanes(pSource, 3 * nSet + LANE_COUNT);
        Lanes c = LoadLanes(pSource, 3 * nSet + 2 * LANE_COUNT);
        for (int nShuffle = 0; nShuffle < 3; ++nShuffle) ShuffleDeck(a, b, c);
        StoreLanes(a, targets[0].data() + nSet);
        StoreLanes(b, targets[1].data() + nSet);
        StoreLanes(c, targets[2].data() + nSet);
    }
    if (nSet == nLong) return;
    for (std::size_t k = 0; k < 3; ++k) {
        const Target rest = targets[k].subspan(nSet);
        CopyUnits<std::uint16_t, 3>(rest.data(), pSource + (3 * nSet + k) * VALUE_SIZE,
                                    rest.size());
    }
}

}  // namespace

void CopyValues(const std::uint8_t* pSource, ValueLayout layout, const RTValueTargets& targets) {
    if (layout.m_nChannels == 3) {
        CopyThreeChannels(pSource, targets);
    } else if (layout.m_nPerChannel == 2) {
        CopyPairs(targets[0], pSource);
        CopyPairs(targets[1], pSource + 2 * VALUE_SIZE);
    } else {
        CopyUnits<std::uint16_t, 2>(targets[0].data(), pSource, targets[0].size());
        CopyUnits<std::uint16_t, 2>(targets[1].data(), pSource + VALUE_SIZE, targets[1].size());
    }
}
