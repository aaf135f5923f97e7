// What one paint of a plot shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "curves/RTCurves.h"
#include "plot/RTGraphSettings.h"
#include "plot/RTPlotColours.h"

struct RTPlot;

/// Which object something is, whether or not it is still there.
template <class Object>
struct ObjectIdentity {
    std::weak_ptr<const Object> m_wpObject;
    friend bool operator==(const ObjectIdentity& a, const ObjectIdentity& b) {
        return !a.m_wpObject.owner_before(b.m_wpObject) && !b.m_wpObject.owner_before(a.m_wpObject);
    }
};

/// What a picture follows from, but for the marks and what the newest curve has grown by: two
/// pictures of equal scenes differ in nothing else.
struct PlotScene {
    int m_nWidth = 0;
    int m_nHeight = 0;
    std::int64_t m_nViewStart = 0;
    std::int64_t m_nViewEnd = 0;
    bool m_bZoomed = false;
    std::int64_t m_nSpanValues = 1;
    RTGraphSettings m_graph;
    std::uint8_t m_nDisplay = 0;
    std::uint8_t m_nMode = 1;
    std::uint8_t m_nChannel = 0;
    RTPlotColours m_colours{};

    ObjectIdentity<CRTCurves> m_set;
    ObjectIdentity<RTCurveData> m_newest;
    std::size_t m_nCurves = 0;  ///< in the list; 0: only the background is drawn
    /// Of all curves but the newest. Both only grow.
    std::uint64_t m_nOlderValues = 0;
    std::uint64_t m_nOlderPulses = 0;
    /// With auto zoom: of all curves, by the quantities on show, and never above 32767 or below 0.
    RTMinMax m_extremes{INT16_MAX, 0};

    friend bool operator==(const PlotScene&, const PlotScene&) = default;
};

/// Taken from a plot under its session lock, used without the lock.
struct PlotSnapshot {
    struct Curve {
        std::shared_ptr<const RTCurveData> m_spData;  ///< null: an entry without a curve
        std::uint32_t m_nCount = 0;                   ///< values to read; the reader adds more
        bool HasValues() const { return m_spData && m_nCount > 0; }
    };

    /// @param pKnown a scene of which the older curves are not needed; null: they are
    static PlotSnapshot Take(const RTPlot& plot, const PlotScene* pKnown);

    PlotScene m_scene;
    Curve m_newest;
    std::vector<Curve> m_lstOlder;  ///< oldest first; empty for the known scene
};
