#include "ui/DlgListFiles.h"

#include "curves/FileStore.h"
#include "platform/windows/DialogLook.h"

namespace {

using enum CDlgListFiles::Control;

constexpr DialogItem ITEMS[] = {
    {ID_CAPTION, ControlKind::Static, L"Caption", 6, 6, 150, 8},
    {ID_FILES, ControlKind::ListBox, L"", 6, 17, 150, 102, CS_SORT, {3197, L"Files"}},
    {ID_UP, ControlKind::StyledButton, L"", 162, 18, 21, 21, CS_NONE, NAME_UP},
    {ID_DOWN, ControlKind::StyledButton, L"", 162, 96, 21, 21, CS_NONE, NAME_DOWN},
    {IDOK, ControlKind::StyledButton, L"", 27, 121, 25, 22, CS_NONE, NAME_OK},
    {IDCANCEL, ControlKind::StyledButton, L"", 72, 121, 25, 22, CS_NONE, NAME_CANCEL},
    {ID_UNUSED, ControlKind::PushButton, L"", 131, 121, 25, 22, CS_HIDDEN},
};

constexpr DialogTemplate TEMPLATE{704, L"", 189, 149, L"Microsoft Sans Serif", 16, ITEMS};

}  // namespace

BEGIN_MESSAGE_MAP(CDlgListFiles, CDlgLangBase)
ON_LBN_SELCHANGE(ID_FILES, OnSelChangeFiles)
ON_BN_CLICKED(ID_UP, OnUp)
ON_BN_CLICKED(ID_DOWN, OnDown)
END_MESSAGE_MAP()

CDlgListFiles::CDlgListFiles() : CDlgLangBase(TEMPLATE) {}

void CDlgListFiles::DoDataExchange(CDataExchange* pExchange) {
    CDlgLangBase::DoDataExchange(pExchange);
    ExchangeControl(pExchange, ID_FILES, m_lbFiles);
}

bool CDlgListFiles::OnInitDialog() {
    CDlgLangBase::OnInitDialog();
    PrepareButtons();
    m_fontList.CreatePointFont(180, L"MS Shell Dlg");
    m_lbFiles.SetFont(&m_fontList);
    FillList();
    m_btnOk.EnableWindow(false);
    m_bOkDisabled = 1;
    SetControlText(ID_CAPTION, m_strCaption);
    SetWindowText(GetLangText(1509, L"Load"));
    return true;
}

void CDlgListFiles::PrepareButtons() {
    const struct {
        CStyledButton& m_button;
        int m_nID;
        UINT m_nPicture;
    } buttons[] = {
        {m_btnUp, ID_UP, PICTURE_UP},
        {m_btnDown, ID_DOWN, PICTURE_DOWN},
        {m_btnOk, IDOK, PICTURE_OK},
        {m_btnCancel, IDCANCEL, PICTURE_NO},
    };
    const CButtonPictures pictures;
    for (const auto& [button, nID, nPicture] : buttons) {
        button.AttachControl(nID, this);
        pictures.SetOn(button, nPicture);
    }
}

void CDlgListFiles::FillList() {
    m_lbFiles.ResetContent();
    const std::vector<std::wstring> arrRows = NameRows(m_arrFiles);
    for (std::size_t n = 0; n < arrRows.size(); ++n) {
        const int nRow = m_lbFiles.AddString(arrRows[n]);
        m_lbFiles.SetItemData(nRow, static_cast<DWORD>(n));
    }
}

void CDlgListFiles::OnSelChangeFiles() {
    if (m_bOkDisabled) {
        m_btnOk.EnableWindow();
        m_bOkDisabled = 0;
    }
    m_nSelIndex = m_lbFiles.GetCurSel();
    if (m_nSelIndex < 0) return;
    m_strSelected = m_lbFiles.GetText(m_nSelIndex);
    m_nSelItem = static_cast<int>(m_lbFiles.GetItemData(m_nSelIndex));
}

void CDlgListFiles::OnUp() { MoveSelection(-1); }

void CDlgListFiles::OnDown() { MoveSelection(1); }

/// Moves the selection, and the chosen file with it; with no row selected the list scrolls.
void CDlgListFiles::MoveSelection(int nRows) {
    const int nSelected = m_lbFiles.GetCurSel();
    if (nSelected < 0) {
        m_lbFiles.SetTopIndex(m_lbFiles.GetTopIndex() + nRows);
        return;
    }
    const int nTarget = nSelected + nRows;
    if (nTarget < 0 || nTarget >= m_lbFiles.GetCount()) return;
    m_lbFiles.SetCurSel(nTarget);
    OnSelChangeFiles();
}
