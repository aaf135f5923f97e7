// Where things stand in a plot: the division of its area, its time axis and its value axis.
//
// Plain arithmetic, for any input: a range without extent counts as one value, and no position can
// leave 32 bits. Conversions to pixels truncate toward zero.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "curves/RTCurves.h"
#include "plot/RTGraphSettings.h"

struct RTPlot;

/// What one paint shows: taken from a plot under its session lock, used without the lock.
struct PlotSnapshot {
    struct Curve {
        std::shared_ptr<const RTCurveData> spData;  ///< null: an entry without a curve
        std::uint32_t nCount = 0;                   ///< values to read; the reader adds more
        RTExtremes extremes;
    };

    static PlotSnapshot Take(const RTPlot& plot);

    std::int64_t nViewStart = 0;
    std::int64_t nViewEnd = 0;
    bool bZoomed = false;
    std::int64_t nSpanValues = 1;
    RTGraphSettings graph;
    std::vector<Curve> lstCurves;  ///< empty: only the background is drawn
    std::uint8_t nDisplay = 0;
    std::uint8_t nMode = 1;
};

/// The value-label margin, left of the curve area.
constexpr int LEFT_MARGIN = 40;

/// The parts of a plot's area, top to bottom: the curves, the band of the four input lines, the
/// time axis with its labels.
struct PlotLayout {
    PlotLayout(int nWidth, int nHeight);

    int nWidth;
    int nHeight;
    int nAxisY;         ///< the time axis
    int nLabelY;        ///< top of the time labels
    int nBandHeight;    ///< of the input lines, above the time axis
    int nTopMargin;     ///< free space above and below the curves
    int nRowHeight;     ///< of one input line
    int nTraceHeight;   ///< swing of an input line
    int nUsableHeight;  ///< what the value span fills
    int nBaseline;      ///< y of the lowest value of an axis that has no negative values

    int BandTop() const { return nAxisY - nBandHeight; }
};

struct TimeAxis {
    TimeAxis(const PlotSnapshot& shown, const PlotLayout& layout);

    double dScale;              ///< pixels per value index
    std::int64_t nColumnWidth;  ///< value indices that share one column of a curve

    /// The x at a distance from the index at the curve area's left edge.
    int XAt(std::int64_t nDistance) const;

    friend bool operator==(const TimeAxis&, const TimeAxis&) = default;
};

struct ValueAxis {
    ValueAxis(const PlotSnapshot& shown, const PlotLayout& layout);

    int nMin;
    int nSpan;      ///< at least 1
    double dScale;  ///< pixels per value unit
    int nZeroY;     ///< y of the value 0, or of the minimum when that is above 0
    int nMinY;      ///< y of the minimum

    int YOf(int nValue) const;

    friend bool operator==(const ValueAxis&, const ValueAxis&) = default;
};
