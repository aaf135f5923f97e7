#include "evaluation/Features.h"

#include "evaluation/Crossings.h"
#include "evaluation/RangeFeatures.h"

namespace {

using enum FeatureKind;

constexpr FeatureTraits KINDS[] = {
    {"peak_force", PeakForce, Quantity::Force},
    {"peak_position", PeakPosition, Quantity::Position},
    {"peak_time", PeakTime, Quantity::Time},
    {"end_position", EndPosition, Quantity::Position},
    {"end_force", EndForce, Quantity::Force},
    {"end_time", EndTime, Quantity::Time},
    {"duration", Duration, Quantity::Time},
    {"work_forward", WorkForward, Quantity::Work},
    {"work_return", WorkReturn, Quantity::Work},
    {"work_loss", WorkLoss, Quantity::Work},
    {"force_at", ForceAt, Quantity::Force, true, false, true},
    {"hysteresis", Hysteresis, Quantity::ForceDifference, false, false, true},
    {"position_at", PositionAt, Quantity::Position, true, false, false, true},
    {"slope", Slope, Quantity::Slope, true, true, false, false, true},
    {"mean_force", MeanForce, Quantity::Force, true, true, false, false, true},
    {"min_force", MinForce, Quantity::Force, true, true, false, false, true},
    {"max_force", MaxForce, Quantity::Force, true, true, false, false, true},
    {"drop", Drop, Quantity::ForceDifference, true, true, false, false, true},
};
constexpr std::size_t STANDARD_FEATURES = 10;

FeatureValue MeasureAtPoint(const CStroke& stroke, PointValue value, std::size_t nPoint) {
    return {static_cast<double>(stroke.Get(value, nPoint)), nPoint};
}

FeatureValue MeasureTime(const CStroke& stroke, std::size_t nPoint, bool bHasPoint = true) {
    const auto dTime = stroke.FindTime(nPoint);
    if (!dTime) return {{}, {}, NO_TIME_BASE};
    return {dTime, bHasPoint ? std::optional(nPoint) : std::nullopt};
}

/// Twice the area under a path. By parts, so that a segment costs two products that do not depend
/// on the segment before: no more than 2^62 for the longest curve.
std::int64_t SumWork(const CStroke& stroke, PointRange points) {
    const auto product = [&](std::size_t nForce, std::size_t nPosition) {
        return static_cast<std::int64_t>(stroke.GetForce(nForce)) * stroke.GetPosition(nPosition);
    };
    std::int64_t nSum =
        product(points.m_nLast, points.m_nLast) - product(points.m_nFirst, points.m_nFirst);
    for (std::size_t n = points.m_nFirst + 1; n <= points.m_nLast; ++n)
        nSum += product(n - 1, n) - product(n, n - 1);
    return nSum;
}

/// Half a sum, and the way that it belongs to.
FeatureValue MeasureWork(const CStroke& stroke, std::int64_t nSum, std::size_t nFrom,
                         std::size_t nTo) {
    return {static_cast<double>(nSum) / 2,
            {},
            nullptr,
            static_cast<double>(stroke.GetPosition(nTo) - stroke.GetPosition(nFrom))};
}

FeatureValue MeasureHysteresis(const CStroke& stroke, Grid nPosition) {
    const FeatureValue forward = FindForceAt(stroke, Branch::Forward, nPosition);
    const FeatureValue back = FindForceAt(stroke, Branch::Return, nPosition);
    if (!forward.m_value || !back.m_value) return {{}, {}, NOT_REACHED};
    return {*forward.m_value - *back.m_value};
}

}  // namespace

std::span<const FeatureTraits> GetFeatureKinds() { return KINDS; }

std::span<const FeatureTraits> GetStandardFeatures() {
    return std::span(KINDS).first(STANDARD_FEATURES);
}

const FeatureTraits& GetTraits(FeatureKind kind) { return KINDS[static_cast<std::size_t>(kind)]; }

FeatureValue MeasureFeature(const CStroke& stroke, const Feature& feature) {
    const PointRange points = stroke.GetPoints(feature.m_branch);
    const std::size_t nTurn = stroke.GetTurn();
    const std::size_t nLast = stroke.CountPoints() - 1;
    const auto findPeak = [&] { return stroke.FindLargest(PointValue::Force); };
    switch (feature.m_kind) {
    case PeakForce:
        return MeasureAtPoint(stroke, PointValue::Force, findPeak());
    case PeakPosition:
        return MeasureAtPoint(stroke, PointValue::Position, findPeak());
    case PeakTime:
        return MeasureTime(stroke, findPeak());
    case EndPosition:
        return MeasureAtPoint(stroke, PointValue::Position, nTurn);
    case EndForce:
        return MeasureAtPoint(stroke, PointValue::Force, nTurn);
    case EndTime:
        return MeasureTime(stroke, nTurn);
    case Duration:
        return MeasureTime(stroke, nLast, false);
    case WorkForward:
        return MeasureWork(stroke, SumWork(stroke, {0, nTurn}), 0, nTurn);
    case WorkReturn:
        return MeasureWork(stroke, -SumWork(stroke, {nTurn, nLast}), nLast, nTurn);
    case WorkLoss:
        return MeasureWork(stroke, SumWork(stroke, {0, nLast}), 0, nLast);
    case ForceAt:
        return FindForceAt(stroke, feature.m_branch, feature.m_nAt);
    case Hysteresis:
        return MeasureHysteresis(stroke, feature.m_nAt);
    case PositionAt:
        return FindPositionAt(stroke, feature);
    case Slope:
        return MeasureSlope(stroke, points, feature.m_range);
    case MeanForce:
        return MeasureMean(stroke, points, feature.m_range);
    case MinForce:
        return MeasureSmallest(stroke, points, feature.m_range);
    case MaxForce:
        return MeasureLargest(stroke, points, feature.m_range);
    case Drop:
        return MeasureDrop(stroke, points, feature.m_range);
    }
    return {{}, {}, NOT_REACHED};
}
