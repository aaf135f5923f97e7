// The evaluation of strokes, against one plain pass over their values.
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "PressStroke.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "curves/CaptureFile.h"
#include "evaluation/Verdict.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr std::uint32_t LONG_VALUES = 2'400'000;
constexpr std::uint32_t SHORT_VALUES = 120'000;
constexpr int CAPTURES = 1000;
constexpr int ROUNDS = 21;
constexpr int RUN_ROUNDS = 5;
constexpr const char* PLAIN = "plain passes over the values";

/// The least and largest of both quantities, value by value.
[[gnu::optimize("no-tree-vectorize"), gnu::noinline]] RTExtremes
PassPlainly(const std::int16_t* pValues, std::size_t nCount) {
    RTExtremes found{INT16_MIN, INT16_MAX, INT16_MIN, INT16_MAX};
    for (std::size_t n = 0; n + 1 < nCount; n += 2) {
        found.m_nMaxEven = std::max(found.m_nMaxEven, pValues[n]);
        found.m_nMinEven = std::min(found.m_nMinEven, pValues[n]);
        found.m_nMaxOdd = std::max(found.m_nMaxOdd, pValues[n + 1]);
        found.m_nMinOdd = std::min(found.m_nMinOdd, pValues[n + 1]);
    }
    return found;
}

/// The same for a curve as often as a process that takes a while needs it.
void PassOften(const RTCurveData& curve, int nTimes) {
    for (int n = 0; n < nTimes; ++n) KeepResult(PassPlainly(curve.GetValues(), curve.GetCount()));
}

void MeasureLongStroke(CTable& table) {
    RTCurveData curve(LONG_VALUES);
    FillPressStroke(curve);
    const CLimitsFile limits = MakePressLimits(curve);
    const Limits none;
    const auto figures = MeasureInTurn(
        {TimeCalls([&] { PassOften(curve, 1); }),
         TimeCalls([&] { KeepResult(MeasureStroke(CStroke(curve, PRESS_STROKE_RATE), none)); }),
         TimeCalls([&] {
             KeepResult(JudgeStroke(CStroke(curve, PRESS_STROKE_RATE), limits.GetLimits()));
         })},
        ROUNDS);
    table.AddComparison("the standard features", figures[1], PLAIN, figures[0],
                        Goal{Goal::Within, 3});
    table.AddComparison("ten objects", figures[2], PLAIN, figures[0], Goal{Goal::Within, 6});
}

/// rt3 as a process of its own, its start included.
void MeasureManyCaptures(CTable& table) {
    const TemporaryFolder folder;
    RTCaptureFile capture;
    capture.m_screen.m_nMode = 1;
    RTCurveData& curve = *capture.m_curves.AddCurve(0, SHORT_VALUES);
    FillPressStroke(curve);
    curve.RecomputeExtremes();
    folder.Put("limits.json", MakePressLimits(curve).GetText());
    for (int n = 0; n < CAPTURES; ++n) {
        CFile file(folder.Path(std::to_string(n) + ".rt3"), CFile::modeWrite | CFile::modeCreate);
        WriteCapture(file, capture);
        file.Close();
    }
    const std::string strCommand = "cd '" + folder.GetPath().native() + "' && '" +
                                   ToUtf8(GetExecutableFolder()) +
                                   "/rt3' check --limits limits.json *.rt3 >/dev/null";
    const auto figures = MeasureInTurn({TimeCalls([&] { PassOften(curve, CAPTURES); }, Clock::Wall),
                                        TimeCalls(
                                            [&] {
                                                if (std::system(strCommand.c_str()) != 0)
                                                    throw std::runtime_error("rt3 check failed");
                                            },
                                            Clock::Wall)},
                                       RUN_ROUNDS, Figures::Median);
    table.AddComparison("rt3 check of 1,000 captures of 3 s, by the clock", figures[1], PLAIN,
                        figures[0], Goal{Goal::Within, 10});
}

}  // namespace

void MeasureEvaluation(CTable& table) {
    MeasureLongStroke(table);
    MeasureManyCaptures(table);
}
