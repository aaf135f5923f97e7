#include "curves/RTCurves.h"

#include <new>

#include "platform/system/Exceptions.h"

IMPLEMENT_SERIAL(CRTCurves, VERSIONABLE_SCHEMA | 1)

std::shared_ptr<RTCurveData> CRTCurves::AddCurve(std::size_t nChannel, std::uint32_t nCapacity) {
    try {
        return m_lstCurves[nChannel].emplace_back(std::make_shared<RTCurveData>(nCapacity));
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}
