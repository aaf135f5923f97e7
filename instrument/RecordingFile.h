// Recordings of a press in text files.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "instrument/TextTable.h"

/// Which columns hold the quantities: a name from the header row (case does not matter, a unit
/// behind it may be left out), or a number from 1. A name goes before a number. Empty: found by the
/// usual names.
struct RecordingColumns {
    std::string m_strFirst;
    std::string m_strSecond;
    bool m_bTimes = true;  ///< false: a column of times is passed over, whatever it holds
};

/// The values of a recording as they stand in the file, in equal steps of time.
struct Recording {
    std::string m_strFirstName;
    std::string m_strSecondName;     ///< empty: the file has no second quantity
    std::vector<double> m_adFirst;   ///< one per row, at least one row
    std::vector<double> m_adSecond;  ///< as many, or none
    /// By the file's column of times, in rows per second; none: it has no such column.
    std::optional<double> m_rowsPerSecond;
    std::string m_strTimeName;
    std::string m_strForm;  ///< how the file is written, in words
};

/// Reads a recording: one row per step, as CTextTable reads them.
///
/// Without a column given, the first quantity is the column "force", "load" or "kraft", else the
/// first one; the second is the column "displacement", "position", "distance", "voltage", "weg" or
/// "spannung", else the one after the first, else there is none; these may be the last word of a
/// longer name, such as "ch1_force". A column "time", "t" or "zeit" is neither, unless it is asked
/// for: it gives the rate, in seconds or in the unit behind its name (s, ms or us, in brackets or
/// behind a slash, comma, blank or underscore).
/// @throws CRecordingError as CTextTable, and when the file has more than ten million rows or none,
///         lacks a column, a value is not a finite number, or a time does not come after the one
///         before or only after a gap
Recording ReadRecording(const std::string& strPath, const RecordingColumns& columns);
