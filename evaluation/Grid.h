// Grid units: thousandths of a value. Every comparison that passes or fails a stroke is made
// between them, in whole numbers.
#pragma once

#include <cstdint>
#include <optional>

using Grid = std::int64_t;

constexpr Grid GRID_PER_VALUE = 1000;
/// Beyond this, to either side, lies nothing: more than three times what a value can be. Also the
/// place of an open side.
constexpr Grid GRID_LIMIT = 100'000'000;

constexpr Grid ToGrid(int nValue) { return GRID_PER_VALUE * nValue; }

/// From one grid unit to another, both included; an end that is none is open.
struct GridRange {
    std::optional<Grid> m_low;
    std::optional<Grid> m_high;

    Grid Low() const { return m_low.value_or(-GRID_LIMIT); }
    Grid High() const { return m_high.value_or(GRID_LIMIT); }
    bool Holds(Grid nAt) const { return Low() <= nAt && nAt <= High(); }
};

/// A corner of a polyline.
struct GridPoint {
    Grid m_nPosition;
    Grid m_nForce;
    friend bool operator==(const GridPoint&, const GridPoint&) = default;
};
