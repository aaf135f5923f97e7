// A curve in pairs of values as the path of a stroke: force over position.
#pragma once

#include <algorithm>
#include <optional>

#include "curves/RTCurveData.h"
#include "evaluation/Grid.h"

/// The two values of a point, by their place in a pair.
enum class PointValue : std::uint8_t { Force = 0, Position = 1 };

enum class Branch : std::uint8_t {
    Forward,  ///< up to the turn
    Return,   ///< from the turn on
    Both,
};

/// Points in a row of a path, first and last one included.
struct PointRange {
    std::size_t m_nFirst;
    std::size_t m_nLast;
};

/// A piece of a path and what its values lie between.
struct PathPiece {
    PointRange m_points;
    std::array<RTMinMax, 2> m_ranges;  ///< by PointValue

    const RTMinMax& Get(PointValue value) const {
        return m_ranges[static_cast<std::size_t>(value)];
    }
};

/// Point i has the force at value index 2i and the position behind it. The turn is the first point
/// whose position is the largest; it belongs to both branches. A last single value is left out.
///
/// A stroke borrows its curve, as far as it has come when the stroke is made.
class CStroke {
  public:
    /// @param nRate values per second; 0: unknown
    explicit CStroke(const RTCurveData& curve, unsigned nRate);

    /// Why the curve cannot be evaluated; null: it can. Only then has it a turn and branches.
    const char* FindObstacle() const;

    std::size_t CountPoints() const { return m_nPoints; }
    std::size_t GetTurn() const { return m_nTurn; }
    PointRange GetPoints(Branch branch) const;

    int Get(PointValue value, std::size_t nPoint) const {
        return m_pValues[2 * nPoint + static_cast<std::size_t>(value)];
    }
    int GetForce(std::size_t nPoint) const { return m_pValues[2 * nPoint]; }
    int GetPosition(std::size_t nPoint) const { return m_pValues[2 * nPoint + 1]; }
    GridPoint GetGridPoint(std::size_t nPoint) const {
        return {ToGrid(GetPosition(nPoint)), ToGrid(GetForce(nPoint))};
    }
    /// Seconds from the beginning; none without a rate.
    std::optional<double> FindTime(std::size_t nPoint) const {
        if (m_nRate == 0) return std::nullopt;
        return 2.0 * static_cast<double>(nPoint) / m_nRate;
    }

    /// Smallest and largest of one of the values.
    RTMinMax FindRange(PointValue value, PointRange points) const {
        return m_curve.FindMinMax(
            static_cast<std::uint32_t>(2 * points.m_nFirst + static_cast<std::size_t>(value)),
            static_cast<std::uint32_t>(2 * points.m_nLast + 2));
    }
    /// The first point that has the largest value.
    std::size_t FindLargest(PointValue value) const;

    /// Goes through the points in pieces whose ranges the curve's summary knows.
    /// @param visit takes a PathPiece; false ends the way
    template <class Visit>
    void VisitPieces(PointRange points, Visit visit) const {
        constexpr std::size_t nPiecePoints = RT_BLOCK_VALUES / 2;
        for (std::size_t n = points.m_nFirst; n <= points.m_nLast;) {
            const std::size_t nEnd = (n / nPiecePoints + 1) * nPiecePoints;
            const PointRange piece{n, std::min(nEnd - 1, points.m_nLast)};
            if (!visit(PathPiece{
                    piece,
                    {FindRange(PointValue::Force, piece), FindRange(PointValue::Position, piece)}}))
                return;
            n = piece.m_nLast + 1;
        }
    }
    /// The same for what looks at segments: a piece but the first also reaches back to the point in
    /// front of it, and its first segment is the one that ends at its first point.
    template <class Visit>
    void VisitPaths(PointRange points, Visit visit) const {
        VisitPieces(points, [&](PathPiece piece) {
            if (piece.m_points.m_nFirst > points.m_nFirst) {
                const std::size_t nBefore = piece.m_points.m_nFirst - 1;
                piece.m_ranges[0].Include(static_cast<std::int16_t>(GetForce(nBefore)));
                piece.m_ranges[1].Include(static_cast<std::int16_t>(GetPosition(nBefore)));
            }
            return visit(piece);
        });
    }

  private:
    const RTCurveData& m_curve;
    const std::int16_t* m_pValues;
    std::size_t m_nPoints;
    unsigned m_nRate;
    std::size_t m_nTurn = 0;
};

/// Smallest and largest of one of the values, over those points whose other value lies in a range;
/// the neutral range without any.
RTMinMax FindRangeWithin(const CStroke& stroke, PointRange points, PointValue value,
                         const GridRange& within);
