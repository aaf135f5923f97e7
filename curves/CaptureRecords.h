// The two records that lead an .rt3 file: the screen's acquisition settings and the plots' spans.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "curves/RTCurves.h"

/// The screen record. What is none, an older file did not hold.
struct RTScreenRecord {
    static constexpr std::int32_t CURRENT_VERSION = 4;

    std::int32_t m_nVersion = CURRENT_VERSION;  ///< of the file; always written as the current one
    std::optional<std::uint8_t> m_nMode;        ///< instrument mode; written as 0 when none
    std::optional<std::uint8_t> m_nPositionInput;  ///< kind of second input; written as 0 when none
    /// Values per second and channel, and the second rate. Those of an older file are the
    /// instrument's that its second input tells of.
    std::uint16_t m_nValueRate = 40000;
    std::uint16_t m_nAuxRate = 20000;
    std::uint8_t m_nRatesRead = 0;  ///< how many of the two a file has given, or told of
};

/// The plot record: the span of values of each plot, that is the capacity of the newest curve
/// started on its channel, or 1.
struct RTPlotRecord {
    std::uint8_t m_nPlots = CRTCurves::CHANNEL_COUNT;  ///< how many of the spans the file holds
    std::array<std::int32_t, CRTCurves::CHANNEL_COUNT> m_anSpans{1, 1, 1};
};

/// Lengths in bytes of the records as they are written.
constexpr std::uint64_t SCREEN_RECORD_LENGTH = 10;
constexpr std::uint64_t PLOT_RECORD_LENGTH = 13;

/// @throws CFileException, CArchiveException
void WriteScreenRecord(CArchive& ar, const RTScreenRecord& record);

/// At an exception the fields read before it are there, and the others as they were.
/// @throws CFileException, CArchiveException
void ReadScreenRecord(CArchive& ar, RTScreenRecord& record);

/// Always writes three spans.
/// @throws CFileException, CArchiveException
void WritePlotRecord(CArchive& ar, const RTPlotRecord& record);

/// Counts m_nPlots up with each span read, so that at an exception it tells how many are there. A
/// plot count above 3 is refused with none.
/// @throws CFileException, CArchiveException
void ReadPlotRecord(CArchive& ar, RTPlotRecord& record);
