// A curve as comma-separated text for other programs.
#pragma once

#include <cstdint>
#include <string>

#include "curves/RTCurveData.h"

class CTextFile;
class IProgress;

/// What a person may ask for beyond what the screen exports.
struct RTCsvOptions {
    bool m_bTimeColumn = false;  ///< a first column "Time", milliseconds from the curve's beginning
    std::uint16_t m_nValueRate = 0;  ///< for that column, values per second; 0: it counts values
};

/// Writes the header "Force, Distance" and a row for each complete pair of values, in thousandths
/// of a value: -32768 is -32.768. There is no line break at the end. The count of a curve that is
/// being filled is taken once. Closes the file. The error of a regular file that could not be
/// written says that the lines before the failure are kept.
/// @throws CFileException, CUserException
void WriteCurveCsv(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options = {},
                   IProgress* pProgress = nullptr);

/// As WriteCurveCsv, to a file that is created, or replaces an existing one. At a failure the file
/// keeps the lines written before it; stopped by the person, it is removed, and of a symbolic link
/// the file that it leads to. File listeners hear of it.
/// @throws CFileException, CMemoryException, CUserException
void ExportCurveCsv(const std::wstring& strPath, const RTCurveData& curve,
                    const RTCsvOptions& options = {}, IProgress* pProgress = nullptr);
