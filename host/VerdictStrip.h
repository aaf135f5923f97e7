// The strip that shows what became of each stroke, from three metres away.
#pragma once

#include <memory>
#include <string>

#include "host/StrokeView.h"
#include "host/VerdictTexts.h"

class CVerdictReset;

/// Shows the last stroke's verdict and counts them; a tap on it opens and closes the x/y window.
/// The window's text is what the strip says. User-interface thread.
class CVerdictStrip : public CView {
  public:
    /// @param limits must outlive the strip
    /// @param strTitle what is judged by, for the operator
    CVerdictStrip(const Limits& limits, std::wstring strTitle, SecondInput secondInput);
    ~CVerdictStrip() override;

    /// Shows the strip below a screen's window.
    void Attach(CWnd& screen);

    void OnNews(const JudgeNews& news);

    /// The last stroke that was judged; null: there is none.
    const JudgedStroke* GetLastStroke() const { return m_last.m_verdict ? &m_last : nullptr; }
    const CStrokeView& GetStrokeView() const { return m_strokeView; }

  private:
    void OnPaint();
    void OnLButtonUp(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    void OnStroke(const JudgedStroke& stroke);
    void ResetCounters();
    void Show();

    const Limits& m_limits;
    const std::wstring m_strTitle;
    CWnd* m_pScreen = nullptr;
    VerdictContents m_shown;
    JudgedStroke m_last;
    CStrokeView m_strokeView;
    std::unique_ptr<CVerdictReset> m_pReset;
};
