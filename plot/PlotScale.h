// Where things stand in a plot: the division of its area, its time axis and its value axis.
//
// All in pixels of the display; what the design states in pixels of its own is scaled.
//
// Plain arithmetic, for any input: a range without extent counts as one value, and no position can
// leave 32 bits. Conversions to pixels truncate toward zero. A value range whose lower end lies
// above its upper end gives an axis that runs downwards: its span and its scale are negative.
#pragma once

#include <cstdint>

struct PlotScene;

/// The parts of a plot's area, top to bottom: the curves, the band of the four input lines, the
/// time axis with its labels.
struct PlotLayout {
    PlotLayout(int nWidth, int nHeight);

    int m_nWidth;
    int m_nHeight;
    int m_nLeftMargin;    ///< of the value labels, left of the curve area
    int m_nRangeWidth;    ///< what the view's range fills
    int m_nAxisY;         ///< the time axis
    int m_nLabelY;        ///< top of the time labels
    int m_nBandHeight;    ///< of the input lines, above the time axis
    int m_nTopMargin;     ///< free space above and below the curves
    int m_nRowHeight;     ///< of one input line
    int m_nTraceHeight;   ///< swing of an input line
    int m_nUsableHeight;  ///< what the value span fills
    int m_nBaseline;      ///< y of the lowest value of an axis that has no negative values

    int BandTop() const { return m_nAxisY - m_nBandHeight; }
};

struct TimeAxis {
    TimeAxis(const PlotScene& scene, const PlotLayout& layout);

    int m_nLeft;                  ///< x of the curve area's left edge
    double m_dScale;              ///< pixels per value index
    std::int64_t m_nColumnWidth;  ///< value indices that share one column of a curve

    /// The x at a distance from the index at the curve area's left edge.
    int XAt(std::int64_t nDistance) const;

    friend bool operator==(const TimeAxis&, const TimeAxis&) = default;
};

struct ValueAxis {
    ValueAxis(const PlotScene& scene, const PlotLayout& layout);

    int m_nMin;
    int m_nSpan;      ///< never 0
    double m_dScale;  ///< pixels per value unit
    int m_nZeroY;     ///< y of the value 0, or of the minimum when that is above 0
    int m_nMinY;      ///< y of the minimum

    int YOf(int nValue) const;

    friend bool operator==(const ValueAxis&, const ValueAxis&) = default;
};
