// The line of one curve in a plot, kept from paint to paint.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "curves/RTCurveData.h"
#include "platform/drawing/Geometry.h"
#include "plot/PlotScale.h"

/// The points that a curve has been reduced to, and what they follow from. A repaint that finds its
/// own source here draws them again: most repaints change one curve of many, or a marker.
struct CurveLine {
    struct Source {
        std::int64_t m_nFirst;  ///< value indices in view
        std::int64_t m_nLast;
        std::uint8_t m_nDisplay;
        int m_nLevel;  ///< that the main line of the curve before has left behind
        int m_nWidth;  ///< of the plot
        TimeAxis m_time;
        ValueAxis m_value;
        friend bool operator==(const Source&, const Source&) = default;
    };
    /// Where the lines have got to with a column.
    struct ColumnEnd {
        std::size_t m_nMainPoints;  ///< points of the main line so far
        CPoint m_second;
    };

    /// Whether the points are those of a curve from this source. The values of an index range never
    /// change.
    bool IsOf(const std::shared_ptr<const RTCurveData>& spOther, const Source& other) const {
        return m_source && *m_source == other && spOther == m_wpData.lock();
    }

    std::weak_ptr<const RTCurveData> m_wpData;  ///< weak: a curve goes when its set goes
    std::optional<Source> m_source;             ///< none: no points yet
    std::vector<CPoint> m_mainPoints;
    std::vector<ColumnEnd> m_columnEnds;
    int m_nLevelAfter = 0;  ///< that the main line has reached at its end
};
