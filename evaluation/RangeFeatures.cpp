#include "evaluation/RangeFeatures.h"

namespace {

using Wide = __int128;

/// Goes through the pieces that have a point in the range.
/// @param visit takes the piece and whether all of it lies there
template <class Visit>
void VisitWithin(const CStroke& stroke, PointRange points, const GridRange& range, Visit visit) {
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        const RTMinMax& positions = piece.Get(PointValue::Position);
        const Grid nMin = ToGrid(positions.m_nMin);
        const Grid nMax = ToGrid(positions.m_nMax);
        if (nMax >= range.Low() && nMin <= range.High())
            visit(piece, range.Holds(nMin) && range.Holds(nMax));
        return true;
    });
}

/// The same by points.
template <class Visit>
void VisitPointsWithin(const CStroke& stroke, PointRange points, const GridRange& range,
                       Visit visit) {
    VisitWithin(stroke, points, range, [&](const PathPiece& piece, bool bAll) {
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast; ++n)
            if (bAll || range.Holds(ToGrid(stroke.GetPosition(n)))) visit(n);
    });
}

/// Of forces and positions, each below 2^62 for the longest curve.
struct Sums {
    std::int64_t m_nPoints = 0;
    std::int64_t m_nForce = 0;
    std::int64_t m_nPosition = 0;
    std::int64_t m_nSquares = 0;  ///< of the positions
    std::int64_t m_nProducts = 0;
};

FeatureValue MeasureExtreme(const CStroke& stroke, PointRange points, const GridRange& range,
                            bool bLargest) {
    const RTMinMax forces = FindRangeWithin(stroke, points, PointValue::Force, range);
    if (forces.m_nMin > forces.m_nMax) return {{}, {}, NOT_REACHED};
    const int nForce = bLargest ? forces.m_nMax : forces.m_nMin;
    FeatureValue found{static_cast<double>(nForce)};
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        const RTMinMax& own = piece.Get(PointValue::Force);
        if (own.m_nMin > nForce || own.m_nMax < nForce) return true;
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast && !found.m_point;
             ++n)
            if (stroke.GetForce(n) == nForce && range.Holds(ToGrid(stroke.GetPosition(n))))
                found.m_point = n;
        return !found.m_point;
    });
    return found;
}

}  // namespace

FeatureValue MeasureSlope(const CStroke& stroke, PointRange points, const GridRange& range) {
    Sums sums;
    VisitPointsWithin(stroke, points, range, [&](std::size_t n) {
        const std::int64_t nForce = stroke.GetForce(n);
        const std::int64_t nPosition = stroke.GetPosition(n);
        ++sums.m_nPoints;
        sums.m_nForce += nForce;
        sums.m_nPosition += nPosition;
        sums.m_nSquares += nPosition * nPosition;
        sums.m_nProducts += nPosition * nForce;
    });
    const Wide nAbove = static_cast<Wide>(sums.m_nPoints) * sums.m_nProducts -
                        static_cast<Wide>(sums.m_nPosition) * sums.m_nForce;
    const Wide nBelow = static_cast<Wide>(sums.m_nPoints) * sums.m_nSquares -
                        static_cast<Wide>(sums.m_nPosition) * sums.m_nPosition;
    if (nBelow == 0) return {{}, {}, NOT_REACHED};
    return {static_cast<double>(nAbove) / static_cast<double>(nBelow)};
}

FeatureValue MeasureMean(const CStroke& stroke, PointRange points, const GridRange& range) {
    std::int64_t nPoints = 0;
    std::int64_t nSum = 0;
    VisitPointsWithin(stroke, points, range, [&](std::size_t n) {
        ++nPoints;
        nSum += stroke.GetForce(n);
    });
    if (nPoints == 0) return {{}, {}, NOT_REACHED};
    return {static_cast<double>(nSum) / static_cast<double>(nPoints)};
}

FeatureValue MeasureSmallest(const CStroke& stroke, PointRange points, const GridRange& range) {
    return MeasureExtreme(stroke, points, range, false);
}

FeatureValue MeasureLargest(const CStroke& stroke, PointRange points, const GridRange& range) {
    return MeasureExtreme(stroke, points, range, true);
}

FeatureValue MeasureDrop(const CStroke& stroke, PointRange points, const GridRange& range) {
    int nHighest = INT16_MIN;
    int nDrop = -1;
    std::size_t nPoint = 0;
    VisitWithin(stroke, points, range, [&](const PathPiece& piece, bool bAll) {
        const RTMinMax& forces = piece.Get(PointValue::Force);
        if (bAll && std::max<int>(nHighest, forces.m_nMax) - forces.m_nMin <= nDrop) {
            nHighest = std::max<int>(nHighest, forces.m_nMax);
            return;
        }
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast; ++n) {
            if (!bAll && !range.Holds(ToGrid(stroke.GetPosition(n)))) continue;
            nHighest = std::max(nHighest, stroke.GetForce(n));
            if (nHighest - stroke.GetForce(n) <= nDrop) continue;
            nDrop = nHighest - stroke.GetForce(n);
            nPoint = n;
        }
    });
    if (nDrop < 0) return {{}, {}, NOT_REACHED};
    return {static_cast<double>(nDrop), nPoint};
}
