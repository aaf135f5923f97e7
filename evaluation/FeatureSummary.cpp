#include "evaluation/FeatureSummary.h"

#include <algorithm>

#include "evaluation/Distribution.h"

CFeatureValues::CFeatureValues(std::string strName, std::string strUnit, std::optional<double> low,
                               std::optional<double> high)
    : m_strName(std::move(strName)), m_strUnit(std::move(strUnit)), m_low(low), m_high(high) {}

FeatureSummary CFeatureValues::Summarise() const {
    FeatureSummary summary{m_strName, m_strUnit, m_adValues.size()};
    if (m_adValues.empty()) return summary;
    const auto [low, high] = std::minmax_element(m_adValues.begin(), m_adValues.end());
    const Distribution values =
        FindDistribution(m_adValues.size(), [&](std::size_t n) { return m_adValues[n]; });
    summary.m_min = *low;
    summary.m_mean = values.m_dMean;
    summary.m_max = *high;
    if (m_adValues.size() < 2) return summary;
    summary.m_deviation = values.m_dDeviation;
    if (values.m_dDeviation > 0) FindCapability(summary);
    return summary;
}

void CFeatureValues::FindCapability(FeatureSummary& summary) const {
    const double dDeviation = *summary.m_deviation;
    if (m_low && m_high) summary.m_cp = (*m_high - *m_low) / (6 * dDeviation);
    const auto include = [&](double dRoom) {
        const double dOwn = dRoom / (3 * dDeviation);
        summary.m_cpk = std::min(summary.m_cpk.value_or(dOwn), dOwn);
    };
    if (m_high) include(*m_high - *summary.m_mean);
    if (m_low) include(*summary.m_mean - *m_low);
}
