#include "evaluation/AreaMeeting.h"
#include "evaluation/PathJudgement.h"

namespace {

std::optional<std::size_t> FindTouch(const CStroke& stroke, PointRange points, const Area& area) {
    if (area.Holds(stroke.GetGridPoint(points.m_nFirst))) return points.m_nFirst;
    std::optional<std::size_t> touch;
    stroke.VisitPaths(points, [&](const PathPiece& piece) {
        if (FindPieceMeeting(piece, area) == PieceMeeting::Outside) return true;
        for (std::size_t n = std::max(piece.m_points.m_nFirst, points.m_nFirst + 1);
             n <= piece.m_points.m_nLast && !touch; ++n)
            if (FindMeeting(stroke.GetGridPoint(n - 1), stroke.GetGridPoint(n), area)) touch = n;
        return !touch;
    });
    return touch;
}

/// How far forces lie above or below those of the block.
class CBlockDistance {
  public:
    explicit CBlockDistance(const GridRange& forces)
        : m_nLow(forces.m_low.value_or(-FAR)), m_nHigh(forces.m_high.value_or(FAR)) {}

    Grid Of(int nForce) const {
        return std::max(m_nLow - ToGrid(nForce), ToGrid(nForce) - m_nHigh);
    }

    /// A distance that no force of a range comes below.
    Grid OfRange(const RTMinMax& forces) const {
        return std::max(m_nLow - ToGrid(forces.m_nMax), ToGrid(forces.m_nMin) - m_nHigh);
    }

  private:
    /// An open end, from which every distance is the smaller one.
    static constexpr Grid FAR = 1'000'000'000'000;

    Grid m_nLow;
    Grid m_nHigh;
};

std::optional<double> FindMargin(const CStroke& stroke, PointRange points, const Area& area) {
    if (!area.m_y.m_low && !area.m_y.m_high) return std::nullopt;
    const CBlockDistance distance(area.m_y);
    std::optional<Grid> margin;
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        const RTMinMax& positions = piece.Get(PointValue::Position);
        const bool bOutside =
            ToGrid(positions.m_nMax) < area.m_x.Low() || ToGrid(positions.m_nMin) > area.m_x.High();
        if (bOutside || (margin && distance.OfRange(piece.Get(PointValue::Force)) >= *margin))
            return true;
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast; ++n)
            if (area.m_x.Holds(ToGrid(stroke.GetPosition(n)))) {
                const Grid nOwn = distance.Of(stroke.GetForce(n));
                margin = std::min(margin.value_or(nOwn), nOwn);
            }
        return true;
    });
    if (!margin) return std::nullopt;
    return static_cast<double>(*margin) / GRID_PER_VALUE;
}

}  // namespace

PathJudgement JudgePath(const CStroke& stroke, const BlockLimit& block) {
    const PointRange points = stroke.GetPoints(block.m_branch);
    PathJudgement judgement;
    judgement.m_point = FindTouch(stroke, points, block.m_area);
    if (judgement.m_point) judgement.m_strReason = "touched";
    judgement.m_margin = FindMargin(stroke, points, block.m_area);
    return judgement;
}
