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
        std::int64_t nFirst;  ///< value indices in view
        std::int64_t nLast;
        std::uint8_t nDisplay;
        int nLevel;  ///< that the main line of the curve before has left behind
        int nWidth;  ///< of the plot
        TimeAxis time;
        ValueAxis value;
        friend bool operator==(const Source&, const Source&) = default;
    };
    /// Where the lines have got to with a column.
    struct ColumnEnd {
        std::size_t nMainPoints;  ///< points of the main line so far
        CPoint second;
    };

    /// Whether the points are those of a curve from this source. The values of an index range never
    /// change.
    bool IsOf(const std::shared_ptr<const RTCurveData>& spOther, const Source& other) const {
        return source && *source == other && spOther == wpData.lock();
    }

    std::weak_ptr<const RTCurveData> wpData;  ///< weak: a curve goes when its set goes
    std::optional<Source> source;             ///< none: no points yet
    std::vector<CPoint> mainPoints;
    std::vector<ColumnEnd> columnEnds;
    int nLevelAfter = 0;  ///< that the main line has reached at its end
};
