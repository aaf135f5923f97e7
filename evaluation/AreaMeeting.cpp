#include "evaluation/AreaMeeting.h"

namespace {

/// Where along a segment, from 0 to 1, it passes a side: exact, the part below above 0.
struct Passage {
    Grid m_nAbove;
    Grid m_nBelow;
    Side m_side;

    bool IsAfter(const Passage& other) const {
        return m_nAbove * other.m_nBelow > other.m_nAbove * m_nBelow;
    }
};

struct Passages {
    std::optional<Passage> m_in;   ///< the last one into the rectangle
    std::optional<Passage> m_out;  ///< the first one out of it
};

/// Adds the passages of one axis.
/// @return false when the segment runs along the rectangle outside of it
bool AddPassages(Passages& passages, Grid nFrom, Grid nTo, const GridRange& range, Side low,
                 Side high) {
    const Grid nStep = nTo - nFrom;
    if (nStep == 0) return range.Holds(nFrom);
    const bool bRises = nStep > 0;
    const Passage atLow{bRises ? range.Low() - nFrom : nFrom - range.Low(), bRises ? nStep : -nStep,
                        low};
    const Passage atHigh{bRises ? range.High() - nFrom : nFrom - range.High(),
                         bRises ? nStep : -nStep, high};
    const Passage& in = bRises ? atLow : atHigh;
    const Passage& out = bRises ? atHigh : atLow;
    if (!passages.m_in || in.IsAfter(*passages.m_in)) passages.m_in = in;
    if (!passages.m_out || passages.m_out->IsAfter(out)) passages.m_out = out;
    return true;
}

}  // namespace

std::optional<AreaMeeting> FindMeeting(const GridPoint& from, const GridPoint& to,
                                       const Area& area) {
    if (from == to) return std::nullopt;
    Passages passages;
    if (!AddPassages(passages, from.m_nPosition, to.m_nPosition, area.m_x, Side::Left,
                     Side::Right) ||
        !AddPassages(passages, from.m_nForce, to.m_nForce, area.m_y, Side::Bottom, Side::Top))
        return std::nullopt;
    const Passage& in = *passages.m_in;
    const Passage& out = *passages.m_out;
    if (in.IsAfter(out) || in.m_nAbove > in.m_nBelow || out.m_nAbove < 0) return std::nullopt;
    return AreaMeeting{in.m_side, out.m_side};
}

PieceMeeting FindPieceMeeting(const PathPiece& path, const Area& area) {
    bool bInside = true;
    for (const PointValue value : {PointValue::Position, PointValue::Force}) {
        const GridRange& own = value == PointValue::Position ? area.m_x : area.m_y;
        const Grid nMin = ToGrid(path.Get(value).m_nMin);
        const Grid nMax = ToGrid(path.Get(value).m_nMax);
        if (nMax < own.Low() || nMin > own.High()) return PieceMeeting::Outside;
        bInside = bInside && own.Holds(nMin) && own.Holds(nMax);
    }
    return bInside ? PieceMeeting::Inside : PieceMeeting::Any;
}
