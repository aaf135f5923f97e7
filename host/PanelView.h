// The main frame's active view: takes what the screen sends to the instrument.
#pragma once

#include "platform/windows/Application.h"

class IInstrument;

/// Handles WM_RT_SENDOBJECT: takes the message object over, sends its byte image on, deletes it.
/// User-interface thread.
class CPanelView : public CView {
  public:
    /// @param pInstrument must outlive the view; null: what is sent goes nowhere
    explicit CPanelView(IInstrument* pInstrument) : m_pInstrument(pInstrument) {}

  private:
    LRESULT OnSendObject(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    IInstrument* m_pInstrument;
};
