#include "acquisition/ValueCopy.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "curves/BlockFold.h"

// Everything that handles lanes is inlined, so that it is compiled for the processor that its
// caller is compiled for.

namespace {

static_assert(std::endian::native == std::endian::little);
constexpr std::size_t VALUE_SIZE = sizeof(std::int16_t);

/// What a channel has in a sample set: a value, or a pair of them.
using Single = std::int16_t;
using Pair = std::int32_t;

template <class Unit>
using Units [[gnu::vector_size(sizeof(RTLanes))]] = Unit;
template <class Unit>
using Places = std::make_index_sequence<sizeof(RTLanes) / sizeof(Unit)>;

// Deal takes the next lanes of each channel out of sample sets.

template <class Unit, std::size_t... PLACE>
[[gnu::always_inline]] inline void Deal(const std::uint8_t* pSource, RTLanes (&channels)[1],
                                        std::index_sequence<PLACE...>) {
    std::memcpy(&channels[0], pSource, sizeof(RTLanes));
}

/// Of two channels, the units stand at even and at odd places.
template <class Unit, std::size_t... PLACE>
[[gnu::always_inline]] inline void Deal(const std::uint8_t* pSource, RTLanes (&channels)[2],
                                        std::index_sequence<PLACE...>) {
    Units<Unit> a;
    Units<Unit> b;
    std::memcpy(&a, pSource, sizeof a);
    std::memcpy(&b, pSource + sizeof a, sizeof b);
    channels[0] =
        reinterpret_cast<RTLanes>(__builtin_shufflevector(a, b, static_cast<int>(2 * PLACE)...));
    channels[1] = reinterpret_cast<RTLanes>(
        __builtin_shufflevector(a, b, static_cast<int>(2 * PLACE + 1)...));
}

/// Takes the places 0, 3, 6 of every eight from the first, 1, 4, 7 from the second, 2 and 5 from
/// the third; then puts the values, each of which stands three places behind the one before it,
/// into order.
template <std::size_t CHANNEL, std::size_t... PLACE>
[[gnu::always_inline]] inline void PickOfThree(const RTLanes& first, const RTLanes& second,
                                               const RTLanes& third, RTLanes& channel,
                                               std::index_sequence<PLACE...>) {
    constexpr std::size_t OTHER = RT_LANE_VALUES;
    const RTLanes two = __builtin_shufflevector(
        first, second, static_cast<int>(PLACE % 8 % 3 == 1 ? OTHER + PLACE : PLACE)...);
    const RTLanes all = __builtin_shufflevector(
        two, third, static_cast<int>(PLACE % 8 % 3 == 2 ? OTHER + PLACE : PLACE)...);
    channel = __builtin_shufflevector(
        all, all, static_cast<int>(PLACE / 8 * 8 + (3 * (PLACE % 8) + CHANNEL) % 8)...);
}

/// Of three channels, eight sets fill three vectors of eight, in which no two values of a channel
/// stand at the same place. The halves of the lanes hold eight sets each.
template <class Unit, std::size_t... PLACE>
[[gnu::always_inline]] inline void Deal(const std::uint8_t* pSource, RTLanes (&channels)[3],
                                        std::index_sequence<PLACE...> places) {
    const auto load = [pSource](std::size_t nVector, RTLanes & lanes)
        __attribute__((always_inline)) {
        using Eight [[gnu::vector_size(8 * VALUE_SIZE)]] = Unit;
        Eight low;
        Eight high;
        std::memcpy(&low, pSource + nVector * sizeof low, sizeof low);
        std::memcpy(&high, pSource + (3 + nVector) * sizeof high, sizeof high);
        lanes = __builtin_shufflevector(low, high, static_cast<int>(PLACE)...);
    };
    RTLanes a;
    RTLanes b;
    RTLanes c;
    load(0, a);
    load(1, b);
    load(2, c);
    PickOfThree<0>(a, b, c, channels[0], places);
    PickOfThree<1>(c, a, b, channels[1], places);
    PickOfThree<2>(b, c, a, channels[2], places);
}

/// Calls work with the number of each channel, written out: what it handles stays in registers.
template <std::size_t CHANNELS, class Work>
[[gnu::always_inline]] inline void ForChannels(Work work) {
    [&]<std::size_t... CHANNEL>(std::index_sequence<CHANNEL...>) __attribute__((always_inline)) {
        (work(CHANNEL), ...);
    }
    (std::make_index_sequence<CHANNELS>());
}

/// Fills the targets of CHANNELS channels, of equal size in equal places, from sample sets. Whole
/// blocks are summarised while their values are in registers.
template <class Unit, std::size_t CHANNELS>
class CTogether {
  public:
    [[gnu::always_inline]] CTogether(const std::uint8_t* pSource, const RTValueTarget* pTargets)
        : m_pSource(pSource), m_nValues(pTargets->m_values.size()) {
        ForChannels<CHANNELS>([&](std::size_t k) __attribute__((always_inline)) {
            m_apTo[k] = pTargets[k].m_values.data();
            m_apBlocks[k] = pTargets[k].m_pBlocks;
        });
    }

