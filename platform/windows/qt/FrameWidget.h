// The outermost widget of a window: it holds the client area, and a foot below it when there is
// one. Where no window manager frames the windows it draws border and caption around them, and the
// window can be dragged by the caption.
#pragma once

#include <optional>

#include "platform/windows/qt/Widgets.h"

class PLATFORM_API FrameWidget : public QWidget {
  public:
    /// Makes the frame of a dialog with its client area. Owned by the parent, or by whoever
    /// destroys the client's window.
    /// @param pParent the window that it stands above, or null
    static FrameWidget* MakeDialog(CWnd* pOwner, QWidget* pParent, CSize client);

    /// The frame around a window's client area; null when the window is part of another.
    static FrameWidget* Of(const NativeWindow* pNative);

    void SetTitle(const QString& text);

    DialogWidget& Client() { return *m_pClient; }

    /// Puts a widget below the client area, as wide as that, and takes it over. When it goes, the
    /// frame closes up.
    void SetFoot(QWidget& foot, int nHeight);
    bool HasFoot() const { return m_pFoot != nullptr; }

    /// Centres the window over its owner, or on the screen, and keeps it on the screen.
    void Place();

    /// Shows the window in its place, in front of the others, with the keyboard.
    void ShowInFront();

  protected:
    void childEvent(QChildEvent* pEvent) override;
    void paintEvent(QPaintEvent*) override;
    void changeEvent(QEvent* pEvent) override;
    void moveEvent(QMoveEvent*) override { ShowPlace(); }
    void resizeEvent(QResizeEvent*) override { ShowPlace(); }
    void hideEvent(QHideEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent*) override { m_grip.reset(); }

  private:
    explicit FrameWidget(QWidget* pParent);

    void Arrange();
    QRect CaptionRect() const;
    void ShowPlace();
    void PressEnter();

    const bool m_bDrawn;  ///< border and caption are the frame's own
    DialogWidget* m_pClient = nullptr;
    QWidget* m_pFoot = nullptr;
    int m_nFootHeight = 0;
    std::optional<QPoint> m_grip;  ///< where in the caption it was pressed
    bool m_bDragged = false;       ///< the press has moved far enough to be a drag
};
