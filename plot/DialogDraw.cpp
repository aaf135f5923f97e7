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

    if (!m_pPlot) {
        dc.FillSolidRect(client, BUTTON_FACE);
        return;
    }
    if (!dc.IsKept()) m_cache.Forget();
    m_pPlot->m_nBottom = m_pPlot->m_nHeight = client.Height();
    m_pPlot->m_nWidth = client.Width();
    const CRect drawn = m_pPlot->Paint(dc, &m_cache);
    if (m_pPlot->m_bZoomDrag && m_pPlot->m_nDragBandX != 0)
        DrawBand(dc, m_pPlot->m_nDragBandX);
    else
        dc.SetChanged(drawn);
}

bool CDialogDraw::OnEraseBkgnd(CDC*) {
    return false;  // the paint covers the whole client area
}

void CDialogDraw::MoveZoomBand(int x) {
    if (!m_pPlot || !m_pPlot->m_bZoomDrag) return;
    const int xEdge = m_pPlot->LimitToCurveArea(x);
    CClientDC dc(this);
    DrawBand(dc, xEdge);
    if (m_pPlot->m_nDragBandX != 0) DrawBand(dc, m_pPlot->m_nDragBandX);
    m_pPlot->m_nDragBandX = xEdge;
}

void CDialogDraw::EndZoomDrag(int x) {
    if (!m_pPlot || !m_pPlot->m_bZoomDrag) return;
    if (m_pPlot->m_nDragBandX != 0) {
        CClientDC dc(this);
        DrawBand(dc, m_pPlot->m_nDragBandX);
    }
    m_pPlot->EndZoomDrag(x);
    Invalidate();
}

void CDialogDraw::DrawBand(CDC& dc, int x) {
    m_cache.Forget();  // the picture is no longer the plot's alone
    dc.SetRasterOp(RasterOp::Invert);
    dc.Rectangle(
        {m_pPlot->m_nDragAnchorX, m_pPlot->m_nBottom - m_pPlot->m_nHeight, x, m_pPlot->m_nBottom},
        nullptr);
    dc.SetRasterOp(RasterOp::Copy);
}
