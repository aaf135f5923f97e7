// The control that shows a plot.
#pragma once

#include <cstdint>

#include "platform/windows/Controls.h"
#include "plot/PlotCache.h"

struct RTPlot;

/// Paints a plot off-screen and copies the finished picture in one step. A zoom band that is being
/// dragged is part of the picture, so a repaint leaves it as it was.
class CDialogDraw : public CStatic {
    DECLARE_DYNAMIC(CDialogDraw)

  public:
    std::uint8_t m_nPlotIndex = 0;
    RTPlot* m_pPlot = nullptr;  ///< not owned

    /// Moves the edge of the zoom band that is being dragged to an x position, limited to the curve
    /// area, and shows it so. Only during a zoom drag.
    void MoveZoomBand(int x);

    /// Takes the band off the picture and zooms the plot to what lies between press and release
    /// (RTPlot::EndZoomDrag). Only during a zoom drag.
    void EndZoomDrag(int x);

  private:
    void OnPaint();
    bool OnEraseBkgnd(CDC* pDC);
    /// Shows a band, or takes it away: inverts the full height of the plot from the press to an x
    /// position.
    void DrawBand(CDC& dc, int x);

    PlotCache m_cache;  ///< of the kept picture
    DECLARE_MESSAGE_MAP()
};
