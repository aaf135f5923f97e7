// The file dialog of a panel: rows and buttons that a finger hits, and a name that is entered on
// the on-screen keyboard.
#pragma once

#include <string>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "platform/system/Paths.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"

/// The field for a name: opens the on-screen keyboard when it is touched.
class CNameEdit : public CEdit {
  private:
    void OnLButtonDown(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()
};

/// Looks through folders, without what is hidden in them. A tap on a folder opens it, one on a file
/// takes its name; a name that would leave the folder is refused. What cannot be done is told, and
/// the dialog stays.
class PLATFORM_API CFingerFileDialog : public CDialog {
  public:
    enum Control : int {
        ID_ROWS = 1151,
        ID_NAME = 1152,
        ID_FOLDER = 1153,
        ID_FOLDER_UP = 1154,
        ID_PAGE_UP = 1155,
        ID_PAGE_DOWN = 1156,
        ID_NAME_LABEL = 1157,
    };

    /// @param bOpen true: an existing file to open; false: a file to save to, in a folder that is
    ///        made if it is missing
    /// @param strExtension of the files that are shown, as ".csv"; empty: all
    /// @param strDefaultExtension appended to a name that does not end in it
    /// @param strFolder where it begins
    CFingerFileDialog(bool bOpen, std::wstring strExtension, std::wstring strDefaultExtension,
                      const std::wstring& strFolder);

    /// The folder that is shown.
    const std::wstring& GetFolder() const { return m_strFolder; }

    /// The chosen file, after the dialog has ended with IDOK.
    const std::wstring& GetPathName() const { return m_strPath; }

  protected:
    bool OnInitDialog() override;
    void OnOK() override;

  private:
    void PrepareControls();
    /// @throws CFileException with everything as it was
    void OpenFolder(const std::wstring& strFolder);
    void ShowFolder();
    void ShowName(const std::wstring& strName);
    std::wstring GetEnteredName() const;
    std::wstring FindEnteredFile(const std::wstring& strName) const;
    void OnRow();
    void OnNameChanged();
    void OnFolderUp();
    void OnPageUp();
    void OnPageDown();
    void MovePages(int nPages);
    DECLARE_MESSAGE_MAP()

    bool m_bOpen;
    std::wstring m_strExtension;
    std::wstring m_strDefaultExtension;
    std::wstring m_strFolder;
    std::wstring m_strPath;
    FolderContents m_contents;  ///< as shown: the folders first
    CListBox m_lbRows;
    CNameEdit m_editName;
    CBitmap m_pictureFolder;
    CFont m_fontFolder;
    CFont m_fontRows;
};
