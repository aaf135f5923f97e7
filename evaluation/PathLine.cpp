#include "evaluation/PathLine.h"

namespace {

/// The points of one column, as they come.
class CColumn {
  public:
    explicit CColumn(std::vector<CPoint>& line) : m_line(line) {}

    void Add(CPoint point) {
        if (m_bAny && point.x != m_last.x) Finish();
        if (!m_bAny) {
            Put(point);
            m_lowest = m_highest = point;
            m_bAny = true;
        }
        if (point.y > m_lowest.y) {
            m_lowest = point;
            m_bLowestLater = true;
        }
        if (point.y < m_highest.y) {
            m_highest = point;
            m_bLowestLater = false;
        }
        m_last = point;
    }

    void Finish() {
        Put(m_bLowestLater ? m_highest : m_lowest);
        Put(m_bLowestLater ? m_lowest : m_highest);
        Put(m_last);
        m_bAny = false;
    }

  private:
    void Put(CPoint point) {
        if (m_line.empty() || m_line.back() != point) m_line.push_back(point);
    }

    std::vector<CPoint>& m_line;
    bool m_bAny = false;
    bool m_bLowestLater = false;
    CPoint m_lowest;
    CPoint m_highest;
    CPoint m_last;
};

}  // namespace

std::vector<CPoint> TracePath(const CStroke& stroke, PointRange points, const CXyAxis& positions,
                              const CXyAxis& forces) {
    std::vector<CPoint> line;
    CColumn column(line);
    for (std::size_t n = points.m_nFirst; n <= points.m_nLast; ++n)
        column.Add({positions.At(stroke.GetPosition(n)), forces.At(stroke.GetForce(n))});
    column.Finish();
    return line;
}
