#include "curves/RTCurveData.h"

#include <cassert>
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

void RTCurveData::PublishCount(std::uint32_t nCount) {
    assert(nCount >= m_nCount.load(std::memory_order_relaxed) && nCount <= m_nArrayLength);
    m_summary.Extend(m_pValues.get(), nCount);
    m_nCount.store(nCount, std::memory_order_release);
}

void RTCurveData::AddPulse(std::int32_t nPosition, std::uint8_t byState) {
    m_lstPulses.Append({nPosition, byState});
}
