// The child controls of dialogs. User-interface thread only.
//
// Each is made by the dialog from its template; a member object takes a control over with
// AttachControl or ExchangeControl. Operations on an object without a window do nothing and give
// the neutral value.
#pragma once

#include "platform/windows/Wnd.h"

class CBitmap;

class PLATFORM_API CStatic : public CWnd {
  public:
    /// Whether each line stands centred (the template says how it starts).
    void SetCentered(bool bCentered);
};

class PLATFORM_API CButton : public CWnd {
  public:
    /// A press does not change the checked state.
    void SetCheck(bool bChecked);

    /// Whether the button takes the keyboard focus when it is pressed or tabbed to; at first it
    /// does.
    void SetTakesFocus(bool bTakesFocus);
};

/// The framework's styled button: a text, or a picture fitted into the button.
class PLATFORM_API CStyledButton : public CButton {
  public:
    /// The picture is copied; null removes it.
    void SetImage(const CBitmap* pBitmap);
};

class PLATFORM_API CEdit : public CWnd {
  public:
    /// Positions count the characters of the text; (0, -1) selects everything, and where both are
    /// the same the caret stands.
    void SetSelection(int nStart, int nEnd);
    void GetSelection(int& nStart, int& nEnd) const;
};

class PLATFORM_API CListBox : public CWnd {
  public:
    int AddString(const std::wstring& strText);  ///< @return the row, after sorting
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;     ///< -1 when no row is selected
    void SetCurSel(int nRow);  ///< scrolls the row into view; sends no notification
    std::wstring GetText(int nRow) const;
    void SetItemData(int nRow, DWORD nData);
    DWORD GetItemData(int nRow) const;
    int GetTopIndex() const;
    void SetTopIndex(int nRow);

    /// Makes the list one for a finger, which scrolls it by dragging: rows of a height, in pixels;
    /// a text too long for its row loses its middle. To be called before rows are added.
    void SetFingerRows(int nHeight);
    /// Shows a picture in front of a row's text.
    void SetItemPicture(int nRow, const CBitmap& picture);
};

/// A drop-down list.
class PLATFORM_API CComboBox : public CWnd {
  public:
    int AddString(const std::wstring& strText);  ///< @return the item's index, after sorting
    void ResetContent();
    int GetCount() const;
    int GetCurSel() const;       ///< -1 when nothing is selected
    void SetCurSel(int nIndex);  ///< sends no notification
    std::wstring GetItemText(int nIndex) const;
    void SetItemData(int nIndex, DWORD nData);
    DWORD GetItemData(int nIndex) const;
};
