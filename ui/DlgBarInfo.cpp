#include "ui/DlgBarInfo.h"

#include "ui/BarMessages.h"
#include "ui/DialogLook.h"

namespace {

enum BarControl : int {
    IDC_CLEAR_MARKERS = 1012,
    IDC_CLEAR_TRIGGER = 1013,
    IDC_MARKER_B = 1027,
    IDC_MARKER_A = 1028,
    IDC_TIME_DISTANCE = 1029,
    IDC_TRIGGER = 1030,
    IDC_TRIGGER_PERCENT = 1031,
    IDC_MARKER_LABEL = 1032,
    IDC_DISTANCE_LABEL = 1033,
    IDC_LEVEL_LABEL = 1034,
    IDC_PERCENT_LABEL = 1035,
    IDC_BACK = 1036,
};

constexpr DialogItem ITEMS[] = {
    {IDC_MARKER_LABEL, ControlKind::Static, L"Time Marker (Information only)", 48, 0, 174, 15,
     CS_CENTER},
    {IDC_MARKER_A, ControlKind::PushButton, L"A", 37, 11, 36, 18},
    {IDC_MARKER_B, ControlKind::PushButton, L"B", 88, 11, 36, 18},
    {IDC_DISTANCE_LABEL, ControlKind::Static, L"Time distance:", 127, 12, 64, 8, CS_CENTER},
    {IDC_TIME_DISTANCE, ControlKind::Edit, L"", 146, 21, 30, 14, CS_READONLY | CS_BORDER},
    {IDC_CLEAR_MARKERS, ControlKind::PushButton, L"Clear", 192, 15, 42, 14},
    {IDC_LEVEL_LABEL, ControlKind::Static, L"Trigger level", 264, 3, 66, 8, CS_CENTER},
    {IDC_TRIGGER, ControlKind::PushButton, L"Trigger", 264, 11, 36, 18},
    {IDC_TRIGGER_PERCENT, ControlKind::Edit, L"", 302, 15, 28, 14, CS_READONLY | CS_BORDER},
    {IDC_PERCENT_LABEL, ControlKind::Static, L"%", 330, 21, 8, 8},
    {IDC_CLEAR_TRIGGER, ControlKind::PushButton, L"Clear", 345, 15, 42, 14},
    {IDC_BACK, ControlKind::StyledButton, L"", 419, 4, 44, 29},
};

constexpr DialogTemplate TEMPLATE{101, L"", 470, 38, L"MS Shell Dlg", 8, ITEMS, true};

}  // namespace

BEGIN_MESSAGE_MAP(CDlgBarInfo, CDlgLangBase)
ON_BN_CLICKED(IDC_MARKER_A, OnMarkerA)
ON_BN_CLICKED(IDC_MARKER_B, OnMarkerB)
ON_BN_CLICKED(IDC_CLEAR_MARKERS, OnClearMarkers)
ON_BN_CLICKED(IDC_TRIGGER, OnTrigger)
ON_BN_CLICKED(IDC_CLEAR_TRIGGER, OnClearTrigger)
ON_BN_CLICKED(IDC_BACK, OnBack)
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

CDlgBarInfo::CDlgBarInfo(CWnd* pScreen) : CDlgLangBase(TEMPLATE, pScreen) {}

void CDlgBarInfo::DoDataExchange(CDataExchange* pDX) {
    CDlgLangBase::DoDataExchange(pDX);
    ExchangeText(pDX, IDC_TIME_DISTANCE, m_nTimeDistance);
    ExchangeText(pDX, IDC_TRIGGER_PERCENT, m_nTriggerPercent);
}

bool CDlgBarInfo::OnInitDialog() {
    CDlgLangBase::OnInitDialog();
    CButtonPictures().SetOn(*this, IDC_BACK, PICTURE_CLOSE);
    SetLangText(IDC_MARKER_LABEL, 1518, L"");
    SetLangText(IDC_LEVEL_LABEL, 1520, L"");
    SetLangText(IDC_DISTANCE_LABEL, 1519, L"");
    SetLangText(IDC_CLEAR_MARKERS, 1507, L"");
    SetLangText(IDC_TRIGGER, 1517, L"");
    SetLangText(IDC_CLEAR_TRIGGER, 1507, L"");
    return true;
}

void CDlgBarInfo::PostBarCommand(WPARAM nCommand) {
    GetParent()->PostMessage(WM_RT_BARCOMMAND, nCommand);
}

void CDlgBarInfo::OnMarkerA() { PostBarCommand(BARCMD_MARKER_A); }

void CDlgBarInfo::OnMarkerB() { PostBarCommand(BARCMD_MARKER_B); }

void CDlgBarInfo::OnClearMarkers() { PostBarCommand(BARCMD_CLEAR_MARKERS); }

void CDlgBarInfo::OnTrigger() { PostBarCommand(BARCMD_TRIGGER); }

void CDlgBarInfo::OnClearTrigger() { PostBarCommand(BARCMD_CLEAR_TRIGGER); }

void CDlgBarInfo::OnBack() { GetParent()->PostMessage(WM_RT_SWITCHBAR, BAR_MAINMENU); }

bool CDlgBarInfo::OnEraseBkgnd(CDC* pDC) { return FillDialogBackground(*pDC, *this); }

CBrush* CDlgBarInfo::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor) {
    switch (pWnd->GetControlID()) {
    case IDC_MARKER_LABEL:
    case IDC_DISTANCE_LABEL:
    case IDC_LEVEL_LABEL:
    case IDC_PERCENT_LABEL:
        return MakeTransparent(*pDC);
    default:
        return CDlgLangBase::OnCtlColor(pDC, pWnd, nCtlColor);
    }
}
