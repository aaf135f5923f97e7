#include "host/VerdictStrip.h"

#include "host/VerdictPainter.h"
#include "host/VerdictReset.h"
#include "platform/drawing/DisplayScale.h"
#include "platform/windows/PaintDC.h"

BEGIN_MESSAGE_MAP(CVerdictStrip, CView)
ON_WM_PAINT()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

namespace {

std::wstring JoinTexts(const VerdictContents& contents) {
    std::wstring strText = GetMark(contents.m_outcome) + L'\n' +
                           (contents.m_strAlarm.empty() ? contents.m_strHead : contents.m_strAlarm);
    for (const std::wstring& strFault : contents.m_arrFaults) strText += L'\n' + strFault;
    for (const Outcome outcome : {Outcome::Pass, Outcome::Fail, Outcome::Cannot})
        strText += (outcome == Outcome::Pass ? L'\n' : L' ') + GetMark(outcome) + L' ' +
                   std::to_wstring(contents.m_anCounts[static_cast<std::size_t>(outcome)]);
    return strText;
}

}  // namespace

CVerdictStrip::CVerdictStrip(const Limits& limits, std::wstring strTitle, SecondInput secondInput)
    : m_limits(limits), m_strTitle(std::move(strTitle)), m_strokeView(limits, secondInput) {
    m_shown.m_strHead = m_strTitle;
}

CVerdictStrip::~CVerdictStrip() = default;

void CVerdictStrip::Attach(CWnd& screen) {
    if (!CreateFoot(screen, Scaled(VERDICT_HEIGHT))) return;
    m_pScreen = &screen;
    m_pReset = std::make_unique<CVerdictReset>([this] { ResetCounters(); });
    m_pReset->Show(*this);
    Show();
}

void CVerdictStrip::OnNews(const JudgeNews& news) {
    for (const JudgedStroke& stroke : news.m_strokes) OnStroke(stroke);
    if (!news.m_strLogError.empty()) m_shown.m_strAlarm = DescribeLogError(news.m_strLogError);
    Show();
}

void CVerdictStrip::OnStroke(const JudgedStroke& stroke) {
    m_shown.m_outcome.reset();
    m_shown.m_arrFaults.clear();
    m_shown.m_strHead = DescribeStroke(stroke, m_strTitle);
    if (!stroke.m_verdict) return;
    m_shown.m_outcome = stroke.m_verdict->m_outcome;
    m_shown.m_arrFaults = DescribeFaults(*stroke.m_verdict, m_limits);
    if (m_shown.m_arrFaults.size() > VerdictContents::MAX_FAULTS)
        m_shown.m_arrFaults.resize(VerdictContents::MAX_FAULTS);
    ++m_shown.m_anCounts[static_cast<std::size_t>(*m_shown.m_outcome)];
    m_last = stroke;
    m_strokeView.SetStroke(m_last);
}

/// With them goes what the operator has been told.
void CVerdictStrip::ResetCounters() {
    m_shown.m_anCounts = {};
    m_shown.m_strAlarm.clear();
    Show();
}

void CVerdictStrip::Show() {
    SetWindowText(JoinTexts(m_shown));
    Invalidate();
}

void CVerdictStrip::OnPaint() {
    CPaintDC dc(this);
    PaintVerdict(dc, GetClientRect(), m_shown);
}

void CVerdictStrip::OnLButtonUp(UINT, CPoint point) {
    if (!GetClientRect().PtInRect(point)) return;
    if (m_strokeView.IsOpen())
        m_strokeView.Close();
    else
        m_strokeView.Open(*m_pScreen);
}
