#include "evaluation/PathJudgement.h"

namespace {

/// Whether a segment crosses the line, where it is asked for.
bool IsCrossing(const CStroke& stroke, std::size_t nPoint, const LineLimit& line) {
    const Grid nFrom = ToGrid(stroke.GetForce(nPoint - 1));
    const Grid nTo = ToGrid(stroke.GetForce(nPoint));
    const bool bUp = nFrom < line.m_nForce && line.m_nForce <= nTo;
    const bool bDown = nFrom >= line.m_nForce && line.m_nForce > nTo;
    if (!(bUp && line.m_direction != Direction::Down) &&
        !(bDown && line.m_direction != Direction::Up))
        return false;
    // Both sides of from <= position <= to, taken times the height of the segment.
    const Grid nHeight = bUp ? nTo - nFrom : nFrom - nTo;
    const Grid nPart = bUp ? line.m_nForce - nFrom : nFrom - line.m_nForce;
    const Grid nPosition = ToGrid(stroke.GetPosition(nPoint - 1));
    const Grid nWay = (ToGrid(stroke.GetPosition(nPoint)) - nPosition) * nPart;
    return (line.m_positions.Low() - nPosition) * nHeight <= nWay &&
           nWay <= (line.m_positions.High() - nPosition) * nHeight;
}

double FindPosition(const CStroke& stroke, std::size_t nPoint, Grid nForce) {
    const int nFrom = stroke.GetPosition(nPoint - 1);
    const int nForceFrom = stroke.GetForce(nPoint - 1);
    const Grid nHeight = ToGrid(stroke.GetForce(nPoint) - nForceFrom);
    return nFrom + static_cast<double>((stroke.GetPosition(nPoint) - nFrom) *
                                       (nForce - ToGrid(nForceFrom))) /
                       static_cast<double>(nHeight);
}

std::optional<std::size_t> FindCrossing(const CStroke& stroke, PointRange points,
                                        const LineLimit& line) {
    std::optional<std::size_t> crossing;
    stroke.VisitPaths(points, [&](const PathPiece& path) {
        const RTMinMax& forces = path.Get(PointValue::Force);
        const RTMinMax& positions = path.Get(PointValue::Position);
        if (ToGrid(forces.m_nMin) >= line.m_nForce || ToGrid(forces.m_nMax) < line.m_nForce ||
            ToGrid(positions.m_nMax) < line.m_positions.Low() ||
            ToGrid(positions.m_nMin) > line.m_positions.High())
            return true;
        for (std::size_t n = std::max(path.m_points.m_nFirst, points.m_nFirst + 1);
             n <= path.m_points.m_nLast && !crossing; ++n)
            if (IsCrossing(stroke, n, line)) crossing = n;
        return !crossing;
    });
    return crossing;
}

std::optional<double> FindMargin(const CStroke& stroke, PointRange points, const LineLimit& line) {
    if (line.m_direction == Direction::Any) return std::nullopt;
    const RTMinMax forces = FindRangeWithin(stroke, points, PointValue::Force, line.m_positions);
    if (forces.m_nMin > forces.m_nMax) return std::nullopt;
    const Grid nBeyond = line.m_direction == Direction::Up ? ToGrid(forces.m_nMax) - line.m_nForce
                                                           : line.m_nForce - ToGrid(forces.m_nMin);
    return static_cast<double>(line.m_bRequired ? nBeyond : -nBeyond) / GRID_PER_VALUE;
}

}  // namespace

PathJudgement JudgePath(const CStroke& stroke, const LineLimit& line) {
    const PointRange points = stroke.GetPoints(line.m_branch);
    const auto crossing = FindCrossing(stroke, points, line);
    PathJudgement judgement;
    if (crossing) judgement.m_position = FindPosition(stroke, *crossing, line.m_nForce);
    if (line.m_bRequired != crossing.has_value()) {
        judgement.m_strReason = crossing ? "crossed" : "not crossed";
        judgement.m_point = crossing.value_or(points.m_nLast);
    }
    judgement.m_margin = FindMargin(stroke, points, line);
    return judgement;
}
