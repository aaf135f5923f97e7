// The parts of the curve set record of an .rt3 file, as whatever reads it comes by them.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "curves/RTCurveData.h"
#include "platform/system/Types.h"

class CArchive;

/// Lengths without values and pulses: of the current version, and of the oldest, which is the
/// shortest.
constexpr std::uint64_t CURVE_RECORD_LENGTH = 62;
constexpr std::uint64_t SHORTEST_CURVE_RECORD_LENGTH = 14;
constexpr std::uint64_t PULSE_LENGTH = 5;

/// What the work on a set that has been read takes for each curve: the list's entry in whatever is
/// made from it, such as a picture.
constexpr std::uint64_t WORK_ENTRY_LENGTH = 32;

/// What a curve record says beside its values and pulse records.
struct RTCurveHead {
    std::uint16_t m_wReserved = 0;
    std::uint32_t m_nCount = 0;  ///< values
    std::uint32_t m_nCapacity = 0;
    std::array<std::int32_t, RTCurveData::MARKER_COUNT> m_anMarkers{};
    std::optional<RTExtremes> m_extremes;  ///< none: the version does not hold them
};

// All throw CArchiveException and CFileException; a count of values or pulse records that the rest
// of the file cannot hold is reported as a file that ends too early, before any of them is read.

/// Reads the version, which is 0 for a set from before versioning, and calls readCurve for each
/// curve where its record begins. While it does, as much memory as is needed for the work on the
/// set stays free: a list that takes all that there is leaves a program that can go on.
void ReadCurveLists(CArchive& ar, std::uint8_t& byVersion,
                    const std::function<void(std::size_t nChannel)>& readCurve);

/// Reads a curve record up to its values.
/// @throws CMemoryException for a count that no memory can hold
RTCurveHead ReadCurveBegin(CArchive& ar);

/// Reads how many pulse records follow the values.
std::uint32_t ReadPulseCount(CArchive& ar);

/// Reads what stands behind the pulse records.
void ReadCurveEnd(CArchive& ar, std::uint8_t byVersion, RTCurveHead& head);
