#include "evaluation/Stroke.h"

CStroke::CStroke(const RTCurveData& curve, unsigned nRate)
    : m_curve(curve), m_pValues(curve.GetValues()), m_nPoints(curve.GetCount() / 2),
      m_nRate(nRate) {
    if (m_nPoints > 0) m_nTurn = FindLargest(PointValue::Position);
}

const char* CStroke::FindObstacle() const {
    if (m_nPoints < 2) return "too few points";
    const RTMinMax positions = FindRange(PointValue::Position, {0, m_nPoints - 1});
    return positions.m_nMin == positions.m_nMax ? "constant position" : nullptr;
}

PointRange CStroke::GetPoints(Branch branch) const {
    return {branch == Branch::Return ? m_nTurn : 0,
            branch == Branch::Forward ? m_nTurn : m_nPoints - 1};
}

std::size_t CStroke::FindLargest(PointValue value) const {
    const PointRange all{0, m_nPoints - 1};
    const std::int16_t nLargest = FindRange(value, all).m_nMax;
    std::size_t nFound = 0;
    VisitPieces(all, [&](const PathPiece& piece) {
        if (piece.Get(value).m_nMax < nLargest) return true;
        nFound = piece.m_points.m_nFirst;
        while (Get(value, nFound) < nLargest) ++nFound;
        return false;
    });
    return nFound;
}

RTMinMax FindRangeWithin(const CStroke& stroke, PointRange points, PointValue value,
                         const GridRange& within) {
    const PointValue other = value == PointValue::Force ? PointValue::Position : PointValue::Force;
    RTMinMax found;
    stroke.VisitPieces(points, [&](const PathPiece& piece) {
        const RTMinMax& range = piece.Get(value);
        const RTMinMax& others = piece.Get(other);
        const bool bAdds = range.m_nMin < found.m_nMin || range.m_nMax > found.m_nMax;
        const bool bOutside =
            ToGrid(others.m_nMax) < within.Low() || ToGrid(others.m_nMin) > within.High();
        if (!bAdds || bOutside) return true;
        if (within.Holds(ToGrid(others.m_nMin)) && within.Holds(ToGrid(others.m_nMax))) {
            found.Include(range);
            return true;
        }
        for (std::size_t n = piece.m_points.m_nFirst; n <= piece.m_points.m_nLast; ++n)
            if (within.Holds(ToGrid(stroke.Get(other, n))))
                found.Include(static_cast<std::int16_t>(stroke.Get(value, n)));
        return true;
    });
    return found;
}
