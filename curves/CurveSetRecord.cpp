// The curve set record of an .rt3 file, to and from a set in memory.
#include <algorithm>
#include <cstring>

#include "curves/CurveRecord.h"
#include "curves/RTCurves.h"
#include "platform/system/Archive.h"

namespace {

/// What loading may take, for each byte of the file.
constexpr std::uint64_t MAX_MEMORY_FACTOR = 16;
/// Of each curve of a set: its place in the list, with the old one when the list has grown. The
/// rest is the curve's own, with what shared ownership and the heap add.
constexpr std::uint64_t LIST_PLACE_LENGTH = 48;
constexpr std::uint64_t OWNERSHIP_LENGTH = 24;
static_assert(sizeof(RTCurveData) + OWNERSHIP_LENGTH + LIST_PLACE_LENGTH + WORK_ENTRY_LENGTH <=
              MAX_MEMORY_FACTOR * SHORTEST_CURVE_RECORD_LENGTH);

/// Read, and then summarised, while they are at hand still.
constexpr std::size_t VALUES_PER_PART = std::size_t{2} << 20;
constexpr std::size_t PULSES_PER_PART = 4096;
using PulsePart = std::array<std::uint8_t, PULSES_PER_PART * PULSE_LENGTH>;

void WritePulses(CArchive& ar, const RTPulseList& pulses, std::size_t nCount) {
    PulsePart part;
    for (std::size_t nFirst = 0; nFirst < nCount; nFirst += PULSES_PER_PART) {
        const std::size_t nPulses = std::min(PULSES_PER_PART, nCount - nFirst);
        std::uint8_t* pTo = part.data();
        for (std::size_t nPulse = nFirst; nPulse < nFirst + nPulses; ++nPulse) {
            const RTPulse& pulse = pulses.At(nPulse);
            std::memcpy(pTo, &pulse.m_nPosition, sizeof pulse.m_nPosition);
            pTo[4] = pulse.m_byState;
            pTo += PULSE_LENGTH;
        }
        ar.Write(part.data(), nPulses * PULSE_LENGTH);
    }
}

void WriteCurve(CArchive& ar, RTCurveData& curve, bool bRecompute) {
    // The writer of a curve counts values before the pulse that stands behind them: taken in the
    // reverse order, no pulse lies behind the last value.
    const std::size_t nPulses = curve.GetPulses().GetCount();
    const std::uint32_t nCount = curve.GetCount();
    if (bRecompute) curve.SetExtremes(curve.FindExtremes(nCount));
    const RTExtremes extremes = curve.GetExtremes();

    ar << curve.m_wReserved << nCount << curve.GetCapacity();
    ar.Write(curve.GetValues(), nCount * sizeof(std::int16_t));
    ar << static_cast<std::int32_t>(nPulses);
    WritePulses(ar, curve.GetPulses(), nPulses);
    for (const std::int32_t nMarker : curve.m_anMarkers) ar << nMarker;
    ar << extremes.m_nMaxOdd << extremes.m_nMinOdd << extremes.m_nMaxEven << extremes.m_nMinEven;
}

void ReadValues(CArchive& ar, RTCurveData& curve, std::uint32_t nCount) {
    while (curve.GetCount() < nCount) {
        const auto nValues = static_cast<std::uint32_t>(
            std::min<std::size_t>(VALUES_PER_PART, nCount - curve.GetCount()));
        ar.EnsureRead(curve.GetFreeValues().data(), nValues * sizeof(std::int16_t));
        curve.PublishCount(curve.GetCount() + nValues);
    }
}

void ReadPulses(CArchive& ar, RTCurveData& curve, std::uint32_t nCount) {
    PulsePart part;
    for (std::size_t nLeft = nCount; nLeft > 0;) {
        const std::size_t nPulses = std::min(PULSES_PER_PART, nLeft);
        ar.EnsureRead(part.data(), nPulses * PULSE_LENGTH);
        for (std::size_t nPulse = 0; nPulse < nPulses; ++nPulse) {
            const std::uint8_t* pFrom = part.data() + nPulse * PULSE_LENGTH;
            std::int32_t nPosition;
            std::memcpy(&nPosition, pFrom, sizeof nPosition);
            curve.AddPulse(nPosition, pFrom[4]);
        }
        nLeft -= nPulses;
    }
}

std::shared_ptr<RTCurveData> ReadCurve(CArchive& ar, BYTE byVersion) {
    RTCurveHead head = ReadCurveBegin(ar);
    auto pCurve = std::make_shared<RTCurveData>(head.m_nCount, head.m_nCapacity);
    pCurve->m_wReserved = head.m_wReserved;
    ReadValues(ar, *pCurve, head.m_nCount);
    ReadPulses(ar, *pCurve, ReadPulseCount(ar));
    ReadCurveEnd(ar, byVersion, head);
    pCurve->m_anMarkers = head.m_anMarkers;
    if (head.m_extremes)
        pCurve->SetExtremes(*head.m_extremes);
    else
        pCurve->RecomputeExtremes();
    return pCurve;
}

void WriteSet(CArchive& ar, const CRTCurves& set) {
    ar << CRTCurves::CURRENT_VERSION << static_cast<BYTE>(set.m_lstCurves.size());
    bool bRecompute = false;
    for (const RTCurveList& list : set.m_lstCurves) {
        ar << static_cast<std::int32_t>(list.size());
        if (!list.empty() && list.front()->GetExtremes() == RTExtremes{}) bRecompute = true;
        for (const auto& pCurve : list) WriteCurve(ar, *pCurve, bRecompute);
    }
}

}  // namespace

std::uint64_t CRTCurves::GetRecordLength() const {
    std::uint64_t nLength = 2;
    for (const RTCurveList& list : m_lstCurves) {
        nLength += sizeof(std::int32_t);
        for (const auto& pCurve : list)
            nLength += CURVE_RECORD_LENGTH +
                       sizeof(std::int16_t) * std::uint64_t{pCurve->GetCount()} +
                       PULSE_LENGTH * pCurve->GetPulses().GetCount();
    }
    return nLength;
}

void CRTCurves::Serialize(CArchive& ar) {
    CallWithMemoryException([&] {
        if (ar.IsStoring())
            WriteSet(ar, *this);
        else
            ReadCurveLists(ar, m_byVersion, [&](std::size_t nChannel) {
                m_lstCurves[nChannel].push_back(ReadCurve(ar, m_byVersion));
            });
    });
}
