// The main frame's active view: takes what the screen sends to the instrument.
#pragma once

#include "platform/windows/Application.h"

class CStrokeJudge;
class IInstrument;

/// Handles WM_RT_SENDOBJECT: takes the message object over, sends its byte image on, deletes it.
/// User-interface thread.
class CPanelView : public CView {
  public:
    /// @param pInstrument must outlive the view's work; null: what is sent goes nowhere
    /// @param pJudge likewise, is told first; null: there is none
    CPanelView(IInstrument* pInstrument, CStrokeJudge* pJudge)
        : m_pInstrument(pInstrument), m_pJudge(pJudge) {}

  private:
    LRESULT OnSendObject(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    IInstrument* m_pInstrument;
    CStrokeJudge* m_pJudge;
};
