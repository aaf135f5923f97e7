#include "curves/CsvExport.h"

#include <algorithm>

#include "curves/CsvFile.h"
#include "curves/CsvText.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Progress.h"
#include "platform/system/TextFile.h"

namespace {

constexpr std::uint32_t ROWS_PER_PART = 1024;
constexpr std::uint32_t ROWS_PER_REPORT = 64 * ROWS_PER_PART;
/// "\r\n", a time and a comma, "-32.768,-32.768", and one may stand behind the last.
constexpr std::size_t MAX_ROW_LENGTH = 2 + CStepTimes::MAX_LENGTH + 1 + 15 + 1;
static_assert(ROWS_PER_PART * MAX_ROW_LENGTH <= CTextFile::MAX_ROOM);

/// Writes the header and a row for each step of one value, or of two.
template <unsigned STEP_VALUES>
void WriteRows(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options,
               IProgress* pProgress) {
    const std::uint32_t nRows = curve.GetCount() / STEP_VALUES;
    RTMinMax range{0, 0};
    range.Include(curve.FindMinMax(0, STEP_VALUES * nRows));
    range.Include(curve.FindMinMax(1, STEP_VALUES * nRows));
    const CThousandths texts(range);
    CStepTimes times(options.m_nValueRate, STEP_VALUES);
    if (options.m_bTimeColumn)
        file.WriteString(options.m_nValueRate > 0 ? "Time (ms), " : "Index, ");
    file.WriteString(STEP_VALUES == 2 ? "Force, Distance" : "Force");

    std::uint32_t nRow = 0;
    while (nRow < nRows) {
        const std::uint32_t nPartEnd = std::min(nRows, nRow + ROWS_PER_PART);
        const std::int16_t* pValue = curve.GetValues() + STEP_VALUES * std::size_t{nRow};
        char* pTo = file.GetBuffer();
        for (; nRow < nPartEnd; ++nRow, pValue += STEP_VALUES) {
            *pTo++ = '\r';
            *pTo++ = '\n';
            if (options.m_bTimeColumn) {
                pTo = times.Append(pTo);
                *pTo++ = ',';
            }
            pTo = texts.Append(pTo, pValue[0]);
            if constexpr (STEP_VALUES == 2) {
                *pTo++ = ',';
                pTo = texts.Append(pTo, pValue[1]);
            }
        }
        file.ReleaseBuffer(pTo);
        if (pProgress && nRow % ROWS_PER_REPORT == 0 && !pProgress->Advance(nRow, nRows))
            throw CUserException();
    }
}

}  // namespace

void WriteCurveCsv(CTextFile& file, const RTCurveData& curve, const RTCsvOptions& options,
                   IProgress* pProgress) {
    WriteCsv(file, [&] {
        if (options.m_bPairs)
            WriteRows<2>(file, curve, options, pProgress);
        else
            WriteRows<1>(file, curve, options, pProgress);
    });
}

void ExportCurveCsv(const std::wstring& strPath, const RTCurveData& curve,
                    const RTCsvOptions& options, IProgress* pProgress) {
    ExportCsv(strPath, [&](CTextFile& file) { WriteCurveCsv(file, curve, options, pProgress); });
}
