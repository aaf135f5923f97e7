#include "curves/RTCurveData.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <new>

#include "platform/system/Exceptions.h"

namespace {

std::unique_ptr<std::int16_t[]> AllocateValues(std::uint32_t nLength) {
    if (nLength > RTCurveData::MAX_VALUES) throw CMemoryException();
    return std::make_unique_for_overwrite<std::int16_t[]>(nLength);
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
    // Each piece is summarised while it is at hand still.
    constexpr std::uint32_t PIECE = 1024;
    std::uint32_t nCount = m_nCount.load(std::memory_order_relaxed);
    assert(nValues <= m_nArrayLength - nCount);
    while (nValues > 0) {
        const std::uint32_t nPiece = std::min(nValues, PIECE);
        std::memcpy(m_pValues.get() + nCount, pBytes, nPiece * sizeof(std::int16_t));
        nCount += nPiece;
        m_summary.Extend(m_pValues.get(), nCount);
        pBytes += nPiece * sizeof(std::int16_t);
        nValues -= nPiece;
    }
    m_nCount.store(nCount, std::memory_order_release);
}
