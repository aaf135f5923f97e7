#include "plot/DialogDraw.h"

#include "platform/windows/PaintDC.h"
#include "plot/RTPlot.h"

IMPLEMENT_DYNAMIC(CDialogDraw)

BEGIN_MESSAGE_MAP(CDialogDraw, CStatic)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

namespace {

constexpr COLORREF BUTTON_FACE = RGB(240, 240, 240);

}  // namespace

void CDialogDraw::OnPaint() {
    CPaintDC dc(this);
    const CRect client = GetClientRect();
    if (client.IsEmpty()) return;

    CDC memory;
    memory.CreateCompatibleDC(&dc);
    if (m_bitmap.GetSize() != CSize{client.Width(), client.Height()})
        m_bitmap.CreateBitmap(client.Width(), client.Height());
    memory.SelectBitmap(&m_bitmap);
    if (!m_pPlot) {
        memory.FillSolidRect(client, BUTTON_FACE);
    } else {
        m_pPlot->m_nBottom = m_pPlot->m_nHeight = client.Height();
        m_pPlot->m_nWidth = client.Width();
        m_pPlot->Paint(memory, &m_lines);
        if (m_pPlot->m_bZoomDrag && m_pPlot->m_nDragBandX != 0)
            InvertBand(memory, m_pPlot->m_nDragBandX);
    }
    dc.CopyRect(0, 0, client.Width(), client.Height(), &memory, 0, 0);
}

bool CDialogDraw::OnEraseBkgnd(CDC*) {
    return false;  // the paint covers the whole client area
}

void CDialogDraw::MoveZoomBand(int x) {
    if (!m_pPlot || !m_pPlot->m_bZoomDrag) return;
    const int xEdge = m_pPlot->LimitToCurveArea(x);
    CClientDC dc(this);
    InvertBand(dc, xEdge);
    if (m_pPlot->m_nDragBandX != 0) InvertBand(dc, m_pPlot->m_nDragBandX);
    m_pPlot->m_nDragBandX = xEdge;
}

void CDialogDraw::EndZoomDrag(int x) {
    if (!m_pPlot || !m_pPlot->m_bZoomDrag) return;
    if (m_pPlot->m_nDragBandX != 0) {
        CClientDC dc(this);
        InvertBand(dc, m_pPlot->m_nDragBandX);
    }
    m_pPlot->EndZoomDrag(x);
    Invalidate();
}

void CDialogDraw::InvertBand(CDC& dc, int x) const {
    dc.SetRasterOp(RasterOp::Invert);
    dc.Rectangle(
        {m_pPlot->m_nDragAnchorX, m_pPlot->m_nBottom - m_pPlot->m_nHeight, x, m_pPlot->m_nBottom},
        nullptr);
    dc.SetRasterOp(RasterOp::Copy);
}
