// A curve as comma-separated text for other programs.
#pragma once

#include <cstdint>
#include <string>

#include "curves/RTCurveData.h"

class CTextFile;
class IProgress;

/// What a person may ask for beyond what the screen exports.
struct RTCsvOptions {
    bool m_bPairs = true;  ///< false: each value is a step of its own
    /// A first column "Time (ms)", milliseconds from the curve's beginning.
    bool m_bTimeColumn = false;
    /// For that column, values per second; 0: it is "Index" and counts values.
    std::uint16_t m_nValueRate = 0;
};

/// Writes the header "Force, Distance" and a row for each complete pair of values, in thousandths
/// of a value: -32768 is -32.768; of single values the header "Force" and a row for each. There is
/// no line break at the end. The count of a curve that is being filled is taken once. Closes the
/// file, and fails as WriteCsv does.
/// @throws CFileException, CUserException
void WriteCurveCsv(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options = {},
                   IProgress* pProgress = nullptr);

/// As WriteCurveCsv, to a file that is created or replaced as ExportCsv does it.
/// @throws CFileException, CUserException
void ExportCurveCsv(const std::wstring& strPath, const RTCurveData& curve,
                    const RTCsvOptions& options = {}, IProgress* pProgress = nullptr);
