#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include "Files.h"
#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/CsvExport.h"
#include "curves/RTCurveData.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr std::uint32_t CURVE_VALUES = 2400000;
constexpr int ROUNDS = 11;

void PrintCsv(const std::wstring& strPath, const RTCurveData& curve) {
    std::FILE* pFile = std::fopen(ToUtf8(strPath).c_str(), "w");
    if (!pFile) throw std::runtime_error("no temporary file");
    std::fprintf(pFile, "Force, Distance");
    const std::int16_t* pValues = curve.GetValues();
    for (std::uint32_t n = 0; n < CURVE_VALUES; n += 2)
        std::fprintf(pFile, "\r\n%.3f,%.3f", pValues[n] / 1000.0, pValues[n + 1] / 1000.0);
    std::fclose(pFile);
}

}  // namespace

void MeasureCsv(CTable& table) {
    const TemporaryFolder folder;
    const std::wstring strOurs = folder.Path("ours.csv");
    const std::wstring strPlain = folder.Path("plain");
    RTCurveData curve(CURVE_VALUES);
    const auto free = curve.GetFreeValues();
    FillStrokes(free, 0);
    curve.PublishCount(CURVE_VALUES);
    ExportCurveCsv(strOurs, curve);
    const std::vector<std::uint8_t> bytes = CopyFile(strOurs);
    const std::vector<Figures> figures =
        MeasureInTurn({TimeCalls([&] { ExportCurveCsv(strOurs, curve); }),
                       TimeCalls([&] { PrintCsv(strPlain, curve); }),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, false); })},
                      ROUNDS, Figures::Median);  // as with the captures
    table.AddComparison("export", figures[0], "fprintf of each row", figures[1],
                        Goal{Goal::Faster, 20});
    table.AddComparison("export", figures[0], "same bytes written at once", figures[2],
                        Goal{Goal::Within, 1});
}