    [[gnu::always_inline]] void Copy(std::size_t nBegun) {
        std::size_t nDone = 0;
        if (nBegun > 0) {
            nDone = std::min(RT_BLOCK_VALUES - nBegun, m_nValues);
            CopyPart(0, nDone);
            if (nBegun + nDone == RT_BLOCK_VALUES) SummariseBegun(nBegun);
        }
        for (; nDone + RT_BLOCK_VALUES <= m_nValues; nDone += RT_BLOCK_VALUES) CopyBlock(nDone);
        CopyPart(nDone, m_nValues);
    }

  private:
    [[gnu::always_inline]] void CopyLanes(std::size_t nAt, RTLanes (&channels)[CHANNELS]) {
        Deal<Unit>(m_pSource + nAt * CHANNELS * VALUE_SIZE, channels, Places<Unit>());
        ForChannels<CHANNELS>([&](std::size_t k) __attribute__((always_inline)) {
            std::memcpy(m_apTo[k] + nAt, &channels[k], sizeof channels[k]);
        });
    }

    /// The last lanes may begin before what is copied, or go on behind it, within the targets.
    [[gnu::always_inline]] void CopyPart(std::size_t nFrom, std::size_t nTo) {
        for (std::size_t n = nFrom; n < nTo; n += RT_LANE_VALUES) {
            RTLanes channels[CHANNELS];
            CopyLanes(std::min(n, m_nValues - RT_LANE_VALUES), channels);
        }
    }

    [[gnu::always_inline]] void CopyBlock(std::size_t nFirst) {
        CBlockFold folds[CHANNELS];
        for (std::size_t n = 0; n < RT_BLOCK_VALUES; n += RT_LANE_VALUES) {
            RTLanes channels[CHANNELS];
            CopyLanes(nFirst + n, channels);
            ForChannels<CHANNELS>([&](std::size_t k) __attribute__((always_inline)) {
                folds[k].Include(channels[k]);
            });
        }
        ForChannels<CHANNELS>([&](std::size_t k) __attribute__((always_inline)) {
            folds[k].Store(m_apBlocks[k]++);
        });
    }

    [[gnu::always_inline]] void SummariseBegun(std::size_t nBegun) {
        ForChannels<CHANNELS>([&](std::size_t k) __attribute__((always_inline)) {
            CBlockFold fold;
            fold.IncludeBlock(m_apTo[k] - nBegun);
            fold.Store(m_apBlocks[k]++);
        });
    }

    const std::uint8_t* m_pSource;
    std::size_t m_nValues;
    std::int16_t* m_apTo[CHANNELS];
    RTBlockSummary* m_apBlocks[CHANNELS];
};

/// Whether the processor has registers as long as the lanes. On another one, taking vectors apart
/// costs more than copying value by value.
bool HasLanes() {
#ifdef __x86_64__
    return __builtin_cpu_supports("avx2");
#else
    return false;
#endif
}

#ifdef __x86_64__
[[gnu::target("avx2")]]
#endif
void CopyTogether(const std::uint8_t* pSource, ValueLayout layout, const RTValueTarget* pTargets) {
    const std::size_t nBegun = pTargets->m_nBegun;
    if (layout.m_nChannels == 1)
        CTogether<Single, 1>(pSource, pTargets).Copy(nBegun);
    else if (layout.m_nChannels == 3)
        CTogether<Single, 3>(pSource, pTargets).Copy(nBegun);
    else if (layout.m_nPerChannel == 2)
        CTogether<Pair, 2>(pSource, pTargets).Copy(nBegun);
    else
        CTogether<Single, 2>(pSource, pTargets).Copy(nBegun);
}

/// One channel by itself, value by value.
void CopyChannel(const std::uint8_t* pSource, ValueLayout layout, const RTValueTarget& target) {
    const std::span<std::int16_t> values = target.m_values;
    for (std::size_t n = 0; n < values.size(); ++n) {
        const std::size_t nInUnit = n & (layout.m_nPerChannel - 1);
        const std::size_t nPlace = (n - nInUnit) * layout.m_nChannels + nInUnit;
        std::memcpy(&values[n], pSource + nPlace * VALUE_SIZE, VALUE_SIZE);
    }
    SummariseBlocks(values.data() - target.m_nBegun,
                    (target.m_nBegun + values.size()) / RT_BLOCK_VALUES, target.m_pBlocks);
}

}  // namespace

void CopyValues(const std::uint8_t* pSource, ValueLayout layout, const RTValueTargets& targets) {
    const auto used = std::span(targets).first(layout.m_nChannels);
    const RTValueTarget& first = used[0];
    const bool bTogether = HasLanes() && first.m_values.size() >= RT_LANE_VALUES &&
                           (first.m_values.size() | first.m_nBegun) % layout.m_nPerChannel == 0 &&
                           std::ranges::all_of(used, [&first](const RTValueTarget& target) {
                               return target.m_values.size() == first.m_values.size() &&
                                      target.m_nBegun == first.m_nBegun;
                           });
    if (bTogether) {
        CopyTogether(pSource, layout, targets.data());
        return;
    }
    for (std::size_t k = 0; k < used.size(); ++k)
        CopyChannel(pSource + k * layout.m_nPerChannel * VALUE_SIZE, layout, used[k]);
}
