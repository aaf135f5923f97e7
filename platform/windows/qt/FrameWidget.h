// The outermost widget of a window: it holds the client area, and the feet below it. Where no
// window manager frames the windows it draws border and caption around them, and the window can be
// dragged by the caption.
#pragma once

#include <optional>
#include <vector>

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

    /// Puts a widget below the client area and the feet that are there, as wide as those, and takes
    /// it over. When it goes, the frame closes up.
    void AddFoot(QWidget& foot, int nHeight);

    /// Puts a widget over a part of the client area, in front of all that is in it, and takes it
    /// over.
    void AddCover(QWidget& cover, const CRect& area);

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
    struct Foot {
        QWidget* m_pWidget;
        int m_nHeight;
    };
    std::vector<Foot> m_feet;      ///< from the client area down
    std::optional<QPoint> m_grip;  ///< where in the caption it was pressed
    bool m_bDragged = false;       ///< the press has moved far enough to be a drag
};
