#include <fstream>
#include <malloc.h>
#include <memory>
#include <unistd.h>

#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/RTCurveData.h"

namespace {

constexpr std::uint32_t CURVE_VALUES = 2400000;

/// Bytes of this process that are in memory.
double ReadResidentBytes() {
    long nPages = 0;
    long nResident = 0;
    std::ifstream("/proc/self/statm") >> nPages >> nResident;
    return static_cast<double>(nResident) * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

}  // namespace

void MeasureMemory(CTable& table) {
    ::malloc_trim(0);
    const double dBefore = ReadResidentBytes();
    const auto pCurve = std::make_unique<RTCurveData>(CURVE_VALUES);
    const auto free = pCurve->GetFreeValues();
    FillStrokes(free, 0);
    pCurve->PublishCount(CURVE_VALUES);
    constexpr double RAW_BYTES = CURVE_VALUES * sizeof(std::int16_t);
    const double dTaken = ReadResidentBytes() - dBefore;
    table.AddNumber("its memory above its values", 100 * (dTaken - RAW_BYTES) / RAW_BYTES,
                    "percent of 4.8 MB", 5);
}
