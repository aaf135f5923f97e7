// The x/y window: the last stroke as force over position.
#pragma once

#include <functional>
#include <string>

#include "curves/InstrumentMode.h"
#include "host/StrokeJudge.h"
#include "platform/windows/Application.h"

/// Stands over the screen's plots while it is open, and is closed by a tap; the buttons beside the
/// plots stay within reach. User-interface thread.
class CStrokeView : public CView {
  public:
    /// @param limits must outlive the view
    CStrokeView(const Limits& limits, SecondInput secondInput)
        : m_limits(limits), m_secondInput(secondInput) {}

    /// What is shown, now or when it is opened next; of no stroke, and of one that cannot be
    /// evaluated, only the limits.
    void SetStroke(const JudgedStroke& stroke);

    bool IsOpen() const { return GetHandle() != 0; }
    void Open(CWnd& screen);
    void Close() { DestroyWindow(); }

  private:
    void OnPaint();
    void OnLButtonUp(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    const Limits& m_limits;
    const SecondInput m_secondInput;
    JudgedStroke m_stroke;
};

/// Draws a stroke and the limits on all of a surface.
void DrawStroke(CDC& dc, CSize size, const JudgedStroke& stroke, const Limits& limits,
                SecondInput secondInput);
