// CEntryWindow: what the keyboard and the number pad have in common. A modal window with a title,
// the entry, a line that says what is wrong with it, and keys.
//
// Sizes: both windows fit the screen of 795 x 455 pixels. On a panel of 800 x 480 pixels that
// measures 7 inches across the diagonal there are 5.25 pixels to the millimetre; a key of 48 pixels
// is 9 mm, which a thumb hits, and no key is smaller.
#pragma once

#include "platform/drawing/Graphics.h"
#include "platform/windows/Controls.h"
#include "platform/windows/Dialog.h"

class CEntryWindow : public CDialog {
  public:
    static constexpr int ID_TITLE = 1010;
    static constexpr int ID_ENTRY = 1011;
    static constexpr int ID_HINT = 1012;
    static constexpr int ID_BACKSPACE = 1020;
    static constexpr int ID_CLEAR = 1021;
    /// The keys that put something into the entry have the ids from here to below KEY_END.
    static constexpr int KEY_FIRST = 1100;
    static constexpr int KEY_END = 1200;

    static constexpr NumberedText NAME_ENTRY{3171, L"Entry"};
    static constexpr NumberedText NAME_BACKSPACE{3172, L"Delete the last character"};
    static constexpr NumberedText NAME_CLEAR{3173, L"Clear the entry"};

  protected:
    CEntryWindow(const DialogTemplate& dialogTemplate, std::wstring strTitle)
        : CDialog(dialogTemplate), m_strTitle(std::move(strTitle)) {}

    // What the entry itself does. The window calls these and shows the outcome.

    /// The selection that the operator has made in the edit control; told before every key.
    virtual void TakeSelection(int nStart, int nEnd) = 0;
    virtual void PressKey(int nID) = 0;
    virtual void PressBackspace() = 0;
    virtual void PressClear() = 0;
    /// The text that a plugged-in keyboard has made in the edit control.
    /// @return false when it cannot be entered
    virtual bool TakeTyped(const std::wstring& strText) = 0;
    /// Puts the entry's text and selection into the edit control.
    virtual void ShowEntry(CEdit& edit) = 0;
    /// Why the entry cannot be confirmed, as the operator reads it; empty when it can.
    virtual std::wstring FindFault() const = 0;

    bool OnInitDialog() override;
    /// Refuses an entry with a fault, and stays open.
    void OnOK() override;
    /// Keys come here, as commands of a range of ids.
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override;

    /// Sets what stands on a key: a picture, or a text in the place of one that is missing.
    void SetKeyFace(int nID, const CBitmap& picture, const wchar_t* pText);

    /// Gives a button the looks of a key.
    void PrepareKey(int nID);

    bool OnEraseBkgnd(CDC* pDC);
    CBrush* OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    void OnBackspace();
    void OnClear();
    void OnTyped();
    DECLARE_MESSAGE_MAP()

  private:
    void TakeSelectionOfEdit();
    void ShowOutcome();

    std::wstring m_strTitle;
    CEdit m_edit;
    CFont m_fontTitle;
    CFont m_fontEntry;
    CFont m_fontKey;
    CFont m_fontHint;
};
