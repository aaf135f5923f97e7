#include "curves/RTCurveData.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <new>

#include "platform/system/Exceptions.h"

namespace {

LongArray<std::int16_t> AllocateValues(std::uint32_t nLength) {
    if (nLength > RTCurveData::MAX_VALUES) throw CMemoryException();
    if (nLength == 0) return {};
    return MakeLongArray<std::int16_t>(nLength);
}

}  // namespace

RTCurveData::RTCurveData(std::uint32_t nCapacity) : RTCurveData(nCapacity, nCapacity) {}

RTCurveData::RTCurveData(std::uint32_t nCount, std::uint32_t nCapacity) try
    : m_nCapacity(nCapacity), m_nArrayLength(nCount), m_pValues(AllocateValues(nCount)),
      m_summary(nCount) {
    m_anMarkers.fill(-1);
} catch (const std::bad_alloc&) {
    throw CMemoryException();
}

std::span<std::int16_t> RTCurveData::GetFreeValues() {
    const std::uint32_t nCount = m_nCount.load(std::memory_order_relaxed);
    return {m_pValues.get() + nCount, m_nArrayLength - nCount};
}

void RTCurveData::PublishCount(std::uint32_t nCount) {
    assert(nCount >= m_nCount.load(std::memory_order_relaxed) && nCount <= m_nArrayLength);
    m_summary.Extend(m_pValues.get(), nCount);
    m_nCount.store(nCount, std::memory_order_release);
}

void RTCurveData::AppendValues(const std::uint8_t* pBytes, std::uint32_t nValues) {
    static_assert(std::endian::native == std::endian::little);
    const std::uint32_t nCount = m_nCount.load(std::memory_order_relaxed);
    assert(nValues <= m_nArrayLength - nCount);
    std::int16_t* const pTarget = m_pValues.get() + nCount;
    const auto copy = [&](std::size_t nFrom, std::size_t nTo) {
        if (nFrom == nTo) return;
        std::memcpy(pTarget + nFrom, pBytes + nFrom * sizeof(std::int16_t),
                    (nTo - nFrom) * sizeof(std::int16_t));
    };
    // What completes the block that has been begun, whole blocks, and what begins the next one.
    const std::size_t nBegun = nCount % RT_BLOCK_VALUES;
    const std::size_t nHead =
        std::min<std::size_t>(nBegun == 0 ? 0 : RT_BLOCK_VALUES - nBegun, nValues);
    const std::size_t nBlocks = (nValues - nHead) / RT_BLOCK_VALUES;
    copy(0, nHead);
    m_summary.Extend(m_pValues.get(), nCount + nHead);
    m_summary.AppendBlocks(pBytes + nHead * sizeof(std::int16_t), nBlocks, pTarget + nHead);
    copy(nHead + nBlocks * RT_BLOCK_VALUES, nValues);
    m_nCount.store(nCount + nValues, std::memory_order_release);
}

void RTCurveData::AddPulse(std::int32_t nPosition, std::uint8_t byState) {
    m_lstPulses.Append({nPosition, byState});
}
