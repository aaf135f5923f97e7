// What stands behind a window: its widget, its place in the window table, and the object that
// handles its messages.
#pragma once

#include <QEvent>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>

#include "platform/windows/DialogTemplate.h"
#include "platform/windows/Wnd.h"

/// Sent to a widget, for those who watch it, just before its owner is asked for its picture, and
/// when that is done.
constexpr auto PICTURE_BEGUN = static_cast<QEvent::Type>(QEvent::User + 1);
constexpr auto PICTURE_DONE = static_cast<QEvent::Type>(QEvent::User + 2);

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

    /// Puts the widget that surrounds this one into the window: the window is found by it too, and
    /// it is what is shown, moved and destroyed. It must live as long as the inner one.
    void SetFrame(QWidget& frame);
    /// The frame, or else the widget itself.
    QWidget& Outermost() const { return m_pFrame ? *m_pFrame : m_widget; }

    /// Lets another object handle the window's messages.
    void Attach(CWnd* pNewOwner);

    /// Takes the window, its children and the windows above it out of the table and from their
    /// objects, before the widget itself goes.
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

    /// Marks the kept picture stale and has it drawn anew.
    ///
    /// A picture that the owner has drawn before is refreshed outside of the widget's paint events,
    /// at most 60 times a second, the first time after a pause in the next turn of the event loop;
    /// what has changed in it then goes to the window. What is not to be seen, and what the widget
    /// paints itself, waits for the widget's next paint event.
    void MarkStale();

    /// Has what is stale or changed in the picture shown, at the same pace. Out of memory, that
    /// waits for the next request or the next paint event.
    void RequestRefresh() noexcept;

    /// Paints a region of a widget whose owner draws into the kept picture, which is drawn first if
    /// it is stale; `paintDefault` paints the others.
    void PaintWidget(const QRegion& region, const std::function<void()>& paintDefault);

    /// The window that this one is a part of, or stands above; null when there is none.
    NativeWindow* Parent() const;
    NativeWindow* Child(int nControlID) const;

    QWidget& m_widget;
    const WindowHandle m_hWnd;
    const int m_nID;
    CWnd* m_pOwner;
    QImage m_picture;              ///< what the owner has drawn last; null before that
    bool m_bStale = true;          ///< the picture is to be drawn anew
    bool m_bPictureWhole = false;  ///< the last drawing of the picture came to its end
    QRect m_changed;               ///< what drawings have changed in the picture and not shown yet

  private:
    struct Handling {
        UINT m_nMessage;
        const std::function<LRESULT()>* m_pRunDefault;
        WPARAM m_wParam;
        LPARAM m_lParam;
        Handling* m_pOuter;
    };
    friend class CWnd;

    /// Whether the window is on the screen, as far as the window system knows.
    bool IsShown() const;
    void WaitForPaintEvent();
    void Refresh();
    /// Asks the owner for the picture; `paintDefault` is the default painting.
    void Draw(const std::function<void()>& paintDefault);

    QWidget* m_pFrame = nullptr;
    std::unique_ptr<CWnd> m_pStandIn;
    bool m_bOwnerDraws = false;                           ///< the last drawing was the owner's
    QTimer m_refreshTimer;                                ///< runs: Refresh will be called
    std::chrono::steady_clock::time_point m_nextRefresh;  ///< the earliest time
    Handling* m_pHandling = nullptr;
};
