#include "evaluation/Crossings.h"

namespace {

/// One value of the path where the other one gets to a grid unit, between a point and the one
/// before it, where it has not got there yet.
double Interpolate(const CStroke& stroke, PointValue value, PointValue by, Grid nAt,
                   std::size_t nPoint) {
    const int nTo = stroke.Get(value, nPoint);
    const int nByTo = stroke.Get(by, nPoint);
    if (ToGrid(nByTo) == nAt) return nTo;
    const int nFrom = stroke.Get(value, nPoint - 1);
    const int nByFrom = stroke.Get(by, nPoint - 1);
    return nFrom + static_cast<double>((nTo - nFrom) * (nAt - ToGrid(nByFrom))) /
                       static_cast<double>(ToGrid(nByTo - nByFrom));
}

/// The first of the points that a hold begins at: a rise to a force, or a fall when nSign is -1.
class CHoldSearch {
  public:
    CHoldSearch(const CStroke& stroke, int nSign, Grid nForce, std::size_t nHold)
        : m_stroke(stroke), m_nSign(nSign), m_nForce(nSign * nForce), m_nHold(nHold) {}

    std::optional<std::size_t> Find(PointRange points) {
        m_stroke.VisitPaths(points, [&](const PathPiece& path) {
            const RTMinMax& forces = path.Get(PointValue::Force);
            const Grid nLow = ToGrid(m_nSign > 0 ? forces.m_nMin : -forces.m_nMax);
            const Grid nHigh = ToGrid(m_nSign > 0 ? forces.m_nMax : -forces.m_nMin);
            if (m_begin && nLow >= m_nForce) return !IsHeldUpTo(path.m_points.m_nLast);
            if (!m_begin && (nLow >= m_nForce || nHigh < m_nForce)) return true;
            for (std::size_t n = std::max(path.m_points.m_nFirst, points.m_nFirst + 1);
                 n <= path.m_points.m_nLast; ++n)
                if (Step(n)) return false;
            return true;
        });
        return m_bFound ? m_begin : std::nullopt;
    }

  private:
    Grid At(std::size_t nPoint) const { return m_nSign * ToGrid(m_stroke.GetForce(nPoint)); }

    bool IsHeldUpTo(std::size_t nPoint) { return m_bFound = nPoint - *m_begin + 1 >= m_nHold; }

    bool Step(std::size_t nPoint) {
        if (At(nPoint) < m_nForce)
            m_begin.reset();
        else if (!m_begin && At(nPoint - 1) < m_nForce)
            m_begin = nPoint;
        return m_begin && IsHeldUpTo(nPoint);
    }

    const CStroke& m_stroke;
    int m_nSign;
    Grid m_nForce;
    std::size_t m_nHold;
    std::optional<std::size_t> m_begin;  ///< of a hold under way
    bool m_bFound = false;
};

}  // namespace

FeatureValue FindForceAt(const CStroke& stroke, Branch branch, Grid nPosition) {
    const PointRange points = stroke.GetPoints(branch);
    const bool bForward = branch == Branch::Forward;
    const auto isReached = [&](int nAt) {
        return bForward ? ToGrid(nAt) >= nPosition : ToGrid(nAt) <= nPosition;
    };
    std::optional<std::size_t> found;
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        const RTMinMax& positions = piece.Get(PointValue::Position);
        if (!isReached(bForward ? positions.m_nMax : positions.m_nMin)) return true;
        found = piece.m_points.m_nFirst;
        while (!isReached(stroke.GetPosition(*found))) ++*found;
        return false;
    });
    const bool bBegins = found == points.m_nFirst;
    if (!found || (bBegins && ToGrid(stroke.GetPosition(*found)) != nPosition))
        return {{}, {}, NOT_REACHED};
    return {Interpolate(stroke, PointValue::Force, PointValue::Position, nPosition, *found), found};
}

FeatureValue FindPositionAt(const CStroke& stroke, const Feature& feature) {
    const int nSign = feature.m_direction == Direction::Down ? -1 : 1;
    CHoldSearch search(stroke, nSign, feature.m_nAt, feature.m_nHold);
    const auto found = search.Find(stroke.GetPoints(feature.m_branch));
    if (!found) return {{}, {}, NOT_REACHED};
    return {Interpolate(stroke, PointValue::Position, PointValue::Force, feature.m_nAt, *found),
            found};
}
