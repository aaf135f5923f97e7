// The verdict of a stroke: every object of the limits, and what follows from them.
//
// Works on plain data; any number of threads may judge at the same time, each a stroke of its own.
#pragma once

#include <string>
#include <vector>

#include "evaluation/Limits.h"

enum class Outcome : std::uint8_t { Pass, Fail, Cannot };
/// "pass", "fail", "cannot".
const char* GetName(Outcome outcome);

/// A point of a stroke in engineering values.
struct MeasuredPoint {
    std::size_t m_nIndex;
    double m_dPosition;
    double m_dForce;
    std::optional<double> m_time;  ///< seconds; none without a rate
};

/// All values are engineering values.
struct ObjectResult {
    Outcome m_outcome = Outcome::Pass;
    std::string m_strReason;        ///< empty: passed
    std::optional<double> m_value;  ///< of a feature, or where a line was crossed first
    std::string m_strUnit;          ///< of the value; of a window, block or envelope empty
    /// Distance to the nearest limit, below 0 when failed; none when there is none to give, or none
    /// that goes with the outcome.
    std::optional<double> m_margin;
    std::string m_strMarginUnit;
    std::optional<MeasuredPoint> m_point;  ///< where it failed first
};

/// What is told of a stroke whatever is done with it.
struct StrokeOverview {
    std::string m_strReason;              ///< why it cannot be evaluated; empty: it can
    std::optional<std::size_t> m_points;  ///< none: there are no points
    std::optional<std::size_t> m_turn;    ///< none: it cannot be evaluated
};

struct StrokeVerdict : StrokeOverview {
    Outcome m_outcome = Outcome::Pass;
    std::vector<ObjectResult> m_objects = {};  ///< in the order of the limits; none: it cannot
};

StrokeVerdict JudgeStroke(const CStroke& stroke, const Limits& limits);

/// A feature of a stroke as people read it.
struct MeasuredFeature {
    std::string m_strName;
    FeatureKind m_kind;
    std::optional<double> m_value;
    std::string m_strUnit;
    std::string m_strReason;  ///< why there is no value; empty: there is
    std::optional<MeasuredPoint> m_point;
};

struct StrokeMeasurement : StrokeOverview {
    std::vector<MeasuredFeature> m_features = {};  ///< none: it cannot be evaluated
};

/// The standard features, and then the limited ones, without their limits.
StrokeMeasurement MeasureStroke(const CStroke& stroke, const Limits& limits);
