#include "evaluation/Learning.h"

#include <algorithm>
#include <limits>
#include <string>

#include "evaluation/Distribution.h"

namespace {

/// Positions in grid units that divide the strokes' common range into cells of equal width.
std::vector<Grid> MakeGrid(const std::vector<CStroke>& strokes, Branch branch,
                           const LearningRule& rule) {
    int nFirst = INT16_MIN, nLast = INT16_MAX;  // of the overlap
    int nLowest = INT16_MAX, nHighest = INT16_MIN;
    for (const CStroke& stroke : strokes) {
        const PointRange points = stroke.GetPoints(branch);
        const int nEnd = stroke.GetPosition(stroke.GetTurn());
        const int nBegin = branch == Branch::Forward
                               ? stroke.GetPosition(0)
                               : stroke.FindRange(PointValue::Position, points).m_nMin;
        nFirst = std::max(nFirst, nBegin);
        nLast = std::min(nLast, nEnd);
        nLowest = std::min(nLowest, nBegin);
        nHighest = std::max(nHighest, nEnd);
    }
    const int nOverlap = nLast - nFirst;
    const int nUnion = nHighest - nLowest;
    if (nUnion > 0 && 5 * nOverlap < 4 * nUnion)
        throw CLearningError("the strokes overlap by " +
                             std::to_string(std::max(100 * nOverlap / nUnion, 0)) +
                             " % of their range; 80 % is the least");
    const int nTrim = nOverlap * static_cast<int>(rule.m_nTrimPercent) / 100;
    const Grid nWidth = ToGrid(nOverlap - 2 * nTrim);
    if (nWidth < GRID_PER_VALUE) throw CLearningError("the strokes have no range in common");
    std::vector<Grid> grid;
    const auto nCells = static_cast<Grid>(rule.m_nPoints - 1);
    for (Grid n = 0; n <= nCells; ++n) grid.push_back(ToGrid(nFirst + nTrim) + nWidth * n / nCells);
    return grid;
}

/// Between which forces something runs in a cell, or at a corner.
struct CellRange {
    double m_dLow = std::numeric_limits<double>::infinity();
    double m_dHigh = -std::numeric_limits<double>::infinity();

    void Include(double dForce) {
        m_dLow = std::min(m_dLow, dForce);
        m_dHigh = std::max(m_dHigh, dForce);
    }
    void Include(const CellRange& other) {
        m_dLow = std::min(m_dLow, other.m_dLow);
        m_dHigh = std::max(m_dHigh, other.m_dHigh);
    }
};

std::vector<CellRange> FindCells(const CStroke& stroke, Branch branch,
                                 const std::vector<Grid>& grid) {
    std::vector<CellRange> cells(grid.size() - 1);
    for (std::size_t n = 0; n < grid.size(); ++n) {
        const double dForce = FindForceAt(stroke, branch, grid[n]).m_value.value();
        if (n > 0) cells[n - 1].Include(dForce);
        if (n < cells.size()) cells[n].Include(dForce);
    }
    const PointRange points = stroke.GetPoints(branch);
    for (std::size_t n = points.m_nFirst; n <= points.m_nLast; ++n) {
        const Grid nAt = ToGrid(stroke.GetPosition(n));
        if (nAt < grid.front() || nAt > grid.back()) continue;
        // A point on a border belongs to both sides.
        const auto next = std::upper_bound(grid.begin() + 1, grid.end() - 1, nAt);
        const auto nCell = static_cast<std::size_t>(next - grid.begin()) - 1;
        cells[nCell].Include(stroke.GetForce(n));
        if (nCell > 0 && grid[nCell] == nAt) cells[nCell - 1].Include(stroke.GetForce(n));
    }
    return cells;
}

/// Bounds of each cell.
std::vector<CellRange> FindBounds(const std::vector<std::vector<CellRange>>& strokes,
                                  const Scales& scales, const LearningRule& rule) {
    const std::size_t nCells = strokes.front().size();
    std::vector<Distribution> lows, highs;
    CellRange means;
    for (std::size_t n = 0; n < nCells; ++n) {
        lows.push_back(
            FindDistribution(strokes.size(), [&](std::size_t c) { return strokes[c][n].m_dLow; }));
        highs.push_back(
            FindDistribution(strokes.size(), [&](std::size_t c) { return strokes[c][n].m_dHigh; }));
        means.Include(lows.back().m_dMean);
        means.Include(highs.back().m_dMean);
    }
    const double dLeast = rule.m_tolerance ? *rule.m_tolerance / scales.m_force.m_dFactor
                                           : 0.02 * (means.m_dHigh - means.m_dLow);
    std::vector<CellRange> bounds;
    for (std::size_t n = 0; n < nCells; ++n)
        bounds.push_back(
            {lows[n].m_dMean - std::max(rule.m_dSigma * lows[n].m_dDeviation, dLeast),
             highs[n].m_dMean + std::max(rule.m_dSigma * highs[n].m_dDeviation, dLeast)});
    return bounds;
}

/// At each position of the grid the wider of the cells beside it.
std::vector<CellRange> FindCorners(const std::vector<CellRange>& bounds) {
    std::vector<CellRange> corners(bounds.size() + 1);
    for (std::size_t n = 0; n < bounds.size(); ++n) {
        corners[n].Include(bounds[n]);
        corners[n + 1].Include(bounds[n]);
    }
    return corners;
}

/// Takes over what corners within a distance have.
std::vector<CellRange> SpreadSideways(const std::vector<CellRange>& corners,
                                      const std::vector<Grid>& grid, Grid nReach) {
    std::vector<CellRange> spread;
    for (std::size_t n = 0; n < grid.size(); ++n) {
        spread.push_back(corners[n]);
        for (std::size_t k = 0; k < grid.size(); ++k)
            if (std::abs(grid[k] - grid[n]) <= nReach) spread.back().Include(corners[k]);
    }
    return spread;
}

}  // namespace

LearnedEnvelope LearnEnvelope(const std::vector<CStroke>& strokes, Branch branch,
                              const Scales& scales, const LearningRule& rule) {
    // Within what a limits file may hold, whatever its decimals.
    constexpr Grid nFarthest = GRID_LIMIT / GRID_PER_VALUE - 1;
    constexpr auto dFarthest = static_cast<double>(nFarthest);
    const std::vector<Grid> grid = MakeGrid(strokes, branch, rule);
    std::vector<std::vector<CellRange>> cells;
    cells.reserve(strokes.size());
    for (const CStroke& stroke : strokes) cells.push_back(FindCells(stroke, branch, grid));
    const Grid nReach = FindGridWidth(scales.m_position, rule.m_dSideways).value_or(2 * GRID_LIMIT);
    const std::vector<CellRange> corners =
        SpreadSideways(FindCorners(FindBounds(cells, scales, rule)), grid, nReach);
    LearnedEnvelope envelope{branch, {}};
    for (std::size_t n = 0; n < grid.size(); ++n)
        envelope.m_corners.push_back({static_cast<double>(grid[n]) / GRID_PER_VALUE,
                                      std::max(corners[n].m_dLow, -dFarthest),
                                      std::min(corners[n].m_dHigh, dFarthest)});
    return envelope;
}
