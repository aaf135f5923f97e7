#include "ui/ProgressBox.h"

#include <algorithm>

#include "platform/drawing/DisplayScale.h"
#include "platform/system/Threads.h"
#include "platform/windows/Application.h"
#include "platform/windows/DialogLook.h"
#include "platform/windows/PaintDC.h"

namespace {

constexpr std::uint64_t APPEARS_AFTER_MS = 1000;
constexpr std::uint64_t PUMP_EVERY_MS = 40;

using enum CProgressBox::Control;

constexpr DialogItem ITEMS[] = {
    {ID_TITLE, ControlKind::Static, L"", 7, 8, 222, 30, CS_CENTER},
    {ID_BAR, ControlKind::StaticFrame, L"", 24, 46, 190, 14, CS_NONE, {3198, L"Progress"}},
    {ID_PERCENT, ControlKind::Static, L"", 24, 65, 190, 14, CS_CENTER},
    {IDCANCEL, ControlKind::StyledButton, L"", 94, 93, 50, 42, CS_NONE, NAME_CANCEL},
};

constexpr DialogTemplate TEMPLATE{706, L"", 241, 139, L"MS Shell Dlg", 8, ITEMS};

constexpr COLORREF BAR_EMPTY = RGB(255, 255, 255);
constexpr COLORREF BAR_DONE = RGB(38, 96, 164);

}  // namespace

BEGIN_MESSAGE_MAP(CProgressBar, CStatic)
ON_WM_PAINT()
END_MESSAGE_MAP()

void CProgressBar::ShowPercent(int nPercent) {
    m_nPercent = nPercent;
    Invalidate();
}

void CProgressBar::OnPaint() {
    CPaintDC dc(this);
    const CRect client = GetClientRect();
    const CBrush empty(BAR_EMPTY);
    dc.Rectangle(client, &empty);
    const int nEdge = ScaledThickness(1);
    const int nLength = (client.Width() - 2 * nEdge) * m_nPercent / 100;
    dc.FillSolidRect({nEdge, nEdge, nEdge + nLength, client.bottom - nEdge}, BAR_DONE);
}

CProgressBox::CProgressBox(std::wstring strTitle)
    : CDialog(TEMPLATE), m_strTitle(std::move(strTitle)),
      m_nNextPump(TickMilliseconds() + APPEARS_AFTER_MS) {}

bool CProgressBox::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(m_strTitle);
    SetControlText(ID_TITLE, m_strTitle);
    m_fontTitle.CreatePixelFont(20, L"MS Shell Dlg", true);
    if (CWnd* pTitle = GetControl(ID_TITLE)) pTitle->SetFont(&m_fontTitle);
    m_bar.AttachControl(ID_BAR, this);
    m_btnCancel.AttachControl(IDCANCEL, this);
    CButtonPictures().SetOn(m_btnCancel, PICTURE_NO);
    // A key that was meant for the screen must not press it; Escape does.
    m_btnCancel.SetTakesFocus(false);
    return true;
}

bool CProgressBox::Advance(std::uint64_t nDone, std::uint64_t nTotal) {
    if (m_bCancelled || TickMilliseconds() < m_nNextPump) return !m_bCancelled;
    if (!GetHandle()) CreateModal(nullptr);
    const double dPart = nTotal ? static_cast<double>(nDone) / static_cast<double>(nTotal) : 0;
    ShowPercent(static_cast<int>(100 * std::min(dPart, 1.0)));
    PumpMessages();
    m_nNextPump = TickMilliseconds() + PUMP_EVERY_MS;
    return !m_bCancelled;
}

void CProgressBox::ShowPercent(int nPercent) {
    if (nPercent == m_nPercent) return;
    m_nPercent = nPercent;
    m_bar.ShowPercent(nPercent);
    SetControlText(ID_PERCENT, std::to_wstring(nPercent) + L" %");
}
