// The mouse on a plot: placing markers and levels, and dragging a zoom band.
#include <algorithm>
#include <cmath>

#include "platform/drawing/DisplayScale.h"
#include "plot/RTPlot.h"
#include "plot/Truncate.h"

namespace {

/// A zoom begins at a multiple of so many values.
constexpr std::int64_t ZOOM_STEP = 100;

constexpr std::int64_t RoundToZoomStep(std::int64_t nIndex) {
    return nIndex / ZOOM_STEP * ZOOM_STEP;
}

}  // namespace

std::int32_t RTPlot::OnPlotClick(CPoint point) {
    const auto lock = LockSession();
    if (!m_spCurves || m_spCurves->m_lstCurves[m_nChannel].empty()) return 0;
    const std::int32_t nAction = m_nArmedAction;
    if (!HasScaleFor(nAction)) return 0;

    const auto indexAt = [this](double dX) {
        return ClampToIndex(TruncateToIndex(dX / m_dXScale) + m_nViewStart);
    };
    switch (nAction) {
    case PLOTACT_TOOLPULSE:
        m_nToolPulseMark = indexAt(point.x + m_dXScale);
        break;
    case PLOTACT_START:
        m_nStartMark = indexAt(point.x);
        break;
    case PLOTACT_END:
        m_nEndMark = indexAt(point.x + m_dXScale);
        break;
    case PLOTACT_TRIGGER:
        m_nTriggerLevel = ClampToIndex(TruncateToIndex((m_nZeroY - point.y) / m_dYScale));
        break;
    case PLOTACT_MARKER_A:
        m_nMarkerA = std::max(0, indexAt(point.x - m_nLeftMargin));
        SnapMarker(m_nMarkerA);
        break;
    case PLOTACT_MARKER_B: {
        const int nExtra = std::max(TruncateToPixel(m_dXScale), Scaled(5));
        m_nMarkerB = std::max(0, indexAt(point.x - m_nLeftMargin + nExtra));
        SnapMarker(m_nMarkerB);
        break;
    }
    default:
        BeginZoomDrag(point.x);
        return 0;
    }
    m_nArmedAction = PLOTACT_NONE;
    return nAction;
}

/// A value axis may run downwards; a plot too narrow for a curve area has no time axis.
bool RTPlot::HasScaleFor(std::int32_t nAction) const {
    return nAction == PLOTACT_TRIGGER ? std::isfinite(m_dYScale) && m_dYScale != 0
                                      : std::isfinite(m_dXScale) && m_dXScale > 0;
}

void RTPlot::BeginZoomDrag(std::int32_t x) {
    const std::int64_t nDistance = DistanceAt(x);
    if (nDistance < 0) return;  // in the value-label margin
    m_nPrevViewStart = m_nViewStart;
    m_nViewStart = ClampToIndex(RoundToZoomStep(nDistance + m_nViewStart) + (m_nDisplay == 1));
    m_nDragAnchorX = x;
    m_nDragBandX = 0;
    m_bZoomDrag = 1;
}

void RTPlot::EndZoomDrag(std::int32_t x) {
    if (!m_bZoomDrag) return;
    const auto lock = LockSession();
    m_bZoomDrag = 0;
    m_nDragBandX = 0;
    if (!HasScaleFor(PLOTACT_NONE)) {
        m_nViewStart = m_nPrevViewStart;
        return;
    }
    m_bZoomed = 1;
    const std::int64_t nDistance = DistanceAt(LimitToCurveArea(x));
    if (m_nViewStart == RoundToZoomStep(nDistance)) {
        m_nViewStart = m_nPrevViewStart;
        return;
    }
    const std::int32_t nReleased = ClampToIndex(m_nPrevViewStart + nDistance);
    if (nReleased < m_nViewStart) {
        m_nViewEnd = m_nViewStart;
        m_nViewStart = nReleased;
    } else {
        m_nViewEnd = nReleased;
    }
}

std::int32_t RTPlot::LimitToCurveArea(std::int32_t x) const {
    return std::max(m_nLeftMargin, std::min(x, m_nWidth));
}

std::int64_t RTPlot::DistanceAt(std::int32_t x) const {
    return TruncateToIndex((static_cast<double>(x) - m_nLeftMargin) / m_dXScale);
}

void RTPlot::SnapMarker(std::int32_t& nMarker) const {
    if (!m_bSnapToTimeMarkers) return;
    for (const std::int32_t nMark : {m_nEndMark, m_nStartMark, m_nToolPulseMark}) {
        if (nMark * 1.001 > nMarker && nMarker > nMark * 0.999) {
            nMarker = nMark;
            return;
        }
    }
}
