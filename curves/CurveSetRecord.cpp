// The curve set record of an .rt3 file.
#include <algorithm>
#include <cstring>
#include <string>

#include "curves/RTCurves.h"
#include "platform/system/Archive.h"
#include "platform/system/MemoryReserve.h"

namespace {

/// A first byte up to this is the channel count itself.
constexpr BYTE LAST_UNVERSIONED_COUNT = 10;
constexpr BYTE FIRST_WITH_MARKERS = 11;
constexpr BYTE FIRST_WITH_MARKERS_AS_STORED = 13;
constexpr BYTE FIRST_WITH_EXTREMES = 14;

/// Lengths without values and pulses: of the current version, and of the oldest, which is the
/// shortest.
constexpr std::uint64_t CURVE_RECORD_LENGTH = 62;
constexpr std::uint64_t SHORTEST_CURVE_RECORD_LENGTH = 14;
constexpr std::uint64_t PULSE_LENGTH = 5;

/// What loading may take, for each byte of the file.
constexpr std::uint64_t MAX_MEMORY_FACTOR = 16;
/// Of each curve of a set: its place in the list, with the old one when the list has grown; the
/// list's entry in whatever is made from the set, such as a picture. The rest is the curve's own,
/// with what shared ownership and the heap add.
constexpr std::uint64_t LIST_PLACE_LENGTH = 48;
constexpr std::uint64_t WORK_ENTRY_LENGTH = 32;
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

/// @param pWhat what the nCount things of nLength bytes are, for the operator
/// @throws CArchiveException when so many bytes cannot follow
void EnsureFits(const CArchive& ar, std::uint64_t nLength, std::uint32_t nCount,
                const wchar_t* pWhat) {
    if (!ar.CanFollow(nLength))
        ar.ReportEarlyEnd(L"A curve is said to have " + std::to_wstring(nCount) + pWhat +
                          L", but only " + std::to_wstring(ar.GetBytesLeft()) + L" bytes follow.");
}

void ReadValues(CArchive& ar, RTCurveData& curve, std::uint32_t nCount) {
    while (curve.GetCount() < nCount) {
        const auto nValues = static_cast<std::uint32_t>(
            std::min<std::size_t>(VALUES_PER_PART, nCount - curve.GetCount()));
        ar.EnsureRead(curve.GetFreeValues().data(), nValues * sizeof(std::int16_t));
        curve.PublishCount(curve.GetCount() + nValues);
    }
}

void ReadPulses(CArchive& ar, RTCurveData& curve) {
    std::int32_t nCount = 0;
    ar >> nCount;
    if (nCount <= 0) return;
    EnsureFits(ar, PULSE_LENGTH * static_cast<std::uint64_t>(nCount),
               static_cast<std::uint32_t>(nCount), L" pulse records");

    PulsePart part;
    for (std::size_t nLeft = static_cast<std::size_t>(nCount); nLeft > 0;) {
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

/// Until version 12 a pair of markers that was not set could be stored as two zeros.
void ClearZeroPairs(std::array<std::int32_t, RTCurveData::MARKER_COUNT>& anMarkers) {
    for (std::size_t nSlot = 0; nSlot < anMarkers.size(); nSlot += 2)
        if (anMarkers[nSlot] == 0 && anMarkers[nSlot + 1] == 0)
            anMarkers[nSlot] = anMarkers[nSlot + 1] = -1;
}

std::shared_ptr<RTCurveData> ReadCurve(CArchive& ar, BYTE byVersion) {
    WORD wReserved = 0;
    DWORD nCount = 0;
    DWORD nCapacity = 0;
    ar >> wReserved >> nCount >> nCapacity;
    if (nCount > RTCurveData::MAX_VALUES) throw CMemoryException();
    EnsureFits(ar, sizeof(std::int16_t) * std::uint64_t{nCount}, nCount, L" values");

    auto pCurve = std::make_shared<RTCurveData>(nCount, nCapacity);
    pCurve->m_wReserved = wReserved;
    ReadValues(ar, *pCurve, nCount);
    ReadPulses(ar, *pCurve);
    if (byVersion >= FIRST_WITH_MARKERS) {
        for (std::int32_t& nMarker : pCurve->m_anMarkers) ar >> nMarker;
        if (byVersion < FIRST_WITH_MARKERS_AS_STORED) ClearZeroPairs(pCurve->m_anMarkers);
    }
    if (byVersion >= FIRST_WITH_EXTREMES) {
        RTExtremes extremes;
        ar >> extremes.m_nMaxOdd >> extremes.m_nMinOdd >> extremes.m_nMaxEven >>
            extremes.m_nMinEven;
        pCurve->SetExtremes(extremes);
    } else {
        pCurve->RecomputeExtremes();
    }
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

/// Reads a list. While it does, as much memory as is needed for the work on the set stays free: a
/// list that takes all that there is leaves a program that can go on.
void ReadList(CArchive& ar, BYTE byVersion, RTCurveList& list, std::uint64_t& nLongestList) {
    std::int32_t nCurves = 0;
    ar >> nCurves;
    if (nCurves <= 0) return;
    // The number of curves is not refused: the curves in front of an early end are kept.
    nLongestList =
        std::max(nLongestList, std::min(static_cast<std::uint64_t>(nCurves),
                                        ar.GetBytesLeft() / SHORTEST_CURVE_RECORD_LENGTH));
    const CMemoryReserve forTheWork(WORKING_MEMORY + nLongestList * WORK_ENTRY_LENGTH);
    for (; nCurves > 0; --nCurves) list.push_back(ReadCurve(ar, byVersion));
}

void ReadSet(CArchive& ar, CRTCurves& set) {
    BYTE nChannels = 0;
    ar >> nChannels;
    set.m_byVersion = 0;
    if (nChannels > LAST_UNVERSIONED_COUNT) {
        set.m_byVersion = nChannels;
        ar >> nChannels;
    }
    if (nChannels > set.m_lstCurves.size())
        ar.RefuseContents(L"The file lists " + std::to_wstring(nChannels) +
                          L" channels; a capture has at most 3.");
    std::uint64_t nLongestList = 0;
    for (std::size_t nChannel = 0; nChannel < nChannels; ++nChannel)
        ReadList(ar, set.m_byVersion, set.m_lstCurves[nChannel], nLongestList);
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
            ReadSet(ar, *this);
    });
}
