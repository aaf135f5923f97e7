// What the values of a capture mean: units, and the engineering values that people read and write.
#pragma once

#include <optional>
#include <string>

#include "evaluation/Grid.h"

/// Of force or position: engineering value = value x factor + offset.
struct Scale {
    std::string m_strUnit;  ///< UTF-8; may be empty
    double m_dFactor = 1;   ///< above 0
    double m_dOffset = 0;

    double ToEngineering(double dValue) const { return dValue * m_dFactor + m_dOffset; }
};

enum class Quantity {
    Force,
    Position,
    ForceDifference,
    PositionDifference,
    Time,  ///< seconds
    Work,
    Slope,
};

struct Scales {
    Scale m_force;
    Scale m_position;

    /// The unit of a quantity; empty when that of a part is unknown.
    std::string GetUnit(Quantity quantity) const;

    /// @param dRaw in values, value differences, seconds, values x values, or values per value
    /// @param dTravel of a work: how far the position comes on its way, in values
    double ToEngineering(Quantity quantity, double dRaw, double dTravel = 0) const;
};

/// The grid unit nearest to an engineering value, halves away from 0; none beyond GRID_LIMIT.
std::optional<Grid> FindGrid(const Scale& scale, double dEngineering);
/// The same for a width, which has no offset.
std::optional<Grid> FindGridWidth(const Scale& scale, double dEngineering);
