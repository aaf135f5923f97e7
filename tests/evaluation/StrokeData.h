// Strokes for the tests.
#pragma once

#include <utility>
#include <vector>

#include "curves/RTCurveData.h"

/// (position, force)
using Points = std::vector<std::pair<int, int>>;

/// A curve of whole pairs, or with one value behind them.
struct StrokeData {
    explicit StrokeData(const Points& points, bool bSingleBehind = false)
        : m_curve(static_cast<std::uint32_t>(2 * points.size() + bSingleBehind)) {
        auto free = m_curve.GetFreeValues();
        for (std::size_t n = 0; n < points.size(); ++n) {
            free[2 * n] = static_cast<std::int16_t>(points[n].second);
            free[2 * n + 1] = static_cast<std::int16_t>(points[n].first);
        }
        if (bSingleBehind) free.back() = 32767;
        m_curve.PublishCount(m_curve.GetCapacity());
    }
    RTCurveData m_curve;
};

/// The stroke of the worked examples; at 2000 values a second a point is a millisecond.
inline const Points EXAMPLE{{0, 0},     {100, 20},  {200, 120}, {300, 220}, {400, 180},
                            {500, 400}, {500, 420}, {400, 160}, {200, 100}, {0, 0}};
constexpr unsigned EXAMPLE_RATE = 2000;
