#include "curves/CurveRecord.h"

#include <algorithm>
#include <string>

#include "curves/RTCurves.h"
#include "platform/system/Archive.h"
#include "platform/system/MemoryReserve.h"
#include "platform/system/NumberedText.h"

namespace {

/// A first byte up to this is the channel count itself.
constexpr BYTE LAST_UNVERSIONED_COUNT = 10;
constexpr BYTE FIRST_WITH_MARKERS = 11;
constexpr BYTE FIRST_WITH_MARKERS_AS_STORED = 13;
constexpr BYTE FIRST_WITH_EXTREMES = 14;

/// @param sentence says of a count, and of how many bytes follow, that they disagree
/// @throws CArchiveException when so many bytes cannot follow
void EnsureFits(const CArchive& ar, std::uint64_t nLength, std::uint32_t nCount,
                const NumberedText& sentence) {
    if (!ar.CanFollow(nLength))
        ar.ReportEarlyEnd(
            GetText(sentence, {std::to_wstring(nCount), std::to_wstring(ar.GetBytesLeft())}));
}

/// Until version 12 a pair of markers that was not set could be stored as two zeros.
void ClearZeroPairs(std::array<std::int32_t, RTCurveData::MARKER_COUNT>& anMarkers) {
    for (std::size_t nSlot = 0; nSlot < anMarkers.size(); nSlot += 2)
        if (anMarkers[nSlot] == 0 && anMarkers[nSlot + 1] == 0)
            anMarkers[nSlot] = anMarkers[nSlot + 1] = -1;
}

}  // namespace

void ReadCurveLists(CArchive& ar, std::uint8_t& byVersion,
                    const std::function<void(std::size_t nChannel)>& readCurve) {
    BYTE nChannels = 0;
    ar >> nChannels;
    byVersion = 0;
    if (nChannels > LAST_UNVERSIONED_COUNT) {
        byVersion = nChannels;
        ar >> nChannels;
    }
    if (nChannels > CRTCurves::CHANNEL_COUNT)
        ar.RefuseContents(GetText({3145, L"The file lists %1 channels; a capture has at most 3."},
                                  {std::to_wstring(nChannels)}));
    std::uint64_t nLongestList = 0;
    for (std::size_t nChannel = 0; nChannel < nChannels; ++nChannel) {
        std::int32_t nCurves = 0;
        ar >> nCurves;
        if (nCurves <= 0) continue;
        // The number of curves is not refused: the curves in front of an early end are kept.
        nLongestList =
            std::max(nLongestList, std::min(static_cast<std::uint64_t>(nCurves),
                                            ar.GetBytesLeft() / SHORTEST_CURVE_RECORD_LENGTH));
        const CMemoryReserve forTheWork(WORKING_MEMORY + nLongestList * WORK_ENTRY_LENGTH);
        for (; nCurves > 0; --nCurves) readCurve(nChannel);
    }
}

RTCurveHead ReadCurveBegin(CArchive& ar) {
    RTCurveHead head;
    ar >> head.m_wReserved >> head.m_nCount >> head.m_nCapacity;
    if (head.m_nCount > RTCurveData::MAX_VALUES) throw CMemoryException();
    EnsureFits(ar, sizeof(std::int16_t) * std::uint64_t{head.m_nCount}, head.m_nCount,
               {3147, L"A curve is said to have %1 values, but only %2 bytes follow."});
    return head;
}

std::uint32_t ReadPulseCount(CArchive& ar) {
    std::int32_t nStored = 0;
    ar >> nStored;
    const auto nCount = static_cast<std::uint32_t>(std::max(nStored, 0));
    EnsureFits(ar, PULSE_LENGTH * nCount, nCount,
               {3148, L"A curve is said to have %1 pulse records, but only %2 bytes follow."});
    return nCount;
}

void ReadCurveEnd(CArchive& ar, std::uint8_t byVersion, RTCurveHead& head) {
    head.m_anMarkers.fill(-1);
    if (byVersion >= FIRST_WITH_MARKERS) {
        for (std::int32_t& nMarker : head.m_anMarkers) ar >> nMarker;
        if (byVersion < FIRST_WITH_MARKERS_AS_STORED) ClearZeroPairs(head.m_anMarkers);
    }
    if (byVersion < FIRST_WITH_EXTREMES) return;
    RTExtremes extremes;
    ar >> extremes.m_nMaxOdd >> extremes.m_nMinOdd >> extremes.m_nMaxEven >> extremes.m_nMinEven;
    head.m_extremes = extremes;
}
