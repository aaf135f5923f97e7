#include "evaluation/Polyline.h"

#include <algorithm>

std::size_t CPolyline::Search(Grid nPosition) const {
    const auto next = std::upper_bound(
        m_corners.begin() + 1, m_corners.end() - 1, nPosition,
        [](Grid nAt, const GridPoint& corner) { return nAt < corner.m_nPosition; });
    return static_cast<std::size_t>(next - m_corners.begin()) - 1;
}

std::optional<CPolyline::Reach> CPolyline::FindReach(Grid nFrom, Grid nTo) const {
    constexpr std::size_t nMostCorners = 16;
    nFrom = std::max(nFrom, m_corners.front().m_nPosition);
    nTo = std::min(nTo, m_corners.back().m_nPosition);
    const auto forceAt = [&](std::size_t nSegment, Grid nPosition) {
        const GridPoint& from = m_corners[nSegment];
        const GridPoint& to = m_corners[nSegment + 1];
        return static_cast<double>(from.m_nForce) +
               static_cast<double>(to.m_nForce - from.m_nForce) *
                   static_cast<double>(nPosition - from.m_nPosition) /
                   static_cast<double>(to.m_nPosition - from.m_nPosition);
    };
    std::size_t nSegment = IsOver(m_nSegment, nFrom) ? m_nSegment : Search(nFrom);
    const double dFrom = forceAt(nSegment, nFrom);
    Reach reach{dFrom, dFrom};
    const auto include = [&](double dForce) {
        reach.m_dLow = std::min(reach.m_dLow, dForce);
        reach.m_dHigh = std::max(reach.m_dHigh, dForce);
    };
    for (std::size_t n = 0; n < nMostCorners; ++n, ++nSegment) {
        if (nTo <= m_corners[nSegment + 1].m_nPosition) {
            include(forceAt(nSegment, nTo));
            return reach;
        }
        include(static_cast<double>(m_corners[nSegment + 1].m_nForce));
    }
    return std::nullopt;
}
