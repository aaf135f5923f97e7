// The axes of an x/y picture: what they span, and where things stand on them.
#pragma once

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "evaluation/Scales.h"
#include "platform/drawing/Geometry.h"

/// From where to where, in values.
struct AxisRange {
    double m_dLow = std::numeric_limits<double>::infinity();
    double m_dHigh = -std::numeric_limits<double>::infinity();

    void Include(double dValue) {
        m_dLow = std::min(m_dLow, dValue);
        m_dHigh = std::max(m_dHigh, dValue);
    }
    /// The same with room at both ends.
    AxisRange Widen() const;
};

/// One axis: a stretch of pixels for a range of values.
class CXyAxis {
  public:
    /// @param nFrom, nTo pixels of the range's lower and higher end; nTo may be the smaller
    CXyAxis(const AxisRange& range, int nFrom, int nTo)
        : m_range(range), m_nFrom(nFrom), m_nTo(nTo) {}

    /// The pixel of a value, which may lie outside of the axis.
    int At(double dValue) const;
    int AtGrid(Grid nAt) const { return At(static_cast<double>(nAt) / GRID_PER_VALUE); }

    struct Tick {
        int m_nPixel;
        std::int64_t m_nMultiple;  ///< of the step
        std::wstring m_strLabel;
    };
    /// Whole multiples of 1, 2 or 5 times a power of ten, in engineering values.
    /// @param nLeast pixels from one to the next
    std::vector<Tick> FindTicks(const Scale& scale, int nLeast) const;

    /// Every how many of some ticks can have their labels: 1, 2 or 5 times a power of ten.
    /// @param nRoom pixels that a label takes
    static std::int64_t FindLabelStep(const std::vector<Tick>& ticks, int nRoom);

  private:
    AxisRange m_range;
    int m_nFrom;
    int m_nTo;
};
