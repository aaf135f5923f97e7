// Recordings of a press in comma-separated text files.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

/// A recording that cannot be used. The text says which file and line, and why.
class CRecordingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Which columns hold the quantities: a name from the header row (case does not matter), or a
/// number from 1. A name goes before a number. Empty: found by the usual names.
struct RecordingColumns {
    std::string m_strFirst;
    std::string m_strSecond;
};

/// The values of a recording as they stand in the file, in equal steps of time.
struct Recording {
    std::string m_strFirstName;
    std::string m_strSecondName;     ///< empty: the file has no second quantity
    std::vector<double> m_adFirst;   ///< one per row, at least one row
    std::vector<double> m_adSecond;  ///< as many, or none
};

/// Reads a recording: a header row, then one row per step, separated by commas, with a point as
/// decimal separator. Blank lines are skipped; other columns need not hold numbers.
///
/// Without a column given, the first quantity is the column "force", else the first one; the second
/// is the column "displacement", "position", "distance" or "voltage", else the one after the first,
/// else there is none.
/// @throws CRecordingError when the file cannot be read, is no regular file or larger than 256 MiB,
///         has a line above 64 KiB or more than ten million rows, holds no rows, lacks a column, or
///         a value is not a finite number
Recording ReadRecording(const std::string& strPath, const RecordingColumns& columns);
