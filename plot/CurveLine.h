// The line of one curve in a plot: the curve reduced to columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "curves/RTCurveData.h"
#include "platform/drawing/Geometry.h"
#include "plot/ChangedSpan.h"
#include "plot/PlotScale.h"

/// The points that a curve has been reduced to, kept from paint to paint. What they follow from is
/// kept with them: a curve that has not changed is not read again, and of one that has grown only
/// the columns that are new, and the last one before them.
class CurveLine {
  public:
    struct Source {
        std::int64_t m_nFirst;  ///< the value index that the line begins with
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

    /// Brings the points up to date: they are those of the values of a curve from its source's
    /// first one up to, not including, nLast.
    /// @return where they are others than before
    ChangedSpan Update(const std::shared_ptr<const RTCurveData>& spData, const Source& source,
                       std::int64_t nLast);

    const std::vector<CPoint>& GetMainPoints() const { return m_mainPoints; }
    /// By column; only of a line of both quantities.
    const std::vector<ColumnEnd>& GetColumnEnds() const { return m_columnEnds; }
    /// The value that the main line has reached at its end.
    int GetLevel() const { return m_nLevel; }

  private:
    /// A column, and what was there before it.
    struct Begun {
        std::int64_t m_nIndex = 0;
        int m_nLevel = 0;
        std::size_t m_nMainPoints = 0;
    };

    void Trace(const RTCurveData& data, const Source& source, std::int64_t nLast);

    std::weak_ptr<const RTCurveData> m_wpData;  ///< weak: a curve goes when its set goes
    std::optional<Source> m_source;             ///< none: no points yet
    std::int64_t m_nLast = 0;
    std::vector<CPoint> m_mainPoints;
    std::vector<ColumnEnd> m_columnEnds;
    int m_nLevel = 0;
    Begun m_lastColumn;
};
