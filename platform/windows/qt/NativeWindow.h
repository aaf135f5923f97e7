// What stands behind a window: its widget, its place in the window table, and the object that
// handles its messages.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/windows/DialogTemplate.h"
#include "platform/windows/Wnd.h"

/// One window. Lives as long as its widget. User-interface thread only.
struct PLATFORM_API NativeWindow {
    /// Enters the widget into the window table.
    /// @param pOwner handles the window's messages; null: a stand-in of the control's class is made
    NativeWindow(QWidget& nativeWidget, int nControlID, CWnd* pNewOwner,
                 std::unique_ptr<CWnd> pNewStandIn = nullptr);
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    static NativeWindow* Find(WindowHandle hWnd);
    static NativeWindow* Of(const QWidget* pWidget);
    static NativeWindow* Of(const CWnd& wnd) { return wnd.m_pNative; }

    /// Lets another object handle the window's messages.
    void Attach(CWnd* pNewOwner);

    /// Takes the window and its children out of the table and from their objects, before the widget
    /// itself goes.
    void Retire();

    /// Handles a message through the owner's message maps; `runDefault` is what Default() does.
    /// Whatever a handler throws is reported to the operator and gives 0.
    LRESULT Dispatch(UINT nMessage, WPARAM wParam, LPARAM lParam,
                     const std::function<LRESULT()>& runDefault = {});

    /// Sends the parent window this control's notification.
    void Notify(UINT nCode);

    /// Runs the default handling of the message being handled, if that is its kind.
    /// @return whether there was one; its result goes to *pResult
    bool RunDefault(UINT nMessage, LRESULT* pResult);

    /// Marks the kept picture stale and has the widget painted.
    void MarkStale();

    /// Paints a widget whose owner draws into the kept picture; `paintDefault` paints the others.
    void PaintWidget(const std::function<void()>& paintDefault);

    NativeWindow* Parent() const;
    NativeWindow* Child(int nControlID) const;

    QWidget& m_widget;
    const WindowHandle m_hWnd;
    const int m_nID;
    CWnd* m_pOwner;
    QImage m_picture;      ///< what the owner has drawn last; null before that
    bool m_bStale = true;  ///< the picture is to be drawn anew
    bool m_bPictureWhole = false;

  private:
    struct Handling {
        UINT m_nMessage;
        const std::function<LRESULT()>* m_pRunDefault;
        WPARAM m_wParam;
        LPARAM m_lParam;
        Handling* m_pOuter;
    };
    friend class CWnd;

    std::unique_ptr<CWnd> m_pStandIn;
    Handling* m_pHandling = nullptr;
};
