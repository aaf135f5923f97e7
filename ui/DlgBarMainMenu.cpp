#include "ui/DlgBarMainMenu.h"

#include "platform/windows/DialogLook.h"
#include "ui/BarMessages.h"

namespace {

using enum CDlgBarMainMenu::Control;

constexpr DialogItem ITEMS[] = {
    {ID_INFO, ControlKind::PushButton, L"&Info", 64, 4, 44, 29},
    {ID_TOOLS, ControlKind::PushButton, L"&Tools", 129, 4, 44, 29, CS_HIDDEN},
    {ID_EXPORT_CSV, ControlKind::PushButton, L"Export to csv...", 194, 4, 83, 29},
    {ID_PASS_OUTPUT, ControlKind::PushButton, L"Send pass output (CH 1)", 291, 4, 107, 29},
    {ID_CLOSE_SCREEN, ControlKind::StyledButton, L"", 419, 4, 44, 29, CS_NONE, NAME_CLOSE},
};

constexpr DialogTemplate TEMPLATE{108, L"", 470, 38, L"MS Shell Dlg", 8, ITEMS, true};

}  // namespace

BEGIN_MESSAGE_MAP(CDlgBarMainMenu, CDlgLangBase)
ON_BN_CLICKED(ID_INFO, OnInfo)
ON_BN_CLICKED(ID_EXPORT_CSV, OnExportCsv)
ON_BN_CLICKED(ID_PASS_OUTPUT, OnPassOutput)
ON_BN_CLICKED(ID_CLOSE_SCREEN, OnCloseScreen)
END_MESSAGE_MAP()

CDlgBarMainMenu::CDlgBarMainMenu(CWnd* pScreen) : CDlgLangBase(TEMPLATE, pScreen) {}

bool CDlgBarMainMenu::OnInitDialog() {
    CDlgLangBase::OnInitDialog();
    SetLangText(ID_INFO, 1512, L"");
    SetLangText(ID_EXPORT_CSV, 1533, L"");
    SetLangText(ID_PASS_OUTPUT, 1532, L"");
    CButtonPictures().SetOn(*this, ID_CLOSE_SCREEN, PICTURE_CLOSE);
    return true;
}

void CDlgBarMainMenu::OnInfo() { GetParent()->PostMessage(WM_RT_SWITCHBAR, BAR_INFO); }

void CDlgBarMainMenu::OnExportCsv() { GetParent()->PostMessage(WM_RT_EXPORTCSV); }

void CDlgBarMainMenu::OnPassOutput() { GetParent()->PostMessage(WM_RT_PASSOUTPUT); }

void CDlgBarMainMenu::OnCloseScreen() {
    GetParent()->PostMessage(WM_CLOSE);
    OnOK();
}
