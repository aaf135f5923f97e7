// The curve set record of an .rt3 file.
#pragma once

#include <array>
#include <cstdint>

#include "curves/RTCurves.h"

class IRTProgress;

using RTCurveLists = std::array<RTCurveList, CRTCurves::CHANNEL_COUNT>;

/// Writes three lists of curves in the current version. Each curve is written as far as its count
/// and its pulse count had come when its turn began, so a capture may go on meanwhile; the lists
/// themselves must not change (write a copy of those in hand).
///
/// From the first list whose first curve has extremes of all 0 on, the extremes of every curve are
/// computed anew, written, and kept in the curve.
/// @throws CFileException, CArchiveException, CUserException
void WriteCurveSet(CArchive& ar, const RTCurveLists& lists, IRTProgress* pProgress = nullptr);

/// Reads a curve set record of any version and appends its curves to the lists of a set, which must
/// not be in other hands meanwhile. At an exception the curves read completely stay.
///
/// Memory is taken only for what the rest of the file can hold: a longer value or pulse count is
/// reported as a file that ends too early, before any of it is read.
/// @throws CFileException, CArchiveException, CMemoryException, CUserException
void ReadCurveSet(CArchive& ar, CRTCurves& set, IRTProgress* pProgress = nullptr);

/// The length in bytes of the record that WriteCurveSet writes.
std::uint64_t GetCurveSetLength(const RTCurveLists& lists);
