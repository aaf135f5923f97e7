// A line through corners of rising positions.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "evaluation/Grid.h"

/// Borrows its corners: none, or two and more. Finding a segment begins at the one found last, so
/// that a path along the line costs little.
class CPolyline {
  public:
    explicit CPolyline(const std::vector<GridPoint>& corners) : m_corners(corners) {}

    bool IsEmpty() const { return m_corners.empty(); }

    /// The segment over a position from the first corner's to the last one's.
    std::pair<const GridPoint&, const GridPoint&> FindSegment(Grid nPosition) {
        if (!IsOver(m_nSegment, nPosition)) m_nSegment = Search(nPosition);
        return {m_corners[m_nSegment], m_corners[m_nSegment + 1]};
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
