// The values of the curve on show at the time markers.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

struct RTPlot;

/// One quantity's values at the markers. None: the marker is not set, or the curve has no value
/// there.
struct MarkerValues {
    std::optional<std::int32_t> m_a;
    std::optional<std::int32_t> m_b;
    friend bool operator==(const MarkerValues&, const MarkerValues&) = default;
};

/// Reads them from the newest curve of a plot, at a cost that does not depend on its length. Takes
/// the session lock for as long as it takes to copy a pointer. User-interface thread.
/// @param bPairs the curve holds value pairs; a marker within one means that pair
/// @return a row for each quantity; none when no marker is set
std::vector<MarkerValues> ReadMarkerValues(const RTPlot& plot, bool bPairs);
