// CNumberPadWindow: the number pad.
#pragma once

#include "siblings/EntryWindow.h"
#include "siblings/NumberEntry.h"

class CNumberPadWindow : public CEntryWindow {
  public:
    static constexpr int ID_DIGIT = KEY_FIRST;  ///< the ten digit keys: ID_DIGIT + 0 to + 9
    static constexpr int ID_POINT = KEY_FIRST + 10;
    static constexpr int ID_SIGN = KEY_FIRST + 11;

    CNumberPadWindow(const std::wstring& strTitle, const std::wstring& strInitial,
                     int nMaxDecimals);

    /// What was entered; only after the window has ended with IDOK.
    CNumberEntry::Value GetValue() const { return m_entry.GetValue().value(); }

  protected:
    void TakeSelection(int nStart, int nEnd) override;
    void PressKey(int nID) override;
    void PressBackspace() override { m_entry.Backspace(); }
    void PressClear() override { m_entry.Clear(); }
    bool TakeTyped(const std::wstring& strText) override;
    void ShowEntry(CEdit& edit) override;
    std::wstring FindFault() const override;

  private:
    CNumberEntry m_entry;
};
