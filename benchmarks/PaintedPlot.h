// A plot painted into memory.
#pragma once

#include <memory>

#include "benchmarks/Strokes.h"
#include "platform/drawing/Graphics.h"
#include "plot/PlotCache.h"
#include "plot/RTPlot.h"

/// Values per second.
constexpr std::uint16_t PLOT_RATE = 40000;

/// A picture in memory, and how to draw on it.
struct Picture {
    explicit Picture(int nWidth = PICTURE_WIDTH) {
        m_bitmap.CreateBitmap(nWidth, PICTURE_HEIGHT);
        m_dc.CreateCompatibleDC(nullptr);
        m_dc.SelectBitmap(&m_bitmap);
    }
    CBitmap m_bitmap;
    CDC m_dc;
};

/// Curves that are full, with 12 changes of the digital lines in each.
std::shared_ptr<CRTCurves> MakeFullCurves(unsigned nCurves, unsigned nValues);

/// One plot with its picture and what it keeps from one paint to the next.
struct PaintedPlot {
    /// @param nSpanValues that the view is wide
    PaintedPlot(std::shared_ptr<CRTCurves> spCurves, unsigned nSpanValues,
                int nWidth = PICTURE_WIDTH);

    void Paint() { m_plot.Paint(m_picture.m_dc, &m_cache); }
    /// In another view than at the last paint: nothing of that one can be used again.
    void PaintNewView() {
        m_plot.m_nSpanValues ^= VIEW_STEP;
        Paint();
    }
    /// As if nothing had been painted before.
    void PaintWhole() { m_plot.Paint(m_picture.m_dc); }

    RTGraphSettings m_graph;
    RTPlot m_plot;
    PlotCache m_cache;
    Picture m_picture;
};
