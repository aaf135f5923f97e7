// The limits in an x/y picture.
#pragma once

#include "evaluation/Limits.h"
#include "evaluation/XyAxes.h"
#include "evaluation/XyPen.h"
#include "platform/drawing/DisplayScale.h"

constexpr COLORREF XY_GROUND_COLOR = RGB(255, 255, 255);

/// Adds what an object has of finite coordinates to the ranges of the axes.
void IncludeObject(const LimitObject& object, AxisRange& positions, AxisRange& forces);

/// The plot of a picture.
struct XyPlot {
    CRect m_area;  ///< of the curves
    CXyAxis m_positions;
    CXyAxis m_forces;
    int m_nText;  ///< height of texts in pixels

    /// A line's width, in pixels of the design.
    int GetWidth(bool bThick) const { return std::max(1, m_nText / Scaled(13)) + (bThick ? 1 : 0); }
    CPoint At(double dPosition, double dForce) const {
        return {m_positions.At(dPosition), m_forces.At(dForce)};
    }
    CPoint At(const GridPoint& point) const {
        return {m_positions.AtGrid(point.m_nPosition), m_forces.AtGrid(point.m_nForce)};
    }
};

/// Draws an object's shape, open sides to the plot's edge, and its name. A feature has none.
void DrawObject(CDC& dc, const XyPlot& plot, const LimitObject& object, COLORREF color,
                bool bThick);
