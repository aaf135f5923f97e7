// CKeyboardWindow: the full keyboard.
#pragma once

#include "siblings/EntryWindow.h"
#include "siblings/KeyboardLayout.h"
#include "siblings/TextEntry.h"

class CKeyboardWindow : public CEntryWindow {
  public:
    static constexpr int ID_CHARACTER = KEY_FIRST;  ///< + 0 to + CHARACTER_KEYS - 1
    static constexpr int ID_SPACE = KEY_FIRST + CHARACTER_KEYS;
    static constexpr int ID_SHIFT = 1022;
    static constexpr int ID_SIGNS = 1023;

    /// @param strError what a blank entry is refused with; empty: an English text
    CKeyboardWindow(const std::wstring& strTitle, const std::wstring& strError,
                    const std::wstring& strInitial);

    const std::wstring& GetText() const { return m_entry.GetText(); }

  protected:
    bool OnInitDialog() override;
    void TakeSelection(int nStart, int nEnd) override { m_entry.Select(nStart, nEnd); }
    void PressKey(int nID) override;
    void PressBackspace() override { m_entry.Backspace(); }
    void PressClear() override { m_entry.Clear(); }
    bool TakeTyped(const std::wstring& strText) override { return m_entry.TakeTyped(strText); }
    void ShowEntry(CEdit& edit) override;
    std::wstring FindFault() const override;

    void OnShift();
    void OnSigns();
    DECLARE_MESSAGE_MAP()

  private:
    void ShowFaces();

    std::wstring m_strError;
    CTextEntry m_entry;
    CKeyboardLayout m_layout;
    CBitmap m_pictureShift;
    CBitmap m_pictureShiftLocked;
};
