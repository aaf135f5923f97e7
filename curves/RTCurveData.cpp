#include "curves/RTCurveData.h"

#include <bit>
#include <cassert>
#include <new>

#include "platform/system/Exceptions.h"

namespace {

std::unique_ptr<std::int16_t[]> AllocateValues(std::uint32_t nLength) {
    if (nLength > RTCurveData::MAX_VALUES) throw CMemoryException();
    try {
        return std::make_unique_for_overwrite<std::int16_t[]>(nLength);
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

RTValueSummary MakeSummary(std::uint32_t nLength) {
    try {
        return RTValueSummary(nLength);
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

}  // namespace

RTCurveData::RTCurveData(std::uint32_t nCapacity) : RTCurveData(nCapacity, nCapacity) {}

RTCurveData::RTCurveData(std::uint32_t nCount, std::uint32_t nCapacity)
    : m_nCapacity(nCapacity), m_nArrayLength(nCount), m_pValues(AllocateValues(nCount)),
      m_summary(MakeSummary(nCount)) {
    m_anMarkers.fill(-1);
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
    if (nValues == 0) return;
    m_summary.Append(m_pValues.get(), nCount, pBytes, nValues);
    m_nCount.store(nCount + nValues, std::memory_order_release);
}

RTMinMax RTCurveData::FindMinMax(std::uint32_t nFirst, std::uint32_t nLast) const {
    return m_summary.Find(m_pValues.get(), nFirst, nLast);
}

void RTCurveData::RecomputeExtremes() {
    const std::uint32_t nCount = GetCount();
    const RTMinMax even = FindMinMax(0, nCount);
    const RTMinMax odd = FindMinMax(1, nCount);
    SetExtremes({even.m_nMax, even.m_nMin, odd.m_nMax, odd.m_nMin});
}
