#include "platform/windows/FingerFileDialog.h"

#include <QString>
#include <algorithm>
#include <cerrno>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/FitText.h"
#include "platform/system/Exceptions.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/DialogLook.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/KeyboardCalls.h"
#include "platform/windows/NoticeBox.h"

namespace {

using enum CFingerFileDialog::Control;
using enum ControlKind;

constexpr DialogItem ITEMS[] = {
    {ID_FOLDER_UP, StyledButton, L"", 6, 5, 48, 29, CS_NONE, {3167, L"Folder above"}},
    {ID_FOLDER, Static, L"", 60, 7, 414, 27},
    {ID_ROWS, ListBox, L"", 6, 38, 414, 164, CS_NONE, {3197, L"Files"}},
    {ID_PAGE_UP, StyledButton, L"", 426, 38, 48, 79, CS_NONE, {3168, L"Page up"}},
    {ID_PAGE_DOWN, StyledButton, L"", 426, 123, 48, 79, CS_NONE, {3169, L"Page down"}},
    {ID_NAME_LABEL, Static, L"", 8, 216, 52, 16},
    {ID_NAME, Edit, L"", 60, 208, 274, 30, CS_BORDER, {3160, L"File name"}},
    {IDOK, StyledButton, L"OK", 340, 208, 64, 30, CS_NONE, NAME_OK},
    {IDCANCEL, StyledButton, L"Cancel", 410, 208, 64, 30, CS_NONE, NAME_CANCEL},
};

constexpr DialogTemplate TEMPLATE{708, L"", 480, 244, L"MS Shell Dlg", 8, ITEMS};

constexpr int ROW_HEIGHT = 44;  ///< pixels
constexpr int FOLDER_FONT_HEIGHT = 18;
constexpr int FOLDER_ROWS = 2;

std::wstring DropSpaces(const std::wstring& strText) {
    const std::size_t nBegin = strText.find_first_not_of(L' ');
    if (nBegin == std::wstring::npos) return {};
    return strText.substr(nBegin, strText.find_last_not_of(L' ') + 1 - nBegin);
}

bool EndsIn(const std::wstring& strName, const std::wstring& strExtension) {
    return strName.size() >= strExtension.size() &&
           QString::fromStdWString(strName).endsWith(QString::fromStdWString(strExtension),
                                                     Qt::CaseInsensitive);
}

}  // namespace

BEGIN_MESSAGE_MAP(CNameEdit, CEdit)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

void CNameEdit::OnLButtonDown(UINT nFlags, CPoint point) {
    CEdit::OnLButtonDown(nFlags, point);
    std::wstring strName = GetWindowText();
    if (!CallKeyboard(GetText({154, L"Error: Blank value not supported."}),
                      GetText({3160, L"File name"}), &strName))
        return;
    SetWindowText(strName);
    GetParent()->SendMessage(WM_COMMAND, CommandParam(ID_NAME, EN_CHANGE));
}

BEGIN_MESSAGE_MAP(CFingerFileDialog, CDialog)
ON_LBN_SELCHANGE(ID_ROWS, OnRow)
ON_CONTROL(EN_CHANGE, ID_NAME, OnNameChanged)
ON_BN_CLICKED(ID_FOLDER_UP, OnFolderUp)
ON_BN_CLICKED(ID_PAGE_UP, OnPageUp)
ON_BN_CLICKED(ID_PAGE_DOWN, OnPageDown)
END_MESSAGE_MAP()

CFingerFileDialog::CFingerFileDialog(bool bOpen, std::wstring strExtension,
                                     std::wstring strDefaultExtension,
                                     const std::wstring& strFolder)
    : CDialog(TEMPLATE), m_bOpen(bOpen), m_strExtension(std::move(strExtension)),
      m_strDefaultExtension(std::move(strDefaultExtension)),
      m_strFolder(GetAbsolutePath(strFolder)) {}

bool CFingerFileDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(m_bOpen ? GetText({3161, L"Open"}) : GetText({3162, L"Save as"}));
    PrepareControls();
    try {
        if (FolderExists(m_strFolder)) m_contents = ReadFolder(m_strFolder, m_strExtension);
    } catch (const CFileException&) {
        ReportCurrentExceptionLater();
    }
    ShowFolder();
    ShowName(L"");
    return false;
}

void CFingerFileDialog::PrepareControls() {
    m_lbRows.AttachControl(ID_ROWS, this);
    m_editName.AttachControl(ID_NAME, this);
    m_fontFolder.CreatePixelFont(FOLDER_FONT_HEIGHT, L"MS Shell Dlg", true);
    m_fontRows.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", false);
    GetControl(ID_FOLDER)->SetFont(&m_fontFolder);
    for (const int nID : {ID_ROWS, ID_NAME_LABEL, ID_NAME}) GetControl(nID)->SetFont(&m_fontRows);
    SetControlText(ID_NAME_LABEL, GetText({3163, L"Name:"}));
    m_lbRows.SetFingerRows(Scaled(ROW_HEIGHT));

    const CButtonPictures pictures;
    m_pictureFolder = pictures.Load(PICTURE_FOLDER);
    const std::pair<int, UINT> buttons[] = {{ID_FOLDER_UP, PICTURE_FOLDER_UP},
                                            {ID_PAGE_UP, PICTURE_UP},
                                            {ID_PAGE_DOWN, PICTURE_DOWN},
                                            {IDOK, PICTURE_OK},
                                            {IDCANCEL, PICTURE_NO}};
    for (const auto& [nID, nPicture] : buttons) {
        pictures.SetOn(*this, nID, nPicture);
        // The caret stays in the name, and with it what a plugged-in keyboard types.
        dynamic_cast<CButton&>(*GetControl(nID)).SetTakesFocus(false);
    }
}

