// Lines of any width on a device context, whose own are one pixel wide.
#pragma once

#include <span>
#include <vector>

#include "platform/drawing/Graphics.h"

/// Draws lines of one colour and width.
class CXyPen {
  public:
    /// @param nWidth in pixels of the design, 1 or more
    CXyPen(CDC& dc, COLORREF color, int nWidth);
    ~CXyPen();
    CXyPen(const CXyPen&) = delete;
    CXyPen& operator=(const CXyPen&) = delete;

    void Line(CPoint from, CPoint to) const { Path(std::vector{from, to}); }
    /// From each point to the next.
    void Path(std::span<const CPoint> points) const;
    void Frame(const CRect& rect) const;
    /// Slanting lines that fill a rectangle.
    void Hatch(const CRect& rect, int nDistance) const;
    void Cross(CPoint center, int nArm) const;
    /// An arrow whose point is at the end.
    void Arrow(CPoint from, CPoint to, int nHead) const;

  private:
    CDC& m_dc;
    CPen m_pen;
    const CPen* m_pBefore;
    int m_nWidth;
};
