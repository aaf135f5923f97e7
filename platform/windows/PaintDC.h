// Device contexts of windows: where a control draws itself.
#pragma once

#include "platform/drawing/Graphics.h"
#include "platform/windows/Wnd.h"

/// Drawing inside a WM_PAINT handler: makes the kept picture as large as the client area.
class PLATFORM_API CPaintDC : public CDC {
  public:
    explicit CPaintDC(CWnd* pWnd);
};

/// Drawing outside of a paint, on the control's kept picture, which is shown soon after. A control
/// that has not been painted yet gives a context without a surface.
class PLATFORM_API CClientDC : public CDC {
  public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

  private:
    WindowHandle m_hWnd;
};
