#include "curves/CaptureOutline.h"

#include <algorithm>

#include "platform/system/Archive.h"
#include "platform/system/Exceptions.h"

namespace {

/// An even number, so that a part begins with a value at an even index.
constexpr std::uint32_t VALUES_PER_PART = std::uint32_t{1} << 20;

/// Reads the values and finds their extremes.
RTExtremes ReadExtremes(CArchive& ar, std::uint32_t nCount) {
    RTMinMax even;
    RTMinMax odd;
    while (nCount > 0) {
        const std::uint32_t nValues = std::min(nCount, VALUES_PER_PART);
        RTCurveData part(nValues, nValues);
        ar.EnsureRead(part.GetFreeValues().data(), nValues * sizeof(std::int16_t));
        part.PublishCount(nValues);
        even.Include(part.FindMinMax(0, nValues));
        odd.Include(part.FindMinMax(1, nValues));
        nCount -= nValues;
    }
    return {even.m_nMax, even.m_nMin, odd.m_nMax, odd.m_nMin};
}

RTCurveOutline ReadOutline(CArchive& ar, std::uint8_t byVersion) {
    RTCurveOutline curve{ReadCurveBegin(ar), 0, {}};
    const std::uint64_t nValuesAt = ar.GetPosition();
    ar.Seek(nValuesAt + sizeof(std::int16_t) * std::uint64_t{curve.m_nCount});
    curve.m_nPulses = ReadPulseCount(ar);
    ar.Seek(ar.GetPosition() + PULSE_LENGTH * curve.m_nPulses);
    ReadCurveEnd(ar, byVersion, curve);
    curve.m_foundExtremes = curve.m_extremes.value_or(RTExtremes{});
    if (curve.m_foundExtremes != RTExtremes{}) return curve;

    const std::uint64_t nEndsAt = ar.GetPosition();
    ar.Seek(nValuesAt);
    curve.m_foundExtremes = ReadExtremes(ar, curve.m_nCount);
    ar.Seek(nEndsAt);
    return curve;
}

}  // namespace

void RTCaptureOutline::Serialize(CArchive& ar) {
    CallWithMemoryException([&] {
        m_plots.m_nPlots = 0;
        ReadScreenRecord(ar, m_screen);
        ReadPlotRecord(ar, m_plots);
        ReadCurveLists(ar, m_byVersion, [&](std::size_t nChannel) {
            m_lstCurves[nChannel].push_back(ReadOutline(ar, m_byVersion));
        });
        m_nBytesBehind = ar.GetBytesLeft();
    });
}

bool RTCaptureOutline::HasCurves() const {
    return std::ranges::any_of(m_lstCurves, [](const auto& list) { return !list.empty(); });
}
