#include "evaluation/XyPen.h"

#include "platform/drawing/DisplayScale.h"

CXyPen::CXyPen(CDC& dc, COLORREF color, int nWidth)
    : m_dc(dc), m_pen(PenStyle::Solid, color), m_pBefore(dc.SelectPen(&m_pen)), m_nWidth(nWidth) {}

CXyPen::~CXyPen() { m_dc.SelectPen(m_pBefore); }

void CXyPen::Path(std::span<const CPoint> points) const {
    if (points.empty()) return;
    std::vector<CPoint> shifted(points.begin(), points.end());
    const auto draw = [&](int dx, int dy) {
        for (std::size_t n = 0; n < points.size(); ++n)
            shifted[n] = {points[n].x + dx, points[n].y + dy};
        m_dc.MoveTo(shifted[0].x, shifted[0].y);
        m_dc.PolylineTo(std::span(shifted).subspan(1));
    };
    // Beside each other, steep lines as well as flat ones.
    const int nFirst = -(m_nWidth - 1) / 2;
    const int nStep = ScaledThickness(1);
    draw(0, 0);
    for (int n = nFirst; n < nFirst + m_nWidth; ++n) {
        if (n == 0) continue;
        draw(n * nStep, 0);
        draw(0, n * nStep);
    }
}

void CXyPen::Frame(const CRect& rect) const {
    const CPoint corners[] = {{rect.left, rect.top},
                              {rect.right, rect.top},
                              {rect.right, rect.bottom},
                              {rect.left, rect.bottom},
                              {rect.left, rect.top}};
    Path(corners);
}

void CXyPen::Hatch(const CRect& rect, int nDistance) const {
    // Each line is x + y = n, from the left or bottom side to the top or right one.
    const int nFirst = rect.left + rect.top;
    const int nLast = rect.right + rect.bottom;
    for (int n = nFirst + nDistance - nFirst % nDistance; n < nLast; n += nDistance) {
        const int xFrom = std::max(rect.left, n - rect.bottom);
        const int yTo = std::max(rect.top, n - rect.right);
        Line({xFrom, n - xFrom}, {n - yTo, yTo});
    }
}

void CXyPen::Cross(CPoint center, int nArm) const {
    Line({center.x - nArm, center.y - nArm}, {center.x + nArm + 1, center.y + nArm + 1});
    Line({center.x - nArm, center.y + nArm}, {center.x + nArm + 1, center.y - nArm - 1});
}

void CXyPen::Arrow(CPoint from, CPoint to, int nHead) const {
    Line(from, to);
    const int dx = (to.x > from.x) - (to.x < from.x);
    const int dy = (to.y > from.y) - (to.y < from.y);
    for (const int nSide : {-1, 1})
        Line({to.x - nHead * dx + nSide * nHead * dy, to.y - nHead * dy + nSide * nHead * dx}, to);
}
