// Device contexts of windows: where a control draws itself.
#pragma once

#include <optional>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Wnd.h"

/// Draws on the picture that a control keeps of itself. What it has changed there is shown soon
/// after it is gone.
class PLATFORM_API CWindowDC : public CDC {
  public:
    ~CWindowDC() override;

    /// Says that of the picture only this part has been changed, in pixels of the client area; it
    /// may be empty. Without this, and for a picture that is not kept, it is everything.
    void SetChanged(const CRect& rect) { m_changed = rect; }

  protected:
    CWindowDC(CWnd* pWnd, bool bPaint);

    /// The picture is what the last paint has left and what CClientDCs drew on it since.
    bool m_bKept = false;

  private:
    WindowHandle m_hWnd;
    const bool m_bPaint;
    std::optional<CRect> m_changed;
    int m_nExceptions;  ///< on their way when this was made
};

/// Drawing inside a WM_PAINT handler: makes the kept picture as large as the client area.
class PLATFORM_API CPaintDC : public CWindowDC {
  public:
    explicit CPaintDC(CWnd* pWnd) : CWindowDC(pWnd, true) {}

    /// Whether the picture is what the last paint of this control has left, and what CClientDCs
    /// drew on it since. Otherwise its pixels are undefined and everything must be drawn: when it
    /// is new, has another size, was dropped by a default painting, or the last paint threw.
    bool IsKept() const { return m_bKept; }
};

/// Drawing outside of a paint. A control that has not been painted yet gives a context without a
/// surface.
class PLATFORM_API CClientDC : public CWindowDC {
  public:
    explicit CClientDC(CWnd* pWnd) : CWindowDC(pWnd, false) {}
};
