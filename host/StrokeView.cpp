#include "host/StrokeView.h"

#include "evaluation/XyPicture.h"
#include "host/StripTexts.h"
#include "host/VerdictTexts.h"
#include "platform/windows/PaintDC.h"
#include "plugin/ScreenTemplate.h"

BEGIN_MESSAGE_MAP(CStrokeView, CView)
ON_WM_PAINT()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

void DrawStroke(CDC& dc, CSize size, const JudgedStroke& stroke, const Limits& limits,
                SecondInput secondInput) {
    XyPicture picture;
    picture.m_pLimits = &limits;
    picture.m_bVoltage = secondInput == SecondInput::Voltage;
    picture.m_words = {NameForce(),
                       NameSecond(SecondInput::Position),
                       NameSecond(SecondInput::Voltage),
                       {GetMark(Outcome::Pass), GetMark(Outcome::Fail), GetMark(Outcome::Cannot)}};
    picture.m_strTitle = NameStroke(stroke);
    std::optional<CStroke> path;
    if (stroke.m_spCurve && stroke.m_verdict && stroke.m_verdict->m_strReason.empty()) {
        path.emplace(*stroke.m_spCurve, stroke.m_nValueRate);
        picture.m_strokes.push_back({&*path, &*stroke.m_verdict});
    }
    DrawXyPicture(dc, size, picture);
}

void CStrokeView::SetStroke(const JudgedStroke& stroke) {
    m_stroke = stroke;
    Invalidate();
}

void CStrokeView::Open(CWnd& screen) {
    const CWnd* const pPlot = screen.GetControl(IDC_PLOT_1);
    if (!pPlot) return;
    CRect area = pPlot->GetWindowRect();
    screen.ScreenToClient(area);
    CreateCover(screen, area);
}

void CStrokeView::OnPaint() {
    CPaintDC dc(this);
    const CRect area = GetClientRect();
    DrawStroke(dc, {area.Width(), area.Height()}, m_stroke, m_limits, m_secondInput);
}

void CStrokeView::OnLButtonUp(UINT, CPoint) { Close(); }
