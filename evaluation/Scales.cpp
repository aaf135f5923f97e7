#include "evaluation/Scales.h"

#include <cmath>

namespace {

std::optional<Grid> Round(double dGrid) {
    const double dRounded = std::round(dGrid);
    if (!(std::abs(dRounded) <= static_cast<double>(GRID_LIMIT))) return std::nullopt;
    return static_cast<Grid>(dRounded);
}

}  // namespace

std::string Scales::GetUnit(Quantity quantity) const {
    const std::string& strForce = m_force.m_strUnit;
    const std::string& strPosition = m_position.m_strUnit;
    const bool bBoth = !strForce.empty() && !strPosition.empty();
    switch (quantity) {
    case Quantity::Force:
    case Quantity::ForceDifference:
        return strForce;
    case Quantity::Position:
    case Quantity::PositionDifference:
        return strPosition;
    case Quantity::Time:
        return "s";
    case Quantity::Work:
        return bBoth ? strForce + "\u00B7" + strPosition : strForce + strPosition;
    case Quantity::Slope:
        return bBoth ? strForce + "/" + strPosition : "";
    }
    return "";
}

double Scales::ToEngineering(Quantity quantity, double dRaw, double dTravel) const {
    switch (quantity) {
    case Quantity::Force:
        return m_force.ToEngineering(dRaw);
    case Quantity::Position:
        return m_position.ToEngineering(dRaw);
    case Quantity::ForceDifference:
        return dRaw * m_force.m_dFactor;
    case Quantity::PositionDifference:
        return dRaw * m_position.m_dFactor;
    case Quantity::Time:
        return dRaw;
    case Quantity::Work:
        return m_position.m_dFactor * (m_force.m_dFactor * dRaw + m_force.m_dOffset * dTravel);
    case Quantity::Slope:
        return dRaw * m_force.m_dFactor / m_position.m_dFactor;
    }
    return dRaw;
}

std::optional<Grid> FindGrid(const Scale& scale, double dEngineering) {
    return Round((dEngineering - scale.m_dOffset) / scale.m_dFactor * 1000);
}

std::optional<Grid> FindGridWidth(const Scale& scale, double dEngineering) {
    return Round(dEngineering / scale.m_dFactor * 1000);
}
