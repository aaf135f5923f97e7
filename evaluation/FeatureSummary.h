// What a feature is like over many strokes.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// Engineering values. What there are too few strokes or no limits for is none.
struct FeatureSummary {
    std::string m_strName;
    std::string m_strUnit;
    std::size_t m_nCount = 0;  ///< strokes that have the feature
    std::optional<double> m_min = {};
    std::optional<double> m_mean = {};
    std::optional<double> m_max = {};
    std::optional<double> m_deviation = {};  ///< of a sample
    std::optional<double> m_cp = {};         ///< process capability
    std::optional<double> m_cpk = {};        ///< the same to the nearer limit
};

/// The values of one feature, stroke by stroke.
class CFeatureValues {
  public:
    /// @param low, high the limits; none: on that side there is none
    explicit CFeatureValues(std::string strName, std::string strUnit,
                            std::optional<double> low = {}, std::optional<double> high = {});

    void Add(std::optional<double> value) {
        if (value) m_adValues.push_back(*value);
    }
    FeatureSummary Summarise() const;

  private:
    void FindCapability(FeatureSummary& summary) const;

    std::string m_strName;
    std::string m_strUnit;
    std::optional<double> m_low;
    std::optional<double> m_high;
    std::vector<double> m_adValues;
};
