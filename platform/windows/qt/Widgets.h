// The widgets behind windows and controls. Each turns its events into window messages and
// notifications; what no message handler takes is the widget's own business.
#pragma once

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>

#include "platform/drawing/Graphics.h"
#include "platform/windows/qt/NativeWindow.h"

constexpr COLORREF BUTTON_FACE = RGB(240, 240, 240);

/// Adds to a widget class: a window of its own, mouse events as messages.
template <class Base>
class MessageWidget : public Base {
  public:
    template <class... Arguments>
    MessageWidget(int nID, CWnd* pOwner, std::unique_ptr<CWnd> pStandIn, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...),
          m_native(*this, nID, pOwner, std::move(pStandIn)) {}

    NativeWindow m_native;

  protected:
    bool event(QEvent* pEvent) override {
        switch (pEvent->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return DispatchMouse(ButtonOf(pEvent) == Qt::LeftButton    ? WM_LBUTTONDOWN
                                 : ButtonOf(pEvent) == Qt::RightButton ? WM_RBUTTONDOWN
                                                                       : 0,
                                 pEvent);
        case QEvent::MouseButtonRelease:
            return DispatchMouse(ButtonOf(pEvent) == Qt::LeftButton ? WM_LBUTTONUP : 0, pEvent);
        case QEvent::MouseMove:
            return DispatchMouse(WM_MOUSEMOVE, pEvent);
        default:
            return Base::event(pEvent);
        }
    }

  private:
    static Qt::MouseButton ButtonOf(QEvent* pEvent) {
        return static_cast<QMouseEvent*>(pEvent)->button();
    }

    bool DispatchMouse(UINT nMessage, QEvent* pEvent) {
        if (!nMessage) return Base::event(pEvent);
        auto* pMouse = static_cast<QMouseEvent*>(pEvent);
        const QPoint position = pMouse->position().toPoint();
        const WPARAM nButtons = pMouse->buttons() & Qt::LeftButton ? 1 : 0;
        bool bTaken = true;
        m_native.Dispatch(nMessage, nButtons, PointParam({position.x(), position.y()}), [&] {
            bTaken = Base::event(pEvent);
            return 0;
        });
        return bTaken;
    }
};

/// The client area of a dialog.
class PLATFORM_API DialogWidget : public MessageWidget<QWidget> {
  public:
    DialogWidget(CWnd* pOwner, QWidget* pParent) : MessageWidget(0, pOwner, nullptr, pParent) {}

    /// The size of a dialog unit, for the controls inside.
    CSize m_baseUnits{6, 13};

  protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent*) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
};

/// The window of a view, or of a main frame. What its owner does not paint shows what is below.
class ViewWidget : public MessageWidget<QWidget> {
  public:
    ViewWidget(CWnd* pOwner, QWidget* pParent, Qt::WindowFlags flags = {})
        : MessageWidget(0, pOwner, nullptr, pParent, flags) {}

  protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
};

class PLATFORM_API StaticWidget : public MessageWidget<QWidget> {
  public:
    StaticWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent);

    void SetText(const QString& text);

    QString m_text;
    bool m_bCentered = false;
    bool m_bFrame = false;  ///< an area that is painted, not a text

  protected:
    void paintEvent(QPaintEvent* pEvent) override;

  private:
    void PaintText();
};

/// A push button; with a picture it shows the picture in place of its text.
class ButtonWidget : public MessageWidget<QPushButton> {
  public:
    ButtonWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent);

    CBitmap m_picture;

  protected:
    void paintEvent(QPaintEvent* pEvent) override;
    /// A press leaves the checked state alone: its handler knows what is to be shown.
    void nextCheckState() override {}
};

class EditWidget : public MessageWidget<QLineEdit> {
  public:
    EditWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent);

  protected:
    void contextMenuEvent(QContextMenuEvent*) override {}
};

class ComboWidget : public MessageWidget<QComboBox> {
  public:
    ComboWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent);

    /// The template's height is that of the open list; the closed one is as high as its font.
    void FitHeight();

    void showPopup() override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

    bool m_bSorted = false;

  protected:
    void changeEvent(QEvent* pEvent) override;
    void paintEvent(QPaintEvent*) override;
};

class ListWidget : public MessageWidget<QListWidget> {
  public:
    ListWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent);

    bool m_bSorted = false;
    int m_nRowHeight = 0;  ///< in pixels; 0: as high as the text
};

/// What assistive technology is told of a static or of a view within a window; of what the window
/// system knows itself, null.
QAccessibleInterface* DescribePainted(const QString& className, QObject* pObject);

/// Makes the child widget for one line of a dialog template.
void CreateControl(const DialogItem& item, DialogWidget& dialog);

QString GetWidgetText(const QWidget& widget);
void SetWidgetText(QWidget& widget, const QString& text);
