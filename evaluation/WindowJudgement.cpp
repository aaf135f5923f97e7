#include "evaluation/AreaMeeting.h"
#include "evaluation/PathJudgement.h"

namespace {

/// A side passed, and the point behind it.
struct Crossing {
    Side m_side;
    std::size_t m_nPoint;
};

/// What a path does with the rectangle.
struct WindowPath {
    bool m_bStartsInside = false;
    bool m_bEndsInside = false;
    std::optional<Crossing> m_firstEntry;
    std::optional<Crossing> m_lastExit;
    std::optional<Crossing> m_stray;  ///< the first one by a side that is neither entry nor exit
};

WindowPath FollowPath(const CStroke& stroke, PointRange points, const WindowLimit& window) {
    WindowPath path;
    const auto note = [&](Crossing crossing) {
        const bool bAllowed =
            window.m_entry.Has(crossing.m_side) || window.m_exit.Has(crossing.m_side);
        if (!bAllowed && !path.m_stray) path.m_stray = crossing;
    };
    path.m_bStartsInside = window.m_area.Holds(stroke.GetGridPoint(points.m_nFirst));
    path.m_bEndsInside = window.m_area.Holds(stroke.GetGridPoint(points.m_nLast));
    stroke.VisitPaths(points, [&](const PathPiece& piece) {
        if (FindPieceMeeting(piece, window.m_area) != PieceMeeting::Any) return true;
        for (std::size_t n = std::max(piece.m_points.m_nFirst, points.m_nFirst + 1);
             n <= piece.m_points.m_nLast; ++n) {
            const GridPoint from = stroke.GetGridPoint(n - 1);
            const GridPoint to = stroke.GetGridPoint(n);
            const bool bFromInside = window.m_area.Holds(from);
            const bool bToInside = window.m_area.Holds(to);
            if (bFromInside && bToInside) continue;
            const auto meeting = FindMeeting(from, to, window.m_area);
            if (!meeting) continue;
            if (!bFromInside) {
                if (!path.m_firstEntry) path.m_firstEntry = {meeting->m_in, n};
                note({meeting->m_in, n});
            }
            if (!bToInside) {
                path.m_lastExit = {meeting->m_out, n};
                note({meeting->m_out, n});
            }
        }
        return true;
    });
    return path;
}

/// The failure of the smallest index, of equal ones the first found.
class CFirstFailure {
  public:
    void Add(std::size_t nPoint, std::string strReason) {
        if (m_judgement.m_point && *m_judgement.m_point <= nPoint) return;
        m_judgement.m_point = nPoint;
        m_judgement.m_strReason = std::move(strReason);
    }
    const PathJudgement& Get() const { return m_judgement; }

  private:
    PathJudgement m_judgement;
};

std::string WithSide(const char* pText, Side side) {
    return std::string(pText) + ' ' + SIDE_NAMES[static_cast<std::size_t>(side)];
}

PathJudgement FindFailure(const WindowPath& path, PointRange points, const WindowLimit& window) {
    CFirstFailure failure;
    if (path.m_bStartsInside && !window.m_entry.Has(Side::None))
        failure.Add(points.m_nFirst, "starts inside");
    if (!path.m_bStartsInside && path.m_firstEntry &&
        !window.m_entry.Has(path.m_firstEntry->m_side))
        failure.Add(path.m_firstEntry->m_nPoint, WithSide("enters by", path.m_firstEntry->m_side));
    if (path.m_stray)
        failure.Add(path.m_stray->m_nPoint, WithSide("crosses", path.m_stray->m_side));
    if (!path.m_bEndsInside && path.m_lastExit && !window.m_exit.Has(path.m_lastExit->m_side))
        failure.Add(path.m_lastExit->m_nPoint, WithSide("leaves by", path.m_lastExit->m_side));
    if (path.m_bEndsInside && !window.m_exit.Has(Side::None))
        failure.Add(points.m_nLast, "ends inside");
    if (!path.m_bStartsInside && !path.m_firstEntry) failure.Add(points.m_nLast, "never entered");
    return failure.Get();
}

std::optional<double> FindMargin(const CStroke& stroke, PointRange points,
                                 const WindowLimit& window) {
    const auto value = window.FindMarginValue();
    if (!value) return std::nullopt;
    const bool bForce = value == PointValue::Force;
    const GridRange& own = bForce ? window.m_area.m_y : window.m_area.m_x;
    const GridRange& other = bForce ? window.m_area.m_x : window.m_area.m_y;
    const RTMinMax found = FindRangeWithin(stroke, points, *value, other);
    if (found.m_nMin > found.m_nMax) return std::nullopt;
    std::optional<Grid> margin;
    if (own.m_low) margin = ToGrid(found.m_nMin) - *own.m_low;
    if (own.m_high) {
        const Grid nAbove = *own.m_high - ToGrid(found.m_nMax);
        margin = std::min(margin.value_or(nAbove), nAbove);
    }
    if (!margin) return std::nullopt;
    return static_cast<double>(*margin) / GRID_PER_VALUE;
}

}  // namespace

PathJudgement JudgePath(const CStroke& stroke, const WindowLimit& window) {
    const PointRange points = stroke.GetPoints(window.m_branch);
    PathJudgement judgement = FindFailure(FollowPath(stroke, points, window), points, window);
    judgement.m_margin = FindMargin(stroke, points, window);
    return judgement;
}
