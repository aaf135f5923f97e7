// CWnd: a window or control, its messages, and the process-wide window table behind it.
//
// Thread rule: everything here belongs to the user-interface thread, except where an operation says
// "any thread". A call from another thread is queued to the user-interface thread and dropped if
// the window is gone by then.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "platform/system/Export.h"
#include "platform/system/Object.h"
#include "platform/windows/MessageMap.h"

class CFont;
struct NativeWindow;

class PLATFORM_API CWnd : public CObject {
  public:
    CWnd() = default;
    /// Destroys the window too, if there is one.
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// The window's handle, 0 while there is no window. Any thread.
    WindowHandle GetHandle() const { return m_hWnd.load(std::memory_order_acquire); }

    // Messages

    /// Handles a message now and returns the handler's result; exceptions of handlers are reported
    /// by the standard error box and give 0. Without a window: 0. Any thread; from a thread that is
    /// not the user-interface thread it is the same as PostMessage and gives 0.
    LRESULT SendMessage(UINT nMessage, WPARAM wParam = 0, LPARAM lParam = 0);

    /// Queues a message. Any thread.
    /// @return false when there is no window
    bool PostMessage(UINT nMessage, WPARAM wParam = 0, LPARAM lParam = 0);

    /// Queues a call to the user-interface thread, which makes it if the window is still there.
    /// Any thread. A call that is not made does not outlive this object: the library that it comes
    /// from may go then.
    void PostCall(std::function<void()> call);

    // State

    void EnableWindow(bool bEnable = true);
    bool IsWindowEnabled() const;
    void ShowWindow(bool bShow);
    bool IsWindowVisible() const;
    void SetWindowText(const std::wstring& strText);
    std::wstring GetWindowText() const;
    /// What assistive technology calls the window, in place of its text.
    void SetAccessibleName(const std::wstring& strName);
    void SetFont(CFont* pFont);
    void SetFocus();
    int GetControlID() const;

    /// Requests a repaint of the whole client area; several requests before the next paint make one
    /// paint. A control that draws itself is painted at most 60 times a second, the first time
    /// after a pause at once, and always after the last request; one that is not to be seen, when
    /// it appears. Nothing happens without a window. Any thread.
    void Invalidate();

    /// Accepts files dropped on the window, as WM_DROPFILES.
    void DragAcceptFiles(bool bAccept = true);

    // Geometry, in pixels

    CRect GetClientRect() const;
    CRect GetWindowRect() const;  ///< in screen coordinates
    void ScreenToClient(CRect& rect) const;
    void SetWindowPosition(CPoint position);  ///< in the parent's client area; keeps the size
    void SetTopMost();

    // Relations

    CWnd* GetParent() const;

    /// The child control with an id, or null.
    CWnd* GetControl(int nID) const;

    void SetControlText(int nID, const std::wstring& strText);

    /// Ties this object to the control `nID` of `pParent`, in place of the object that stood for
    /// it.
    /// @return false when there is no such control
    bool AttachControl(int nID, CWnd* pParent);

    /// Destroys the window with its children; the object stays.
    void DestroyWindow();

  protected:
    /// Looks a message up in the message maps, from the most derived class to the root, and else
    /// hands it to DefWindowProc.
    virtual LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);

    /// The default handling of a message.
    virtual LRESULT DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);

    /// The default handling of the message being handled now.
    LRESULT Default();

    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }

    static const MessageMap* GetThisMessageMap();
    virtual const MessageMap* GetMessageMap() const;

  private:
    friend struct NativeWindow;
    friend class CDialog;

    std::atomic<WindowHandle> m_hWnd{0};
    NativeWindow* m_pNative = nullptr;
    /// Set from another thread's request for a repaint until that begins, so that a flood of
    /// requests makes one.
    std::atomic<bool> m_bPaintRequested{false};
};
