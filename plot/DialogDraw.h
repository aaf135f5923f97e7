// The control that shows a plot.
#pragma once

#include "platform/Controls.h"

struct RTPlot;

/// Paints a plot off-screen and copies the finished picture in one step. A zoom band that is being
/// dragged is part of the picture, so a repaint leaves it as it was.
class CDialogDraw : public CStatic {
    DECLARE_DYNAMIC(CDialogDraw)

  public:
    std::uint8_t m_nPlotIndex = 0;
    RTPlot* m_pPlot = nullptr;  ///< not owned

    /// Inverts the full height of the plot between two x positions, on the shown picture.
    void InvertBand(int nFromX, int nToX);

  private:
    void OnPaint();
    bool OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()
};
