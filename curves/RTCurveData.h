// One channel's curve of one capture.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "curves/RTPulse.h"
#include "curves/RTValueSummary.h"
#include "platform/system/LongArray.h"

/// Largest and smallest values of a curve, apart for even and odd indices. All four 0: not
/// computed. Aligned so that the four change in one access.
struct alignas(8) RTExtremes {
    std::int16_t m_nMaxEven = 0;
    std::int16_t m_nMinEven = 0;
    std::int16_t m_nMaxOdd = 0;
    std::int16_t m_nMinOdd = 0;
    friend bool operator==(const RTExtremes&, const RTExtremes&) = default;
};

/// The stream of signed 16-bit values that one channel delivered during one capture.
///
/// Values are raw, in arrival order. Where a time step brings two values (pair modes), the first
/// quantity stands at the even index and the second at the odd index after it.
///
/// Thread safety: a curve has one writer, the packet reader of its screen (or the thread that loads
/// it). The writer fills values, then calls PublishCount; any thread may read at the same time if
/// it takes GetCount once and reads only below it. Extremes change as a whole. Capacity, value
/// array, reserved word and markers never change once other threads can see the curve.
/// Ownership: shared among the set that holds it, the screen while it is the current curve, and
/// whoever draws or writes it.
/// Hosts: what is defined here is for them too; what is only declared belongs to whoever makes and
/// fills the curve.
class RTCurveData {
  public:
    static constexpr std::size_t MARKER_COUNT = 10;
    /// As many values as have a size in bytes of 32 bits.
    static constexpr std::uint32_t MAX_VALUES = 0x7FFFFFFF;

    /// A curve without values, with an array for nCapacity values that is not cleared.
    /// @throws CMemoryException when the memory cannot be had, or its size does not fit 32 bits
    explicit RTCurveData(std::uint32_t nCapacity);

    /// A curve read from a file: the array holds exactly nCount values, to be filled through
    /// GetFreeValues, whatever capacity it was captured for.
    /// @throws CMemoryException
    RTCurveData(std::uint32_t nCount, std::uint32_t nCapacity);

    RTCurveData(const RTCurveData&) = delete;
    RTCurveData& operator=(const RTCurveData&) = delete;

    /// Number of values stored so far (acquire).
    std::uint32_t GetCount() const { return m_nCount.load(std::memory_order_acquire); }
    /// Number of values the capture was sized for: sample seconds times value rate.
    std::uint32_t GetCapacity() const { return m_nCapacity; }

    /// The values below a count that GetCount has given; null for a curve without room for any.
    const std::int16_t* GetValues() const { return m_pValues.get(); }

    /// The places behind the stored values. The writer's thread only.
    std::span<std::int16_t> GetFreeValues() {
        const std::uint32_t nCount = m_nCount.load(std::memory_order_relaxed);
        return {m_pValues.get() + nCount, m_nArrayLength - nCount};
    }

    /// Makes the first nCount values visible (release), after extending the min/max summary over
    /// them. The count never goes down. The writer's thread only.
    void PublishCount(std::uint32_t nCount);

    /// For a writer that summarises blocks while it fills their values: the summaries of the blocks
    /// that are not complete yet. The writer's thread only.
    RTBlockSummary* GetFreeBlocks() { return m_summary.GetFreeBlocks(); }

    /// As PublishCount, by a writer that has filled the summaries of all blocks that are complete
    /// with nCount.
    void PublishSummarised(std::uint32_t nCount) {
        m_summary.TakeBlocks(nCount / RT_BLOCK_VALUES);
        m_nCount.store(nCount, std::memory_order_release);
    }

    /// Smallest and largest of the values at nFirst, nFirst + 2, ... below nLast: exactly what a
    /// scan of them gives; a range without such a value gives INT16_MAX and INT16_MIN. nLast must
    /// not exceed a count that GetCount has given. Reads one number for 2048 values of a long
    /// range.
    RTMinMax FindMinMax(std::uint32_t nFirst, std::uint32_t nLast) const {
        return m_summary.Find(m_pValues.get(), nFirst, nLast);
    }

    /// The extremes of the first nCount values; of a parity without values the maximum is -32768
    /// and the minimum 32767. nCount as nLast above.
    RTExtremes FindExtremes(std::uint32_t nCount) const {
        const RTMinMax even = FindMinMax(0, nCount);
        const RTMinMax odd = FindMinMax(1, nCount);
        return {even.m_nMax, even.m_nMin, odd.m_nMax, odd.m_nMin};
    }

    RTExtremes GetExtremes() const { return m_extremes.load(std::memory_order_acquire); }
    void SetExtremes(const RTExtremes& extremes) {
        m_extremes.store(extremes, std::memory_order_release);
    }

    /// Sets the extremes from the values stored so far.
    void RecomputeExtremes() { SetExtremes(FindExtremes(GetCount())); }

    /// Appends the state of the digital lines. The writer's thread only.
    /// @throws CMemoryException
    void AddPulse(std::int32_t nPosition, std::uint8_t byState);
    const RTPulseList& GetPulses() const { return m_lstPulses; }

    /// Carried through files unchanged.
    std::uint16_t m_wReserved = 0;
    /// Value indices; -1: no marker.
    std::array<std::int32_t, MARKER_COUNT> m_anMarkers;

  private:
    std::atomic<std::uint32_t> m_nCount{0};
    std::uint32_t m_nCapacity;
    std::uint32_t m_nArrayLength;
    LongArray<std::int16_t> m_pValues;
    std::atomic<RTExtremes> m_extremes{RTExtremes{}};
    RTPulseList m_lstPulses;
    RTValueSummary m_summary;
};
