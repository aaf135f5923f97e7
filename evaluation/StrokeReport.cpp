#include "evaluation/StrokeReport.h"

#include "evaluation/Json.h"
#include "platform/system/Text.h"

namespace {

template <class Value>
Json ToJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

/// Null for a text that says nothing.
Json ReasonToJson(const std::string& strReason) {
    return strReason.empty() ? Json() : Json(strReason);
}

Json ToJson(const std::optional<MeasuredPoint>& point) {
    if (!point) return nullptr;
    return {{"index", point->m_nIndex},
            {"position", point->m_dPosition},
            {"force", point->m_dForce},
            {"time", ToJson(point->m_time)}};
}

Json ToJson(const ObjectResult& result, const LimitObject& object) {
    return {{"name", object.m_strName},
            {"kind", object.GetKind()},
            {"result", GetName(result.m_outcome)},
            {"reason", ReasonToJson(result.m_strReason)},
            {"value", ToJson(result.m_value)},
            {"unit", result.m_strUnit},
            {"margin", ToJson(result.m_margin)},
            {"margin_unit", result.m_strMarginUnit},
            {"point", ToJson(result.m_point)}};
}

Json ToJson(const MeasuredFeature& feature) {
    return {{"name", feature.m_strName},
            {"kind", GetTraits(feature.m_kind).m_strName},
            {"value", ToJson(feature.m_value)},
            {"unit", feature.m_strUnit},
            {"reason", ReasonToJson(feature.m_strReason)},
            {"point", ToJson(feature.m_point)}};
}

Json ToJson(const FeatureSummary& summary) {
    return {{"name", summary.m_strName},
            {"unit", summary.m_strUnit},
            {"count", summary.m_nCount},
            {"min", ToJson(summary.m_min)},
            {"mean", ToJson(summary.m_mean)},
            {"max", ToJson(summary.m_max)},
            {"deviation", ToJson(summary.m_deviation)},
            {"cp", ToJson(summary.m_cp)},
            {"cpk", ToJson(summary.m_cpk)}};
}

Json MakeStroke(const StrokeName& name, const StrokeOverview& overview) {
    Json stroke = Json::object();
    if (!name.m_strAt.empty()) stroke["at"] = name.m_strAt;
    stroke["file"] = name.m_file ? Json(ToUtf8(*name.m_file)) : Json();
    stroke["channel"] = name.m_nChannel;
    stroke["curve"] = ToJson(name.m_curve);
    stroke["points"] = ToJson(overview.m_points);
    stroke["turn"] = ToJson(overview.m_turn);
    return stroke;
}

}  // namespace

std::string WriteVerdict(const StrokeName& name, const StrokeVerdict& verdict,
                         const Limits& limits) {
    Json stroke = MakeStroke(name, verdict);
    stroke["verdict"] = GetName(verdict.m_outcome);
    stroke["reason"] = ReasonToJson(verdict.m_strReason);
    Json& objects = stroke["objects"] = Json::array();
    for (std::size_t n = 0; n < verdict.m_objects.size(); ++n)
        objects.push_back(ToJson(verdict.m_objects[n], limits.m_objects[n]));
    return WriteJson(stroke);
}

std::string WriteMeasurement(const StrokeName& name, const StrokeMeasurement& measurement) {
    Json stroke = MakeStroke(name, measurement);
    stroke["reason"] = ReasonToJson(measurement.m_strReason);
    Json& features = stroke["features"] = Json::array();
    for (const MeasuredFeature& feature : measurement.m_features)
        features.push_back(ToJson(feature));
    return WriteJson(stroke);
}

std::string WriteFileError(const std::wstring& strFile, const std::string& strError) {
    return WriteJson({{"file", ToUtf8(strFile)}, {"error", strError}});
}

std::string WriteSummary(const RunSummary& summary, bool bJudged) {
    Json inner{{"strokes", summary.m_nStrokes}};
    if (bJudged) {
        inner["pass"] = summary.m_nPassed;
        inner["fail"] = summary.m_nFailed;
    }
    inner["cannot"] = summary.m_nCannot;
    inner["errors"] = summary.m_nErrors;
    Json& features = inner["features"] = Json::array();
    for (const FeatureSummary& feature : summary.m_features) features.push_back(ToJson(feature));
    return WriteJson({{"summary", std::move(inner)}});
}
