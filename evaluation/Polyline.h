// A line through corners of rising positions.
#pragma once

#include <optional>
#include <vector>

#include "evaluation/Grid.h"

/// Borrows its corners: none, or two and more. Finding a segment begins at the one found last, so
/// that a path along the line costs little.
class CPolyline {
  public:
    explicit CPolyline(const std::vector<GridPoint>& corners) : m_corners(corners) {}

    bool IsEmpty() const { return m_corners.empty(); }

    /// A height as a fraction, so that its sign is exact.
    struct Height {
        Grid m_nAbove;
        Grid m_nBelow;  ///< above 0
    };
    /// How high above the line a point lies whose position is one of the line's.
    Height FindHeight(const GridPoint& point) {
        if (!IsOver(m_nSegment, point.m_nPosition)) m_nSegment = Search(point.m_nPosition);
        const GridPoint& from = m_corners[m_nSegment];
        const GridPoint& to = m_corners[m_nSegment + 1];
        const Grid nWidth = to.m_nPosition - from.m_nPosition;
        return {(point.m_nForce - from.m_nForce) * nWidth -
                    (to.m_nForce - from.m_nForce) * (point.m_nPosition - from.m_nPosition),
                nWidth};
    }

    struct Reach {
        double m_dLow;
        double m_dHigh;
    };
    /// Between which forces the line runs over a range of positions that it shares some of; not
    /// exact. None when that takes more than some corners.
    std::optional<Reach> FindReach(Grid nFrom, Grid nTo) const;

  private:
    bool IsOver(std::size_t nSegment, Grid nPosition) const {
        return m_corners[nSegment].m_nPosition <= nPosition &&
               nPosition <= m_corners[nSegment + 1].m_nPosition;
    }
    std::size_t Search(Grid nPosition) const;

    const std::vector<GridPoint>& m_corners;
    std::size_t m_nSegment = 0;
};
