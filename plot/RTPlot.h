// The state of one plot, and what is done with it: painting, zooming, placing markers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>

#include "curves/RTCurves.h"
#include "platform/drawing/Geometry.h"
#include "platform/system/Threads.h"
#include "plot/RTGraphSettings.h"
#include "plot/RTPlotColours.h"

class CDC;
struct PlotCache;

/// What the next click into a plot does (RTPlot::m_nArmedAction); also what OnPlotClick has done.
enum PlotAction : std::int32_t {
    PLOTACT_NONE = -1,
    PLOTACT_TOOLPULSE = 1,
    PLOTACT_START = 2,
    PLOTACT_END = 3,
    PLOTACT_TRIGGER = 4,
    PLOTACT_MARKER_A = 5,
    PLOTACT_MARKER_B = 6,
};

/// One plot. Positions along a curve are value indices; levels are value units; a position, level
/// or marker that is not set is -1. Coordinates are pixels from the plot control's top-left corner.
///
/// Hosts: part of the session record and of its binary contract. A host reads the fields and what
/// is defined here; what is only declared here belongs to the screen and is not for hosts.
///
/// Thread safety: the view fields (m_nViewStart, m_nViewEnd, m_bZoomed, m_spCurves, m_nSpanValues)
/// are guarded by *m_pSessionLock; all other fields belong to the user-interface thread. Operations
/// that take the lock themselves say so; the others expect a caller that holds it or is alone.
/// Ownership: part of the session record; owns its colours, shares the curve set, borrows the rest.
struct RTPlot {
    /// Milliseconds between markers A and B at 40 values a millisecond; 0 when either is unset.
    std::int32_t GetTimeDistance() const {
        if (m_nMarkerA == -1 || m_nMarkerB == -1) return 0;
        return static_cast<std::int32_t>(std::abs(std::int64_t{m_nMarkerA} - m_nMarkerB) / 40);
    }

    /// The trigger level in percent of 5000, toward zero.
    std::int32_t GetTriggerPercent() const {
        if (m_nTriggerLevel == -1) return 0;
        return static_cast<std::int32_t>(m_nTriggerLevel / 5000.0 * 100.0);
    }

    /// Holds the session lock while it lives; holds nothing for a plot that has none.
    std::unique_lock<CFairLock> LockSession() const {
        return m_pSessionLock ? std::unique_lock(*m_pSessionLock) : std::unique_lock<CFairLock>();
    }

    /// Reads colours and flags from the settings store.
    RTPlot();
    /// Writes the two flags back.
    ~RTPlot();
    RTPlot(const RTPlot&) = delete;
    RTPlot& operator=(const RTPlot&) = delete;

    /// Shows the whole of the first curve. The caller holds the lock.
    void ZoomAll();

    /// Draws the plot, m_nWidth by m_nHeight pixels, with its top-left corner at (0, 0), and leaves
    /// scales and zero line for the mouse. Works on a snapshot taken under the lock.
    /// @param pCache what the last paint on this surface has left; with it, only what has changed
    ///        since is drawn. Null: everything is
    /// @return the part of the picture that was drawn; it may be empty
    /// @throws CMemoryException, std::bad_alloc; the next paint then draws everything
    CRect Paint(CDC& dc, PlotCache* pCache = nullptr);

    /// Performs the armed action at a point, or begins a zoom drag. Nothing happens, and an armed
    /// action stays armed, in a plot without curves and in one that no paint has given the scale
    /// that it takes. Takes the lock.
    /// @return the action performed, or 0
    std::int32_t OnPlotClick(CPoint point);

    /// An x position, limited to the curve area: what a zoom drag makes of the mouse.
    std::int32_t LimitToCurveArea(std::int32_t x) const;

    /// Ends the zoom drag where the button was released: the view becomes what lies between press
    /// and release, or is left as it was before the press when both are in the same hundred values,
    /// or the plot has lost its scale. Nothing happens when no drag is under way. Takes the lock.
    void EndZoomDrag(std::int32_t x);

    /// Moves a marker position onto a mark within a thousandth of it.
    void SnapMarker(std::int32_t& nMarker) const;

