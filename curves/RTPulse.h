// The states of the instrument's four digital lines along a curve.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>

/// One record of the digital lines.
struct RTPulse {
    /// The curve's count just after the data block that carried this state was appended: the state
    /// holds for the values from the previous record's position up to this one.
    std::int32_t m_nPosition;
    /// Bits 0 to 3 are the four lines; the other bits are carried and saved, not drawn.
    std::uint8_t m_byState;
    friend bool operator==(const RTPulse&, const RTPulse&) = default;
};

/// The pulse records of one curve, in arrival order.
///
/// A continuous capture may append for hours, and a curve that is full goes on receiving records,
/// one for each block, that all say the same. Equal records in a row are therefore kept once, with
/// the index of the first of them. What is kept stands in chunks, each twice as long as the one
/// before: nothing is ever copied. A file may hold a million curves of a few bytes each, so a list
/// costs in proportion to its records also when it is short: the first chunk is small, and the
/// others are listed in a table that only a longer list has.
///
/// Thread safety: one thread appends; any number of threads read at the same time. A reader takes
/// GetCount once and reads only below it.
/// Invariants: a record below the published count never changes and never moves; appending takes
/// constant time, and so does looking up by index in a list without equal records in a row, or
/// among those at its end. Positions never decrease in a captured list; one read from a file may
/// hold anything.
class RTPulseList {
  public:
    /// As many records as the chunks hold; just below what a file can count.
    static constexpr std::size_t MAX_COUNT = 4 * ((std::size_t{1} << 29) - 1);

    RTPulseList() = default;
    RTPulseList(const RTPulseList&) = delete;
    RTPulseList& operator=(const RTPulseList&) = delete;

    /// Number of finished records (acquire).
    std::size_t GetCount() const { return m_nCount.load(std::memory_order_acquire); }

    /// The record at an index below a count that GetCount has given.
    const RTPulse& At(std::size_t nIndex) const {
        const std::size_t nRuns = CountRuns();
        if (nIndex < nRuns && RunAt(nIndex).m_nFirst == nIndex) return RunAt(nIndex).m_pulse;
        return RunAt(FindRunOf(nRuns, nIndex)).m_pulse;
    }

    /// Appends a record and publishes it (release). The writer's thread only.
    /// @throws CMemoryException with the list unchanged, also when it holds MAX_COUNT records
    void Append(RTPulse pulse);

    /// The first index below nCount whose position is nPosition or more, or nCount: a binary
    /// search.
    std::size_t FindPosition(std::size_t nCount, std::int64_t nPosition) const {
        return FindFirst(0, nCount, [&](std::size_t n) { return At(n).m_nPosition >= nPosition; });
    }

    /// Number of runs of equal records in a row (acquire): they say all that the records say, but
    /// for how often.
    std::size_t CountRuns() const { return m_nRuns.load(std::memory_order_acquire); }
    /// The record that a run consists of; nRun below a number that CountRuns has given.
    const RTPulse& GetRun(std::size_t nRun) const { return RunAt(nRun).m_pulse; }
    /// The first run below nRuns whose position is nPosition or more, or nRuns: a binary search.
    std::size_t FindRun(std::size_t nRuns, std::int64_t nPosition) const {
        return FindFirst(0, nRuns,
                         [&](std::size_t n) { return GetRun(n).m_nPosition >= nPosition; });
    }

  private:
    static constexpr std::size_t FIRST_CHUNK_LENGTH = 4;
    static constexpr std::size_t CHUNK_COUNT = 29;
    static_assert(MAX_COUNT == FIRST_CHUNK_LENGTH * ((std::size_t{1} << CHUNK_COUNT) - 1));

    /// Equal records in a row; they end where the next run begins, or with the list.
    struct Run {
        RTPulse m_pulse;
        std::uint32_t m_nFirst;  ///< index of the first of them
    };

    struct Place {
        std::size_t m_nChunk;
        std::size_t m_nOffset;
    };
    static constexpr std::size_t GetChunkLength(std::size_t nChunk) {
        return FIRST_CHUNK_LENGTH << nChunk;
    }
    /// Chunk k begins at index 4 * (2^k - 1), so index + 4 has its highest bit in place k + 2.
    static constexpr Place FindPlace(std::size_t nIndex) {
        const std::size_t nShifted = nIndex + FIRST_CHUNK_LENGTH;
        const auto nChunk =
            static_cast<std::size_t>(std::bit_width(nShifted / FIRST_CHUNK_LENGTH)) - 1;
        return {nChunk, nShifted - GetChunkLength(nChunk)};
    }

    const Run& RunAt(std::size_t nRun) const {
        if (nRun < FIRST_CHUNK_LENGTH) return m_pFirstChunk[nRun];
        const Place place = FindPlace(nRun);
        return (*m_pLaterChunks)[place.m_nChunk - 1][place.m_nOffset];
    }
    std::unique_ptr<Run[]>& GetChunk(std::size_t nChunk);
    /// The run, below nRuns, that a record belongs to.
    std::size_t FindRunOf(std::size_t nRuns, std::size_t nIndex) const {
        if (RunAt(nRuns - 1).m_nFirst <= nIndex) return nRuns - 1;
        return FindFirst(1, nRuns, [&](std::size_t n) { return RunAt(n).m_nFirst > nIndex; }) - 1;
    }
    /// The first number from nFirst up to nEnd for which a condition holds that, once true, stays
    /// so; nEnd when it never does.
    template <class Condition>
    static std::size_t FindFirst(std::size_t nFirst, std::size_t nEnd, Condition holds) {
        while (nFirst < nEnd) {
            const std::size_t nMiddle = nFirst + (nEnd - nFirst) / 2;
            if (holds(nMiddle))
                nEnd = nMiddle;
            else
                nFirst = nMiddle + 1;
        }
        return nFirst;
    }

    using LaterChunks = std::array<std::unique_ptr<Run[]>, CHUNK_COUNT - 1>;

    std::atomic<std::uint32_t> m_nCount{0};  ///< records
    std::atomic<std::uint32_t> m_nRuns{0};   ///< what they are kept as
    std::unique_ptr<Run[]> m_pFirstChunk;
    std::unique_ptr<LaterChunks> m_pLaterChunks;
};
