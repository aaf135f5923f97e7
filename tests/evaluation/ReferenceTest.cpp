// The plain rules, point by point, against what looks at whole pieces: long strokes with noise,
// flanks and places where the path stands still.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "evaluation/PathJudgement.h"
#include "tests/evaluation/StrokeData.h"

namespace {

using enum FeatureKind;
using Size = std::size_t;

/// A branch of a stroke as a list of points in grid units.
struct Path {
    Path(const CStroke& stroke, Branch branch) : m_points(stroke.GetPoints(branch)) {
        for (Size n = m_points.m_nFirst; n <= m_points.m_nLast; ++n)
            m_at.push_back(stroke.GetGridPoint(n));
    }
    PointRange m_points;
    std::vector<GridPoint> m_at;
};

using Found = std::optional<Size>;

/// What a feature is by its rule: its value in values, and its point.
std::pair<std::optional<double>, Found> Measure(const CStroke& stroke, const Feature& feature) {
    const Path path(stroke, feature.m_branch);
    const auto& at = path.m_at;
    const Grid nAt = feature.m_nAt;
    const Size nFirst = path.m_points.m_nFirst;
    std::vector<Size> in;
    for (Size n = 0; n < at.size(); ++n)
        if (feature.m_range.Holds(at[n].m_nPosition)) in.push_back(n);
    if (feature.m_kind == ForceAt) {
        const bool bUp = feature.m_branch == Branch::Forward;
        for (Size n = 0; n < at.size(); ++n) {
            if (bUp ? at[n].m_nPosition < nAt : at[n].m_nPosition > nAt) continue;
            if (at[n].m_nPosition == nAt) return {at[n].m_nForce / 1000.0, nFirst + n};
            if (n == 0) return {};
            const GridPoint &a = at[n - 1], &b = at[n];
            return {(a.m_nForce + (b.m_nForce - a.m_nForce) * 1.0 * (nAt - a.m_nPosition) /
                                      (b.m_nPosition - a.m_nPosition)) /
                        1000,
                    nFirst + n};
        }
        return {};
    }
    if (feature.m_kind == PositionAt) {
        const bool bUp = feature.m_direction == Direction::Up;
        const auto beyond = [&](Size n) {
            return bUp ? at[n].m_nForce >= nAt : at[n].m_nForce <= nAt;
        };
        for (Size n = 1; n + feature.m_nHold <= at.size(); ++n) {
            bool bHolds = !beyond(n - 1);
            for (Size k = 0; k < feature.m_nHold && bHolds; ++k) bHolds = beyond(n + k);
            if (!bHolds) continue;
            const GridPoint &a = at[n - 1], &b = at[n];
            return {(a.m_nPosition + (b.m_nPosition - a.m_nPosition) * 1.0 * (nAt - a.m_nForce) /
                                         (b.m_nForce - a.m_nForce)) /
                        1000,
                    nFirst + n};
        }
        return {};
    }
    if (in.empty()) return {};
    long double dN = in.size(), dX = 0, dY = 0, dXX = 0, dXY = 0;
    Size nLow = in[0], nHigh = in[0], nTop = in[0], nDrop = in[0];
    Grid drop = -1;
    for (const Size n : in) {
        const long double x = at[n].m_nPosition - at[in[0]].m_nPosition, y = at[n].m_nForce;
        dX += x, dY += y, dXX += x * x, dXY += x * y;
        if (at[n].m_nForce < at[nLow].m_nForce) nLow = n;
        if (at[n].m_nForce > at[nHigh].m_nForce) nHigh = n;
        if (at[n].m_nForce > at[nTop].m_nForce) nTop = n;
        if (at[nTop].m_nForce - at[n].m_nForce > drop)
            drop = at[nTop].m_nForce - at[n].m_nForce, nDrop = n;
    }
    switch (feature.m_kind) {
    case Slope:
        if (dN * dXX == dX * dX) return {};
        return {(dN * dXY - dX * dY) / (dN * dXX - dX * dX), {}};
    case MeanForce:
        return {dY / dN / 1000, {}};
    case MinForce:
        return {at[nLow].m_nForce / 1000.0, nFirst + nLow};
    case MaxForce:
        return {at[nHigh].m_nForce / 1000.0, nFirst + nHigh};
    default:
        return {drop / 1000.0, nFirst + nDrop};
    }
}

using Margin = std::optional<double>;

/// The smallest of a distance, in grid units, over the points that count.
Margin Smallest(const Path& path, const std::function<Margin(const GridPoint&)>& distance) {
    Margin smallest;
    for (const GridPoint& point : path.m_at)
        if (const Margin own = distance(point); own && !(smallest && *smallest <= *own))
            smallest = own;
    return smallest ? Margin(*smallest / 1000) : smallest;
}

Margin Nearer(const GridRange& range, Grid nAt) {
    Margin margin;
    if (range.m_low) margin = nAt - *range.m_low;
    if (range.m_high) margin = std::min<double>(margin.value_or(1e99), *range.m_high - nAt);
    return margin;
}

/// The part of a segment inside an area, from 0 to 1, by clipping at one side after the other.
std::optional<std::pair<long double, long double>> Clip(const GridPoint& a, const GridPoint& b,
                                                        const Area& area) {
    if (a == b) return std::nullopt;
    long double in = 0, out = 1;
    const auto clip = [&](long double d, long double dRoom) {  // d * t <= dRoom
        if (d == 0) return dRoom >= 0;
        if (d > 0) out = std::min(out, dRoom / d);
        if (d < 0) in = std::max(in, dRoom / d);
        return true;
    };
    const Grid dx = b.m_nPosition - a.m_nPosition, dy = b.m_nForce - a.m_nForce;
    const bool bAll =
        clip(dx, area.m_x.High() - a.m_nPosition) && clip(-dx, a.m_nPosition - area.m_x.Low()) &&
        clip(dy, area.m_y.High() - a.m_nForce) && clip(-dy, a.m_nForce - area.m_y.Low());
    if (!bAll || in > out) return std::nullopt;
    return std::pair(in, out);
}

/// The side that a point at a part of a segment lies on.
Side SideAt(const GridPoint& a, const GridPoint& b, const Area& area, long double t) {
    const auto isAt = [&](Grid from, Grid to, Grid side) {
        return std::abs(from + (to - from) * t - side) < 1e-6L && from != to;
    };
    if (isAt(a.m_nPosition, b.m_nPosition, area.m_x.Low())) return Side::Left;
    if (isAt(a.m_nPosition, b.m_nPosition, area.m_x.High())) return Side::Right;
    return isAt(a.m_nForce, b.m_nForce, area.m_y.Low()) ? Side::Bottom : Side::Top;
}

std::string Name(Side side) { return SIDE_NAMES[static_cast<Size>(side)]; }

PathJudgement Judge(const CStroke& stroke, const WindowLimit& window) {
    const Path path(stroke, window.m_branch);
    struct Note {
        bool m_bIn;
        Side m_side;
        Size m_nPoint;
    };
    std::vector<Note> notes;
    const Area& area = window.m_area;
    for (Size n = 1; n < path.m_at.size(); ++n) {
        const GridPoint &a = path.m_at[n - 1], &b = path.m_at[n];
        const auto part = Clip(a, b, area);
        if (!part) continue;
        const Size nPoint = path.m_points.m_nFirst + n;
        if (!area.Holds(a)) notes.push_back({true, SideAt(a, b, area, part->first), nPoint});
        if (!area.Holds(b)) notes.push_back({false, SideAt(a, b, area, part->second), nPoint});
    }
    const bool bStarts = area.Holds(path.m_at.front()), bEnds = area.Holds(path.m_at.back());
    const Size nLast = path.m_points.m_nLast;
    std::vector<std::pair<Size, std::string>> failures;
    if (bStarts && !window.m_entry.Has(Side::None))
        failures.emplace_back(path.m_points.m_nFirst, "starts inside");
    if (!bStarts && !notes.empty() && !window.m_entry.Has(notes[0].m_side))
        failures.emplace_back(notes[0].m_nPoint, "enters by " + Name(notes[0].m_side));
    for (const Note& note : notes)
        if (!window.m_entry.Has(note.m_side) && !window.m_exit.Has(note.m_side)) {
            failures.emplace_back(note.m_nPoint, "crosses " + Name(note.m_side));
            break;
        }
    if (!bEnds && !notes.empty() && !notes.back().m_bIn && !window.m_exit.Has(notes.back().m_side))
        failures.emplace_back(notes.back().m_nPoint, "leaves by " + Name(notes.back().m_side));
    if (bEnds && !window.m_exit.Has(Side::None)) failures.emplace_back(nLast, "ends inside");
    if (!bStarts && notes.empty()) failures.emplace_back(nLast, "never entered");
    PathJudgement judgement;
    std::stable_sort(failures.begin(), failures.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    if (!failures.empty())
        judgement.m_point = failures[0].first, judgement.m_strReason = failures[0].second;
    judgement.m_margin = Smallest(path, [&](const GridPoint& point) -> Margin {
        return area.m_x.Holds(point.m_nPosition) ? Nearer(area.m_y, point.m_nForce) : Margin();
    });
    return judgement;
}

PathJudgement Judge(const CStroke& stroke, const BlockLimit& block) {
    const Path path(stroke, block.m_branch);
    PathJudgement judgement;
    for (Size n = 0; n < path.m_at.size() && !judgement.m_point; ++n)
        if (n == 0 ? block.m_area.Holds(path.m_at[0])
                   : Clip(path.m_at[n - 1], path.m_at[n], block.m_area).has_value()) {
            judgement.m_point = path.m_points.m_nFirst + n;
            judgement.m_strReason = "touched";
        }
    judgement.m_margin = Smallest(path, [&](const GridPoint& point) -> Margin {
        const GridRange& y = block.m_area.m_y;
        if (!block.m_area.m_x.Holds(point.m_nPosition)) return {};
        return std::max(y.m_low ? *y.m_low - point.m_nForce : Grid{-1} << 50,
                        y.m_high ? point.m_nForce - *y.m_high : Grid{-1} << 50);
    });
    return judgement;
}

PathJudgement Judge(const CStroke& stroke, const LineLimit& line) {
    const Path path(stroke, line.m_branch);
    PathJudgement judgement;
    const bool bUp = line.m_direction == Direction::Up;
    for (Size n = 1; n < path.m_at.size() && !judgement.m_position; ++n) {
        const GridPoint &a = path.m_at[n - 1], &b = path.m_at[n];
        const auto isBeyond = [&](const GridPoint& p) { return p.m_nForce >= line.m_nForce; };
        if (isBeyond(a) == bUp || isBeyond(b) != bUp) continue;
        const long double position = a.m_nPosition + (b.m_nPosition - a.m_nPosition) * 1.0L *
                                                         (line.m_nForce - a.m_nForce) /
                                                         (b.m_nForce - a.m_nForce);
        if (position < line.m_positions.Low() || position > line.m_positions.High()) continue;
        judgement.m_position = position / 1000;
        judgement.m_point = path.m_points.m_nFirst + n;
    }
    if (judgement.m_position.has_value() == line.m_bRequired) {
        judgement.m_point.reset();
    } else {
        judgement.m_strReason = line.m_bRequired ? "not crossed" : "crossed";
        if (line.m_bRequired) judgement.m_point = path.m_points.m_nLast;
    }
    const auto best = Smallest(path, [&](const GridPoint& point) -> Margin {
        if (!line.m_positions.Holds(point.m_nPosition)) return {};
        return bUp ? line.m_nForce - point.m_nForce : point.m_nForce - line.m_nForce;
    });
    if (best) judgement.m_margin = line.m_bRequired ? -*best : *best;
    return judgement;
}

PathJudgement Judge(const CStroke& stroke, const EnvelopeLimit& envelope) {
    const Path path(stroke, envelope.m_branch);
    const auto boundAt = [](const std::vector<GridPoint>& line, Grid nAt) -> long double {
        Size n = 1;
        while (line[n].m_nPosition < nAt) ++n;
        const GridPoint &a = line[n - 1], &b = line[n];
        return a.m_nForce + (b.m_nForce - a.m_nForce) * 1.0L * (nAt - a.m_nPosition) /
                                (b.m_nPosition - a.m_nPosition);
    };
    PathJudgement judgement;
    Size nPoint = path.m_points.m_nFirst;
    judgement.m_margin = Smallest(path, [&](const GridPoint& point) -> Margin {
        const Size nOwn = nPoint++;
        if (!envelope.GetPositions().Holds(point.m_nPosition)) return {};
        const auto dLow = point.m_nForce - boundAt(envelope.m_lower, point.m_nPosition);
        const auto dHigh = boundAt(envelope.m_upper, point.m_nPosition) - point.m_nForce;
        const long double dInside = std::min(dLow, dHigh) + envelope.m_nTolerance;
        if (dInside < 0 && !judgement.m_point) {
            judgement.m_point = nOwn;
            judgement.m_strReason = dLow < dHigh ? "below lower bound" : "above upper bound";
        }
        return dInside;
    });
    const auto [low, high] =
        std::minmax_element(path.m_at.begin(), path.m_at.end(), [](const auto& a, const auto& b) {
            return a.m_nPosition < b.m_nPosition;
        });
    if (!judgement.m_point && (low->m_nPosition > envelope.GetPositions().Low() ||
                               high->m_nPosition < envelope.GetPositions().High())) {
        judgement.m_point = path.m_points.m_nLast;
        judgement.m_strReason = "not covered";
    }
    return judgement;
}

class Reference : public ::testing::Test {
  protected:
    int Any(int nLow, int nHigh) { return std::uniform_int_distribution(nLow, nHigh)(m_random); }
    Grid AnyGrid() { return Any(-100, 1100) * 1000 + (Any(0, 2) ? 0 : Any(0, 999)); }
    GridRange AnyRange() {
        const Grid nLow = AnyGrid();
        return {Any(0, 5) ? std::optional(nLow) : std::nullopt,
                Any(0, 5) ? std::optional(nLow + Any(1, 500) * 1000) : std::nullopt};
    }
    Branch AnyBranch(int nBranches = 3) { return static_cast<Branch>(Any(0, nBranches - 1)); }
    CSides AnySides() {
        CSides sides;
        for (int n = 0; n < 5; ++n)
            if (Any(0, 1)) sides.Add(static_cast<Side>(n));
        return sides;
    }
    /// There and back, with a snap, jitter in the position and noise on the force.
    Points AnyPoints() {
        const int nCount = Any(2, 1500), nJitter = Any(0, 3), nNoise = Any(0, 30);
        Points points;
        for (int n = 0; n < nCount; ++n) {
            const int nWay = 1000 - std::abs(2000 * n / nCount - 1000);
            const int nForce = nWay < 600 ? nWay : nWay - 300;
            points.emplace_back(nWay + Any(-nJitter, nJitter), nForce + Any(-nNoise, nNoise));
        }
        return points;
    }
    std::vector<GridPoint> AnyLine(Grid nForce, int nAbove) {
        std::vector<GridPoint> line;
        for (Grid nAt = 100'000; nAt < 900'000; nAt += Any(1, 90'000))
            line.push_back({nAt, nForce + std::min<Grid>(nAt, 600'000) + Any(0, nAbove) * 1000});
        line.push_back({900'000, nForce + 600'000});
        return line;
    }

    std::mt19937 m_random{7};
};

template <class Limit>
void Compare(const CStroke& stroke, const Limit& limit) {
    const PathJudgement expected = Judge(stroke, limit);
    const PathJudgement found = JudgePath(stroke, limit);
    ASSERT_EQ(found.m_strReason, expected.m_strReason);
    ASSERT_EQ(found.m_point, expected.m_point);
    ASSERT_EQ(found.m_margin.has_value(), expected.m_margin.has_value());
    ASSERT_NEAR(found.m_margin.value_or(0), expected.m_margin.value_or(0), 1e-8);
    ASSERT_EQ(found.m_position.has_value(), expected.m_position.has_value());
    ASSERT_NEAR(found.m_position.value_or(0), expected.m_position.value_or(0), 1e-8);
}

TEST_F(Reference, AgreesOnEveryObject) {
    for (int nStroke = 0; nStroke < 1500; ++nStroke) {
        SCOPED_TRACE(nStroke);
        const StrokeData data(AnyPoints());
        const CStroke stroke(data.m_curve, 1000);
        if (stroke.FindObstacle()) continue;
        WindowLimit window{AnyBranch(), {AnyRange(), AnyRange()}, AnySides(), AnySides()};
        PathJudgement expected = Judge(stroke, window);
        const PathJudgement found = JudgePath(stroke, window);
        ASSERT_EQ(found.m_strReason, expected.m_strReason);
        ASSERT_EQ(found.m_point, expected.m_point);
        if (window.FindMarginValue() != PointValue::Force) expected.m_margin = found.m_margin;
        ASSERT_EQ(found.m_margin, expected.m_margin);
        BlockLimit block{AnyBranch(), {AnyRange(), AnyRange()}};
        if (!block.m_area.m_y.m_low && !block.m_area.m_y.m_high) block.m_area.m_y.m_low = 0;
        ASSERT_NO_FATAL_FAILURE(Compare(stroke, block));
        const auto direction = static_cast<Direction>(Any(0, 1));
        ASSERT_NO_FATAL_FAILURE(Compare(
            stroke, LineLimit{AnyBranch(), AnyGrid(), AnyRange(), direction, Any(0, 1) == 1}));
        ASSERT_NO_FATAL_FAILURE(
            Compare(stroke, EnvelopeLimit{AnyBranch(2), AnyLine(-Any(300, 420) * 1000, 30),
                                          AnyLine(Any(20, 60) * 1000, 30), Any(0, 9) * 1000}));
    }
}

TEST_F(Reference, AgreesOnEveryFeature) {
    for (int nStroke = 0; nStroke < 1500; ++nStroke) {
        const StrokeData data(AnyPoints());
        const CStroke stroke(data.m_curve, 1000);
        if (stroke.FindObstacle()) continue;
        for (const FeatureKind kind :
             {ForceAt, PositionAt, Slope, MeanForce, MinForce, MaxForce, Drop}) {
            const bool bCrossing = kind == ForceAt || kind == PositionAt;
            const Feature feature{kind,
                                  AnyBranch(bCrossing ? 2 : 3),
                                  AnyGrid(),
                                  AnyRange(),
                                  static_cast<Direction>(Any(0, 1)),
                                  static_cast<Size>(Any(0, 1) ? Any(1, 20) : Any(1, 200))};
            const auto [value, point] = Measure(stroke, feature);
            const FeatureValue found = MeasureFeature(stroke, feature);
            ASSERT_EQ(found.m_value.has_value(), value.has_value()) << nStroke << ' ' << int(kind);
            const double dExpected = value.value_or(0);
            ASSERT_NEAR(found.m_value.value_or(0), dExpected,
                        1e-9 * std::max(1.0, std::abs(dExpected)));
            ASSERT_EQ(found.m_point, point) << nStroke << ' ' << int(kind);
        }
    }
}

TEST_F(Reference, HoldsOutAtTheLimitsOfValues) {
    // 1.2 million points from corner to corner of what values can be.
    Points points{{-32768, -32768}};
    while (points.size() < 1'200'000)
        points.emplace_back(points.size() % 2 ? 32767 : -32768, points.size() % 3 ? 32767 : -32768);
    const StrokeData data(points);
    const CStroke stroke(data.m_curve, 40000);
    // Without the wide sums both would be far off; by a straight line through both ends each.
    long double dWork = 0;
    for (Size n = 1; n < points.size(); ++n)
        dWork += (points[n].first - points[n - 1].first) * 1.0L *
                 (points[n].second + points[n - 1].second);
    EXPECT_DOUBLE_EQ(*MeasureFeature(stroke, {WorkLoss}).m_value, static_cast<double>(dWork / 2));
    const Feature slope{Slope, Branch::Both};
    EXPECT_NEAR(*MeasureFeature(stroke, slope).m_value, *Measure(stroke, slope).first, 1e-12);
    const GridRange edge{-32'768'000, 32'767'000};
    EXPECT_EQ(JudgePath(stroke, WindowLimit{Branch::Both, {edge, edge}, {Side::None}, {Side::None}})
                  .m_margin,
              0);
}

}  // namespace
