#include <fstream>
#include <malloc.h>
#include <memory>
#include <unistd.h>
#include <vector>

#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/RTCurveData.h"

namespace {

constexpr std::uint32_t CURVE_VALUES = 2400000;
constexpr std::size_t CURVES = 10;

/// Bytes of this process that are in memory and stand in no file.
double ReadResidentBytes() {
    long nPages = 0;
    long nResident = 0;
    long nOfFiles = 0;
    std::ifstream("/proc/self/statm") >> nPages >> nResident >> nOfFiles;
    return static_cast<double>(nResident - nOfFiles) * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

}  // namespace

void MeasureMemory(CTable& table) {
    ::malloc_trim(0);
    const double dBefore = ReadResidentBytes();
    std::vector<std::unique_ptr<RTCurveData>> curves;
    for (unsigned n = 0; n < CURVES; ++n) {
        curves.push_back(std::make_unique<RTCurveData>(CURVE_VALUES));
        const auto free = curves.back()->GetFreeValues();
        FillStrokes(free, n);
        curves.back()->PublishCount(CURVE_VALUES);
    }
    constexpr double RAW_BYTES = CURVES * CURVE_VALUES * sizeof(std::int16_t);
    const double dTaken = ReadResidentBytes() - dBefore;
    table.AddNumber("its memory above its values", 100 * (dTaken - RAW_BYTES) / RAW_BYTES,
                    "percent of 4.8 MB", 5);
}
