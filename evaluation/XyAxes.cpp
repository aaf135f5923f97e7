#include "evaluation/XyAxes.h"

#include <cmath>
#include <cstdlib>

namespace {

/// A step of 1, 2 or 5 times a power of ten.
struct TickStep {
    int m_nPower;
    int m_nFactor;

    double Get() const { return m_nFactor * std::pow(10.0, m_nPower); }
};

TickStep FindStep(double dLeast) {
    const int nPower = static_cast<int>(std::floor(std::log10(dLeast)));
    for (const int nFactor : {1, 2, 5}) {
        const TickStep step{nPower, nFactor};
        // Rounding does not cost a step that is just large enough.
        if (step.Get() >= dLeast * (1 - 1e-9)) return step;
    }
    return {nPower + 1, 1};
}

std::wstring MakeLabel(double dNumber, const TickStep& step) {
    char text[352];
    std::snprintf(text, sizeof text, "%.*f", std::max(-step.m_nPower, 0), dNumber);
    return std::wstring(text, text + std::char_traits<char>::length(text));
}

}  // namespace

AxisRange AxisRange::Widen() const {
    if (m_dLow > m_dHigh) return {-1, 1};
    const double dRoom = m_dHigh > m_dLow ? (m_dHigh - m_dLow) * 0.05 : 1;
    return {m_dLow - dRoom, m_dHigh + dRoom};
}

int CXyAxis::At(double dValue) const {
    constexpr double dFarthest = 1e6;
    const double dPixel = m_nFrom + (dValue - m_range.m_dLow) / (m_range.m_dHigh - m_range.m_dLow) *
                                        (m_nTo - m_nFrom);
    return static_cast<int>(std::lround(std::clamp(dPixel, -dFarthest, dFarthest)));
}

std::vector<CXyAxis::Tick> CXyAxis::FindTicks(const Scale& scale, int nLeast) const {
    std::vector<Tick> ticks;
    const double dLow = scale.ToEngineering(m_range.m_dLow);
    const double dHigh = scale.ToEngineering(m_range.m_dHigh);
    const int nPixels = std::abs(m_nTo - m_nFrom);
    // Too small for even one, or so far from 0 that steps are lost beside it.
    if (nPixels < nLeast || !(dHigh - dLow > 1e-12 * std::max(std::abs(dLow), std::abs(dHigh))))
        return ticks;
    const TickStep step = FindStep((dHigh - dLow) * nLeast / nPixels);
    const auto nLast = static_cast<std::int64_t>(std::floor(dHigh / step.Get()));
    for (auto n = static_cast<std::int64_t>(std::ceil(dLow / step.Get())); n <= nLast; ++n) {
        const double dNumber = static_cast<double>(n) * step.Get();
        ticks.push_back(
            {At((dNumber - scale.m_dOffset) / scale.m_dFactor), n, MakeLabel(dNumber, step)});
    }
    return ticks;
}

std::int64_t CXyAxis::FindLabelStep(const std::vector<Tick>& ticks, int nRoom) {
    if (ticks.size() < 2) return 1;
    const int nDistance = std::abs(ticks[1].m_nPixel - ticks[0].m_nPixel);
    return std::lround(FindStep(std::max(1.0, static_cast<double>(nRoom) / nDistance)).Get());
}