void CFingerFileDialog::OpenFolder(const std::wstring& strFolder) {
    m_contents = ReadFolder(strFolder, m_strExtension);
    m_strFolder = strFolder;
    ShowFolder();
    // The name of a file to open was one of the other folder.
    if (m_bOpen) ShowName(L"");
}

void CFingerFileDialog::ShowFolder() {
    CWnd* const pFolder = GetControl(ID_FOLDER);
    pFolder->SetWindowText(
        FitText(m_strFolder, m_fontFolder, pFolder->GetClientRect().Width() - 1, FOLDER_ROWS));
    m_lbRows.ResetContent();
    for (const std::wstring& strName : m_contents.m_arrFolders)
        m_lbRows.SetItemPicture(m_lbRows.AddString(strName), m_pictureFolder);
    for (const std::wstring& strName : m_contents.m_arrFiles) m_lbRows.AddString(strName);
    GetControl(ID_FOLDER_UP)->EnableWindow(GetFolderOfPath(m_strFolder) != m_strFolder);
    m_editName.SetFocus();
}

void CFingerFileDialog::ShowName(const std::wstring& strName) {
    m_editName.SetWindowText(strName);
    m_editName.SetFocus();
    m_editName.SetSelection(0, -1);
    OnNameChanged();
}

std::wstring CFingerFileDialog::GetEnteredName() const {
    return DropSpaces(m_editName.GetWindowText());
}

void CFingerFileDialog::OnNameChanged() {
    GetControl(IDOK)->EnableWindow(!GetEnteredName().empty());
}

void CFingerFileDialog::OnRow() {
    const int nSelected = m_lbRows.GetCurSel();
    if (nSelected < 0) return;
    // The list may be in the middle of an event, and the rows go when a folder is opened.
    PostCall([this, nRow = static_cast<std::size_t>(nSelected)] {
        m_editName.SetFocus();
        const auto& [arrFolders, arrFiles] = m_contents;
        if (nRow < arrFolders.size())
            OpenFolder(JoinPath(m_strFolder, arrFolders[nRow]));
        else if (nRow - arrFolders.size() < arrFiles.size())
            ShowName(arrFiles[nRow - arrFolders.size()]);
    });
}

void CFingerFileDialog::OnFolderUp() { OpenFolder(GetFolderOfPath(m_strFolder)); }

void CFingerFileDialog::OnPageUp() { MovePages(-1); }

void CFingerFileDialog::OnPageDown() { MovePages(1); }

void CFingerFileDialog::MovePages(int nPages) {
    const int nRowsOfPage = m_lbRows.GetClientRect().Height() / Scaled(ROW_HEIGHT);
    const int nTop = m_lbRows.GetTopIndex() + nPages * nRowsOfPage;
    m_lbRows.SetTopIndex(std::clamp(nTop, 0, std::max(m_lbRows.GetCount() - 1, 0)));
}

/// The file in the folder that a name stands for; it need not exist.
std::wstring CFingerFileDialog::FindEnteredFile(const std::wstring& strName) const {
    std::wstring strPath = FindFileOfAnyCase(JoinPath(m_strFolder, strName));
    const std::wstring& strExtension = m_bOpen ? m_strExtension : m_strDefaultExtension;
    if (EndsIn(strName, strExtension) || (m_bOpen && FileExists(strPath))) return strPath;
    return FindFileOfAnyCase(JoinPath(m_strFolder, strName + strExtension));
}

void CFingerFileDialog::OnOK() {
    const std::wstring strName = GetEnteredName();
    if (strName.empty()) return;
    // Whatever is wrong with it, another name takes its place.
    m_editName.SetSelection(0, -1);
    if (!IsPlainFileName(strName)) {
        ShowErrorBox(GetText({3164, L"This cannot be used as a file name."}), strName);
        return;
    }
    if (const std::wstring strFolder = JoinPath(m_strFolder, strName); FolderExists(strFolder)) {
        OpenFolder(strFolder);
        ShowName(L"");
        return;
    }
    const std::wstring strPath = FindEnteredFile(strName);
    if (m_bOpen) {
        if (!FileExists(strPath)) throw CFileException(CFileException::cannotOpen, strPath, ENOENT);
    } else {
        RequireFileOrNothing(strPath);
        if (FileExists(strPath) &&
            !AskOperator(GetText({3162, L"Save as"}),
                         GetText({3165, L"There is a file of this name. Replace it?"}),
                         GetNameOfPath(strPath)))
            return;
        // That it could not be made shows when the file is created.
        if (!FolderExists(m_strFolder)) CreateFolder(m_strFolder);
    }
    m_strPath = strPath;
    EndDialog(IDOK);
}
