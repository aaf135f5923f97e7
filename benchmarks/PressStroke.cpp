#include "PressStroke.h"

#include <stdexcept>
#include <vector>

#include "evaluation/Verdict.h"

namespace {

constexpr int DEEPEST = 20'000;

}  // namespace

void FillPressStroke(RTCurveData& curve) {
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

CLimitsFile MakePressLimits(const RTCurveData& curve) {
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
    const std::vector<CStroke> strokes(3, CStroke(curve, PRESS_STROKE_RATE));
    for (const Branch branch : {Branch::Forward, Branch::Return})
        limits.SetEnvelope(LearnEnvelope(strokes, branch, {}, {}));
    if (JudgeStroke(strokes[0], limits.GetLimits()).m_outcome != Outcome::Pass)
        throw std::runtime_error("the stroke does not pass");
    return limits;
}
