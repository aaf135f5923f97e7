#include "evaluation/Verdict.h"

#include <cmath>

#include "evaluation/PathJudgement.h"

namespace {

MeasuredPoint DescribePoint(const CStroke& stroke, const Scales& scales, std::size_t nPoint) {
    return {nPoint, scales.m_position.ToEngineering(stroke.GetPosition(nPoint)),
            scales.m_force.ToEngineering(stroke.GetForce(nPoint)), stroke.FindTime(nPoint)};
}

std::optional<double> ToEngineering(const Scales& scales, Quantity quantity,
                                    const FeatureValue& value) {
    if (!value.m_value) return std::nullopt;
    return scales.ToEngineering(quantity, *value.m_value, value.m_dTravel);
}

/// A failure without room for doubt has a margin below 0, a pass one above; 0 goes with either.
std::optional<double> KeepConsistent(std::optional<double> margin, Outcome outcome) {
    if (!margin || (outcome == Outcome::Pass ? *margin < 0 : *margin > 0)) return std::nullopt;
    return margin;
}

/// Judges one object after the other of a stroke.
class CJudge {
  public:
    CJudge(const CStroke& stroke, const Scales& scales) : m_stroke(stroke), m_scales(scales) {}

    ObjectResult operator()(const WindowLimit& window) const {
        const bool bPositions = window.FindMarginValue() == PointValue::Position;
        return Describe(JudgePath(m_stroke, window),
                        bPositions ? Quantity::PositionDifference : Quantity::ForceDifference);
    }
    ObjectResult operator()(const LineLimit& line) const {
        const PathJudgement judgement = JudgePath(m_stroke, line);
        ObjectResult result = Describe(judgement, Quantity::ForceDifference);
        result.m_strUnit = m_scales.GetUnit(Quantity::Position);
        if (judgement.m_position)
            result.m_value = m_scales.m_position.ToEngineering(*judgement.m_position);
        return result;
    }
    template <class PathLimit>
    ObjectResult operator()(const PathLimit& limit) const {
        return Describe(JudgePath(m_stroke, limit), Quantity::ForceDifference);
    }
    ObjectResult operator()(const FeatureLimit& limit) const {
        const Quantity quantity = GetTraits(limit.m_feature.m_kind).m_quantity;
        const FeatureValue measured = MeasureFeature(m_stroke, limit.m_feature);
        ObjectResult result;
        result.m_strUnit = result.m_strMarginUnit = m_scales.GetUnit(quantity);
        result.m_value = ToEngineering(m_scales, quantity, measured);
        if (!result.m_value) {
            const bool bNoTime = measured.m_pReason == std::string_view(NO_TIME_BASE);
            result.m_outcome = bNoTime ? Outcome::Cannot : Outcome::Fail;
            result.m_strReason = measured.m_pReason;
            return result;
        }
        ApplyLimits(limit, result);
        if (result.m_outcome == Outcome::Fail && measured.m_point)
            result.m_point = DescribePoint(m_stroke, m_scales, *measured.m_point);
        return result;
    }

  private:
    ObjectResult Describe(const PathJudgement& judgement, Quantity marginQuantity) const {
        ObjectResult result;
        result.m_strReason = judgement.m_strReason;
        result.m_outcome = judgement.m_strReason.empty() ? Outcome::Pass : Outcome::Fail;
        if (judgement.m_point)
            result.m_point = DescribePoint(m_stroke, m_scales, *judgement.m_point);
        const auto margin = KeepConsistent(judgement.m_margin, result.m_outcome);
        if (margin) result.m_margin = m_scales.ToEngineering(marginQuantity, *margin);
        result.m_strMarginUnit = m_scales.GetUnit(marginQuantity);
        return result;
    }

    static void ApplyLimits(const FeatureLimit& limit, ObjectResult& result) {
        const double dValue = *result.m_value;
        const auto apply = [&](double dLimit, double dMargin, const char* pReason) {
            // What decimal fractions lose on their way to a value and back is no margin.
            if (std::abs(dMargin) <= 1e-9 * std::max(std::abs(dValue), std::abs(dLimit)))
                dMargin = 0;
            if (result.m_margin && *result.m_margin <= dMargin) return;
            result.m_margin = dMargin;
            result.m_strReason = dMargin < 0 ? pReason : "";
        };
        if (limit.m_min) apply(*limit.m_min, dValue - *limit.m_min, "below minimum");
        if (limit.m_max) apply(*limit.m_max, *limit.m_max - dValue, "above maximum");
        if (!result.m_strReason.empty()) result.m_outcome = Outcome::Fail;
    }

    const CStroke& m_stroke;
    const Scales& m_scales;
};

MeasuredFeature Describe(const CStroke& stroke, const Scales& scales, std::string strName,
                         const Feature& feature) {
    const Quantity quantity = GetTraits(feature.m_kind).m_quantity;
    const FeatureValue measured = MeasureFeature(stroke, feature);
    MeasuredFeature described{std::move(strName),
                              feature.m_kind,
                              ToEngineering(scales, quantity, measured),
                              scales.GetUnit(quantity),
                              measured.m_pReason ? measured.m_pReason : "",
                              {}};
    if (measured.m_point) described.m_point = DescribePoint(stroke, scales, *measured.m_point);
    return described;
}

StrokeOverview LookOver(const CStroke& stroke) {
    if (const char* const pObstacle = stroke.FindObstacle())
        return {pObstacle, stroke.CountPoints(), {}};
    return {"", stroke.CountPoints(), stroke.GetTurn()};
}

}  // namespace

const char* GetName(Outcome outcome) {
    constexpr const char* NAMES[] = {"pass", "fail", "cannot"};
    return NAMES[static_cast<std::size_t>(outcome)];
}

StrokeVerdict JudgeStroke(const CStroke& stroke, const Limits& limits) {
    StrokeVerdict verdict{LookOver(stroke)};
    if (!verdict.m_strReason.empty()) {
        verdict.m_outcome = Outcome::Cannot;
        return verdict;
    }
    const CJudge judge(stroke, limits.m_scales);
    for (const LimitObject& object : limits.m_objects) {
        verdict.m_objects.push_back(std::visit(judge, object.m_limit));
        const Outcome outcome = verdict.m_objects.back().m_outcome;
        if (outcome == Outcome::Fail || verdict.m_outcome == Outcome::Pass)
            verdict.m_outcome = outcome;
    }
    return verdict;
}

StrokeMeasurement MeasureStroke(const CStroke& stroke, const Limits& limits) {
    StrokeMeasurement measurement{LookOver(stroke)};
    if (!measurement.m_strReason.empty()) return measurement;
    const auto measure = [&](const std::string& strName, const Feature& feature) {
        measurement.m_features.push_back(Describe(stroke, limits.m_scales, strName, feature));
    };
    for (const FeatureTraits& traits : GetStandardFeatures())
        measure(std::string(traits.m_strName), {traits.m_kind});
    for (const LimitObject& object : limits.m_objects)
        if (const auto* pLimit = std::get_if<FeatureLimit>(&object.m_limit))
            measure(object.m_strName, pLimit->m_feature);
    return measurement;
}
