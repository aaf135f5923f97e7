#include "ui/DlgBarInfo.h"

#include "platform/windows/DialogLook.h"
#include "ui/BarMessages.h"

namespace {

using enum CDlgBarInfo::Control;

constexpr DialogItem ITEMS[] = {
    {ID_MARKER_LABEL, ControlKind::Static, L"Time Marker (Information only)", 48, 0, 174, 15,
     CS_CENTER},
    {ID_MARKER_A,
     ControlKind::PushButton,
     L"A",
     37,
     11,
     36,
     18,
     CS_NONE,
     {3190, L"Set time marker A"}},
    {ID_MARKER_B,
     ControlKind::PushButton,
     L"B",
     88,
     11,
     36,
     18,
     CS_NONE,
     {3191, L"Set time marker B"}},
    {ID_DISTANCE_LABEL, ControlKind::Static, L"Time distance:", 127, 12, 64, 8, CS_CENTER},
    {ID_TIME_DISTANCE,
     ControlKind::Edit,
     L"",
     146,
     21,
     30,
     14,
     CS_READONLY | CS_BORDER,
     {1519, L"Time distance:"}},
    {ID_CLEAR_MARKERS,
     ControlKind::PushButton,
     L"Clear",
     192,
     15,
     42,
     14,
     CS_NONE,
     {3192, L"Clear the time markers"}},
    {ID_LEVEL_LABEL, ControlKind::Static, L"Trigger level", 264, 3, 66, 8, CS_CENTER},
    {ID_TRIGGER, ControlKind::PushButton, L"Trigger", 264, 11, 36, 18},
    {ID_TRIGGER_PERCENT,
     ControlKind::Edit,
     L"",
     302,
     15,
     28,
     14,
     CS_READONLY | CS_BORDER,
     {1520, L"Trigger level"}},
    {ID_PERCENT_LABEL, ControlKind::Static, L"%", 330, 21, 8, 8},
    {ID_CLEAR_TRIGGER,
     ControlKind::PushButton,
     L"Clear",
     345,
     15,
     42,
     14,
     CS_NONE,
     {3193, L"Clear the trigger level"}},
    {ID_BACK, ControlKind::StyledButton, L"", 419, 4, 44, 29, CS_NONE, NAME_BACK},
};

constexpr DialogTemplate TEMPLATE{101, L"", 470, 38, L"MS Shell Dlg", 8, ITEMS, true};

}  // namespace

BEGIN_MESSAGE_MAP(CDlgBarInfo, CDlgLangBase)
ON_BN_CLICKED(ID_MARKER_A, OnMarkerA)
ON_BN_CLICKED(ID_MARKER_B, OnMarkerB)
ON_BN_CLICKED(ID_CLEAR_MARKERS, OnClearMarkers)
ON_BN_CLICKED(ID_TRIGGER, OnTrigger)
ON_BN_CLICKED(ID_CLEAR_TRIGGER, OnClearTrigger)
ON_BN_CLICKED(ID_BACK, OnBack)
END_MESSAGE_MAP()

CDlgBarInfo::CDlgBarInfo(CWnd* pScreen) : CDlgLangBase(TEMPLATE, pScreen) {}

void CDlgBarInfo::DoDataExchange(CDataExchange* pExchange) {
    CDlgLangBase::DoDataExchange(pExchange);
    ExchangeText(pExchange, ID_TIME_DISTANCE, m_nTimeDistance);
    ExchangeText(pExchange, ID_TRIGGER_PERCENT, m_nTriggerPercent);
}

bool CDlgBarInfo::OnInitDialog() {
    CDlgLangBase::OnInitDialog();
    CButtonPictures().SetOn(*this, ID_BACK, PICTURE_CLOSE);
    SetLangText(ID_MARKER_LABEL, 1518, L"");
    SetLangText(ID_LEVEL_LABEL, 1520, L"");
    SetLangText(ID_DISTANCE_LABEL, 1519, L"");
    SetLangText(ID_CLEAR_MARKERS, 1507, L"");
    SetLangText(ID_TRIGGER, 1517, L"");
    SetLangText(ID_CLEAR_TRIGGER, 1507, L"");
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
