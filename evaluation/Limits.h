// What a stroke is held against: a limits file as a record.
#pragma once

#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

#include "evaluation/Features.h"

/// The sides of a window. None stands for a path that begins, or ends, inside.
enum class Side : std::uint8_t { Left, Right, Bottom, Top, None };
constexpr const char* SIDE_NAMES[] = {"left", "right", "bottom", "top", "none"};

class CSides {
  public:
    constexpr CSides() = default;
    constexpr CSides(std::initializer_list<Side> sides) {
        for (const Side side : sides) Add(side);
    }
    constexpr void Add(Side side) { m_bits |= Bit(side); }
    constexpr bool Has(Side side) const { return (m_bits & Bit(side)) != 0; }
    constexpr bool HasNoneBut(CSides others) const { return (m_bits & ~others.m_bits) == 0; }

  private:
    static constexpr unsigned Bit(Side side) { return 1U << static_cast<unsigned>(side); }
    unsigned m_bits = 0;
};

/// A closed rectangle.
struct Area {
    GridRange m_x;  ///< positions
    GridRange m_y;  ///< forces
    bool Holds(const GridPoint& point) const {
        return m_x.Holds(point.m_nPosition) && m_y.Holds(point.m_nForce);
    }
};

/// The path must go through.
struct WindowLimit {
    Branch m_branch = Branch::Forward;
    Area m_area;
    CSides m_entry{Side::Left};
    CSides m_exit{Side::Right};

    /// Which distance is its margin: that of the forces when the path goes through from side to
    /// side, that of the positions when it goes up or down; none when it may do either.
    std::optional<PointValue> FindMarginValue() const;
};

/// The path must not touch.
struct BlockLimit {
    Branch m_branch = Branch::Forward;
    Area m_area;
};

/// The path must, or must not, cross a force between two positions.
struct LineLimit {
    Branch m_branch = Branch::Forward;
    Grid m_nForce = 0;
    GridRange m_positions;
    Direction m_direction = Direction::Up;
    bool m_bRequired = true;  ///< false: forbidden
};

/// The path must stay between two lines. Both are of rising positions, the same first and last one;
/// one of them may be empty.
struct EnvelopeLimit {
    Branch m_branch = Branch::Forward;  ///< Forward or Return
    std::vector<GridPoint> m_lower;
    std::vector<GridPoint> m_upper;
    Grid m_nTolerance = 0;  ///< by which both are farther out

    GridRange GetPositions() const {
        const auto& line = m_lower.empty() ? m_upper : m_lower;
        return {line.front().m_nPosition, line.back().m_nPosition};
    }
};

/// A measured number must lie in a range, of engineering values; at least one end is there.
struct FeatureLimit {
    Feature m_feature;
    std::optional<double> m_min;
    std::optional<double> m_max;
};

struct LimitObject {
    std::string m_strName;  ///< UTF-8
    std::variant<WindowLimit, BlockLimit, LineLimit, EnvelopeLimit, FeatureLimit> m_limit;

    /// "window", "block", "line", "envelope", or the feature's kind.
    std::string_view GetKind() const;
};

struct Limits {
    std::string m_strTitle;
    Scales m_scales;
    std::vector<LimitObject> m_objects;
};
