// The evaluation of strokes, against one plain pass over their values.
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "curves/CaptureFile.h"
#include "evaluation/LimitsFile.h"
#include "evaluation/Verdict.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr std::uint32_t LONG_VALUES = 2'400'000;
constexpr std::uint32_t SHORT_VALUES = 120'000;
constexpr unsigned RATE = 40'000;
constexpr int CAPTURES = 1000;
constexpr int ROUNDS = 21;
constexpr int RUN_ROUNDS = 5;
constexpr int DEEPEST = 20'000;
constexpr const char* PLAIN = "plain passes over the values";

/// Down with a rising force and a snap, and back; noise on both values.
void FillStroke(RTCurveData& curve) {
    auto free = curve.GetFreeValues();
    const std::size_t nPoints = free.size() / 2;
    std::uint32_t nRandom = 1;
    const auto noise = [&] {
        nRandom = nRandom * 1664525u + 1013904223u;
        return static_cast<int>(nRandom >> 28) - 8;
    };
    for (std::size_t n = 0; n < nPoints; ++n) {
        const bool bBack = n > nPoints / 2;
        const auto nWay = static_cast<int>(2 * (bBack ? nPoints - n : n) * DEEPEST / nPoints);
        const int nForwardForce = nWay < 12'000 ? nWay / 2 : nWay / 2 - 1500;
        const int nForce = bBack ? nWay * 2 / 5 : nForwardForce;
        free[2 * n] = static_cast<std::int16_t>(nForce + noise());
        free[2 * n + 1] = static_cast<std::int16_t>(nWay + noise());
    }
    curve.PublishCount(curve.GetCapacity());
}

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

/// Two windows, a block, a line, an envelope for each branch and four features.
CLimitsFile MakeLimits(const RTCurveData& curve) {
    CLimitsFile limits("limits", R"({"format": "rt3-limits", "version": 1, "objects": [
        {"name": "begin", "kind": "window", "x": [2000, 6000], "y": [500, 3500]},
        {"name": "end", "kind": "window", "x": [19000, 21000], "y": [7000, 9500], "exit": ["none"]},
        {"name": "free", "kind": "block", "x": [5000, 9000], "y": [7000, null]},
        {"name": "line", "kind": "line", "force": 5000, "from": 9000, "to": 11000},
        {"name": "peak", "kind": "feature", "feature": "peak_force", "max": 9000},
        {"name": "contact", "kind": "feature", "feature": "position_at", "force": 200,
         "hold": 50, "max": 1000},
        {"name": "slope", "kind": "feature", "feature": "slope", "from": 1000, "to": 11000,
         "min": 0.4},
        {"name": "snap", "kind": "feature", "feature": "drop", "from": 9000, "to": 15000,
         "min": 1000}]})");
    const std::vector<CStroke> strokes(3, CStroke(curve, RATE));
    for (const Branch branch : {Branch::Forward, Branch::Return})
        limits.SetEnvelope(LearnEnvelope(strokes, branch, {}, {}));
    if (JudgeStroke(strokes[0], limits.GetLimits()).m_outcome != Outcome::Pass)
        throw std::runtime_error("the stroke does not pass");
    return limits;
}

void MeasureLongStroke(CTable& table) {
    RTCurveData curve(LONG_VALUES);
    FillStroke(curve);
    const CLimitsFile limits = MakeLimits(curve);
    const Limits none;
    const auto figures = MeasureInTurn(
        {TimeCalls([&] { PassOften(curve, 1); }),
         TimeCalls([&] { KeepResult(MeasureStroke(CStroke(curve, RATE), none)); }),
         TimeCalls([&] { KeepResult(JudgeStroke(CStroke(curve, RATE), limits.GetLimits())); })},
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
    FillStroke(curve);
    curve.RecomputeExtremes();
    folder.Put("limits.json", MakeLimits(curve).GetText());
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
