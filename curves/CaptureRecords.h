// The two records that lead an .rt3 file: the screen's acquisition settings and the plots' spans.
#pragma once

#include <array>
#include <cstdint>

#include "curves/RTCurves.h"

/// The screen record. Fields that an older version did not hold have the values given here, and the
/// rates those of the instrument that the file's second input tells of.
struct RTScreenRecord {
    static constexpr std::int32_t CURRENT_VERSION = 4;

    std::int32_t m_nVersion = CURRENT_VERSION;  ///< of the file; always written as the current one
    std::uint8_t m_nMode = 0;                   ///< instrument mode; from version 2
    std::uint8_t m_nPositionInput = 0;          ///< kind of second input; from version 3
    std::uint16_t m_nValueRate = 40000;         ///< values per second and channel; from version 4
    std::uint16_t m_nAuxRate = 20000;           ///< from version 4
};

/// The plot record: the span of values of each plot, that is the capacity of the newest curve
/// started on its channel, or 1.
struct RTPlotRecord {
    std::uint8_t m_nPlots = CRTCurves::CHANNEL_COUNT;  ///< how many of the spans the file holds
    std::array<std::int32_t, CRTCurves::CHANNEL_COUNT> m_anSpans{1, 1, 1};
};

/// @throws CFileException, CArchiveException
void WriteScreenRecord(CArchive& ar, const RTScreenRecord& record);
RTScreenRecord ReadScreenRecord(CArchive& ar);

/// Always writes three spans.
/// @throws CFileException, CArchiveException
void WritePlotRecord(CArchive& ar, const RTPlotRecord& record);

/// Counts m_nPlots up with each span read, so that at an exception it tells how many are there. A
/// plot count above 3 is refused with none.
/// @throws CFileException, CArchiveException
void ReadPlotRecord(CArchive& ar, RTPlotRecord& record);