    std::int32_t m_nLeft = 0;
    std::int32_t m_nBottom = 0;
    std::int32_t m_nWidth = 0;
    std::int32_t m_nHeight = 0;
    std::int32_t m_nViewStart = 0;
    std::int32_t m_nViewEnd = 0;
    double m_dXScale = 0;  ///< pixels per value index, from the last paint; 0: none yet
    double m_dYScale = 0;  ///< pixels per value unit, from the last paint; 0: none yet
    std::uint8_t m_bZoomDrag = 0;
    std::int32_t m_nDragAnchorX = 0;
    std::int32_t m_nDragBandX = 0;  ///< the band's moving edge as last drawn; 0: no band
    std::int32_t m_nPrevViewStart = 0;
    std::int32_t m_nZeroY = 0;  ///< y of the value 0, from the last paint
    std::unique_ptr<RTPlotColours> m_pColours;
    std::int32_t m_nValueSpan = 5000;
    std::int32_t m_nLeftMargin = 0;
    std::int32_t m_nArmedAction = PLOTACT_NONE;
    std::int32_t m_bSnapToTimeMarkers = 0;
    std::uint8_t m_bShowAllCurvePulses = 0;
    std::uint8_t m_bZoomed = 0;  ///< 1: the view was chosen by a zoom drag
    std::uint8_t m_nChannel = 0;
    std::shared_ptr<CRTCurves> m_spCurves;
    std::int32_t m_nStartMark = -1;
    std::int32_t m_nEndMark = -1;
    std::int32_t m_nToolPulseMark = -1;
    std::int32_t m_nMarkerA = -1;
    std::int32_t m_nMarkerB = -1;
    std::int32_t m_nTriggerLevel = -1;
    std::uint8_t m_nDisplay = 0;  ///< 0 values at even indices, 1 at odd ones, 2 both
    RTGraphSettings* m_pGraph = nullptr;
    std::int32_t m_nSpanValues = 1;  ///< value indices across the width when not zoomed
    std::uint8_t m_nMode = 1;        ///< the instrument mode

    // Behind the contract part: the screen's own.
    CFairLock* m_pSessionLock = nullptr;  ///< null: the plot is used by one thread only

  private:
    /// Whether the last paint has left the scale that an action, or a zoom drag, needs.
    bool HasScaleFor(std::int32_t nAction) const;
    /// Moves the start of the view to where a drag begins; the caller holds the lock.
    void BeginZoomDrag(std::int32_t x);
    /// The value indices from the curve area's left edge to an x position, toward zero.
    std::int64_t DistanceAt(std::int32_t x) const;
};

// The members need not be of standard layout, for which the language leaves offsetof to the
// compiler.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(RTPlot, m_nLeft) == 0 && offsetof(RTPlot, m_nBottom) == 4 &&
              offsetof(RTPlot, m_nWidth) == 8 && offsetof(RTPlot, m_nHeight) == 12 &&
              offsetof(RTPlot, m_nViewStart) == 16 && offsetof(RTPlot, m_nViewEnd) == 20 &&
              offsetof(RTPlot, m_dXScale) == 24 && offsetof(RTPlot, m_dYScale) == 32);
static_assert(offsetof(RTPlot, m_bZoomDrag) == 40 && offsetof(RTPlot, m_nDragAnchorX) == 44 &&
              offsetof(RTPlot, m_nDragBandX) == 48 && offsetof(RTPlot, m_nPrevViewStart) == 52 &&
              offsetof(RTPlot, m_nZeroY) == 56 && offsetof(RTPlot, m_pColours) == 64 &&
              offsetof(RTPlot, m_nValueSpan) == 72 && offsetof(RTPlot, m_nLeftMargin) == 76);
static_assert(offsetof(RTPlot, m_nArmedAction) == 80 &&
              offsetof(RTPlot, m_bSnapToTimeMarkers) == 84 &&
              offsetof(RTPlot, m_bShowAllCurvePulses) == 88 && offsetof(RTPlot, m_bZoomed) == 89 &&
              offsetof(RTPlot, m_nChannel) == 90 && offsetof(RTPlot, m_spCurves) == 96);
static_assert(offsetof(RTPlot, m_nStartMark) == 112 && offsetof(RTPlot, m_nEndMark) == 116 &&
              offsetof(RTPlot, m_nToolPulseMark) == 120 && offsetof(RTPlot, m_nMarkerA) == 124 &&
              offsetof(RTPlot, m_nMarkerB) == 128 && offsetof(RTPlot, m_nTriggerLevel) == 132);
static_assert(offsetof(RTPlot, m_nDisplay) == 136 && offsetof(RTPlot, m_pGraph) == 144 &&
              offsetof(RTPlot, m_nSpanValues) == 152 && offsetof(RTPlot, m_nMode) == 156 &&
              offsetof(RTPlot, m_pSessionLock) == 160 && sizeof(RTPlot) == 168);
#pragma GCC diagnostic pop
