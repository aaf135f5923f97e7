#include <limits>

#include "evaluation/PathJudgement.h"
#include "evaluation/Polyline.h"

namespace {

constexpr double ANY_DISTANCE = std::numeric_limits<double>::infinity();

/// The bound below, or above, a path.
class CBound {
  public:
    CBound(const std::vector<GridPoint>& line, bool bUpper, Grid nTolerance)
        : m_line(line), m_nSign(bUpper ? -1 : 1), m_nTolerance(nTolerance) {}

    /// A distance that no point of a piece comes below, of those over the bound's positions; not
    /// exact, and -infinity where it would take long to find.
    double FindLeast(const RTMinMax& positions, const RTMinMax& forces) const {
        if (m_line.IsEmpty()) return ANY_DISTANCE;
        const auto reach = m_line.FindReach(ToGrid(positions.m_nMin), ToGrid(positions.m_nMax));
        if (!reach) return -ANY_DISTANCE;
        const double dDistance = m_nSign > 0
                                     ? static_cast<double>(ToGrid(forces.m_nMin)) - reach->m_dHigh
                                     : reach->m_dLow - static_cast<double>(ToGrid(forces.m_nMax));
        // The rounding of two numbers that are no larger than 10^8.
        return dDistance + static_cast<double>(m_nTolerance) - 1e-6;
    }

    /// How far inside a point lies. The sign is exact, and so is 0.
    double FindDistance(const GridPoint& point) {
        if (m_line.IsEmpty()) return ANY_DISTANCE;
        const auto [nAbove, nBelow] = m_line.FindHeight(point);
        return static_cast<double>(m_nSign * nAbove + m_nTolerance * nBelow) /
               static_cast<double>(nBelow);
    }

  private:
    CPolyline m_line;
    int m_nSign;
    Grid m_nTolerance;
};

class CEnvelopeWalk {
  public:
    CEnvelopeWalk(const CStroke& stroke, const EnvelopeLimit& envelope)
        : m_stroke(stroke), m_positions(envelope.GetPositions()),
          m_lower(envelope.m_lower, false, envelope.m_nTolerance),
          m_upper(envelope.m_upper, true, envelope.m_nTolerance) {}

    void Visit(const PathPiece& piece) {
        const RTMinMax& positions = piece.Get(PointValue::Position);
        const RTMinMax& forces = piece.Get(PointValue::Force);
        if (ToGrid(positions.m_nMax) < m_positions.Low() ||
            ToGrid(positions.m_nMin) > m_positions.High())
            return;
        // Neither the first failure nor a smaller margin.
        if (std::min(m_lower.FindLeast(positions, forces), m_upper.FindLeast(positions, forces)) >
            m_dMargin)
            return;
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast; ++n) Check(n);
    }

    PathJudgement Finish(PointRange points) {
        const RTMinMax reached = m_stroke.FindRange(PointValue::Position, points);
        if (m_judgement.m_strReason.empty() && (ToGrid(reached.m_nMin) > m_positions.Low() ||
                                                ToGrid(reached.m_nMax) < m_positions.High())) {
            m_judgement.m_strReason = "not covered";
            m_judgement.m_point = points.m_nLast;
        }
        if (m_dMargin < ANY_DISTANCE) m_judgement.m_margin = m_dMargin / GRID_PER_VALUE;
        return m_judgement;
    }

  private:
    void Check(std::size_t nPoint) {
        const GridPoint point = m_stroke.GetGridPoint(nPoint);
        if (!m_positions.Holds(point.m_nPosition)) return;
        const double dLower = m_lower.FindDistance(point);
        const double dUpper = m_upper.FindDistance(point);
        m_dMargin = std::min({m_dMargin, dLower, dUpper});
        if (m_judgement.m_point || (dLower >= 0 && dUpper >= 0)) return;
        m_judgement.m_point = nPoint;
        m_judgement.m_strReason = dLower < 0 ? "below lower bound" : "above upper bound";
    }

    const CStroke& m_stroke;
    GridRange m_positions;
    CBound m_lower;
    CBound m_upper;
    double m_dMargin = ANY_DISTANCE;
    PathJudgement m_judgement;
};

}  // namespace

PathJudgement JudgePath(const CStroke& stroke, const EnvelopeLimit& envelope) {
    const PointRange points = stroke.GetPoints(envelope.m_branch);
    CEnvelopeWalk walk(stroke, envelope);
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        walk.Visit(piece);
        return true;
    });
    return walk.Finish(points);
}
