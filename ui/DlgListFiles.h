// The list from which a capture file is picked by touch.
#pragma once

#include <string>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Controls.h"
#include "ui/DlgLangBase.h"

/// Shows the names of files, as NameRows gives them, in alphabetical order. The caller gives the
/// names and the caption, runs the dialog modally, and after IDOK asks for the chosen name. OK is
/// disabled until a row has been chosen.
class CDlgListFiles : public CDlgLangBase {
  public:
    enum Control : int {
        ID_UNUSED = 1116,
        ID_CAPTION = 1123,
        ID_FILES = 1135,
        ID_DOWN = 1136,
        ID_UP = 1138,
    };

    CDlgListFiles();

    void SetFiles(std::vector<std::wstring> arrFiles) { m_arrFiles = std::move(arrFiles); }
    void SetCaption(const std::wstring& strCaption) { m_strCaption = strCaption; }

    /// The chosen row's text; empty while none is chosen.
    virtual std::wstring GetSelectedName() const { return m_strSelected; }

    /// The chosen file's place among the given ones; -1 while none is chosen.
    int GetSelectedIndex() const { return m_nSelItem; }

  protected:
    void DoDataExchange(CDataExchange* pExchange) override;
    bool OnInitDialog() override;

  private:
    void PrepareButtons();
    void FillList();
    void OnSelChangeFiles();
    void OnUp();
    void OnDown();
    void MoveSelection(int nRows);
    DECLARE_MESSAGE_MAP()

    CFont m_fontList;
    BYTE m_bOkDisabled = 0;                ///< 1: no row has been chosen yet
    std::vector<std::wstring> m_arrFiles;  ///< file names with their extensions
    std::wstring m_strSelected;            ///< the chosen row's text
    std::wstring m_strCaption;
    CListBox m_lbFiles;
    CStyledButton m_btnUp;
    CStyledButton m_btnDown;
    CStyledButton m_btnOk;
    CStyledButton m_btnCancel;
    int m_nSelIndex = -1;  ///< the chosen row
    int m_nSelItem = -1;   ///< the chosen row's index into m_arrFiles
};
