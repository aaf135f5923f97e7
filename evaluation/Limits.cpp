#include "evaluation/Limits.h"

std::optional<PointValue> WindowLimit::FindMarginValue() const {
    const auto haveNoneBut = [&](CSides sides) {
        return m_entry.HasNoneBut(sides) && m_exit.HasNoneBut(sides);
    };
    if (haveNoneBut({Side::Left, Side::Right, Side::None})) return PointValue::Force;
    if (haveNoneBut({Side::Bottom, Side::Top, Side::None})) return PointValue::Position;
    return std::nullopt;
}

std::string_view LimitObject::GetKind() const {
    constexpr std::string_view KINDS[] = {"window", "block", "line", "envelope"};
    if (const auto* pFeature = std::get_if<FeatureLimit>(&m_limit))
        return GetTraits(pFeature->m_feature.m_kind).m_strName;
    return KINDS[m_limit.index()];
}
