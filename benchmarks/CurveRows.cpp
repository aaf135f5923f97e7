#include <malloc.h>

#include <memory>

#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/RTCurveData.h"

namespace {

constexpr std::uint32_t CURVE_VALUES = 2400000;

/// Bytes that the program holds on its heap.
std::size_t CountHeapBytes() {
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

void ScanExtremes(const RTCurveData& curve) {
    RTMinMax even;
    RTMinMax odd;
    const std::int16_t* pValues = curve.GetValues();
    for (std::uint32_t i = 0; i < CURVE_VALUES; i += 2) {
        even.Include(pValues[i]);
        odd.Include(pValues[i + 1]);
    }
    KeepResult(even);
    KeepResult(odd);
}

}  // namespace

void MeasureCurves(CTable& table) {
    const std::size_t nBefore = CountHeapBytes();
    const auto pCurve = std::make_unique<RTCurveData>(CURVE_VALUES);
    const std::size_t nTaken = CountHeapBytes() - nBefore;
    const auto free = pCurve->GetFreeValues();
    FillStrokes(free, 0);
    pCurve->PublishCount(CURVE_VALUES);

    const std::vector<double> times = MeasureInTurn({TimeCalls([&] {
                                                         pCurve->RecomputeExtremes();
                                                         KeepResult(*pCurve);
                                                     }),
                                                     TimeCalls([&] { ScanExtremes(*pCurve); })},
                                                    61);
    table.AddComparison("its extremes", times[0], "plain loop over its values", times[1],
                        Goal{Goal::Faster, 1});

    constexpr double RAW_BYTES = CURVE_VALUES * sizeof(std::int16_t);
    table.AddShare("its memory above the raw values",
                   100 * (double(nTaken) - RAW_BYTES) / RAW_BYTES, "of 4.8 MB", 5);
}
