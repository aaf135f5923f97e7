#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/drawing/qt/Surface.h"
#include "platform/operator/Operator.h"
#include "platform/windows/qt/NativeWindow.h"

namespace {

CBitmap PictureOf(QWidget& widget, double dScale) {
    QImage image(widget.size() * dScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(dScale);
    widget.render(&image);
    return ToBitmap(image);
}

/// A window and those that stand above it, from the back to the front.
QWidgetList FindStack(const QWidget& bottom) {
    std::vector<std::pair<int, QWidget*>> stack;
    for (QWidget* pWindow : QApplication::topLevelWidgets()) {
        int nDepth = 0;
        const QWidget* pBelow = pWindow;
        for (; pBelow && pBelow != &bottom; pBelow = pBelow->parentWidget()) ++nDepth;
        if (pBelow && pWindow->isVisible()) stack.emplace_back(nDepth, pWindow);
    }
    std::ranges::stable_sort(stack, {}, [](const auto& entry) { return entry.first; });
    QWidgetList windows;
    for (const auto& [nDepth, pWindow] : stack) windows.push_back(pWindow);
    return windows;
}

}  // namespace

namespace Operator {

CBitmap TakePicture(const CWnd& wnd, double dScale) {
    CBitmap picture;
    Ask([&] {
        NativeWindow* pNative = NativeWindow::Find(wnd.GetHandle());
        if (pNative) picture = PictureOf(pNative->m_widget, dScale);
    });
    return picture;
}

CBitmap TakeWindowPicture(const CWnd& wnd, double dScale) {
    CBitmap picture;
    Ask([&] {
        NativeWindow* pNative = NativeWindow::Find(wnd.GetHandle());
        if (pNative) picture = PictureOf(*pNative->m_widget.window(), dScale);
    });
    return picture;
}

CBitmap TakeScreenPicture(const CWnd& wnd) {
    CBitmap picture;
    Ask([&] {
        NativeWindow* pNative = NativeWindow::Find(wnd.GetHandle());
        if (!pNative) return;
        const QWidget& widget = pNative->m_widget;
        const QRect rect(widget.mapTo(widget.window(), QPoint()), widget.size());
        picture = ToBitmap(widget.screen()
                               ->grabWindow(widget.window()->winId(), rect.x(), rect.y(),
                                            rect.width(), rect.height())
                               .toImage());
    });
    return picture;
}

CBitmap TakeStackPicture(const CWnd& wnd) {
    CBitmap picture;
    Ask([&] {
        NativeWindow* const pNative = NativeWindow::Find(wnd.GetHandle());
        if (!pNative) return;
        const QWidgetList windows = FindStack(*pNative->m_widget.window());
        QRect place;
        for (const QWidget* pWindow : windows) place |= pWindow->geometry();
        QImage image(place.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        for (QWidget* pWindow : windows)
            painter.drawPixmap(pWindow->geometry().topLeft() - place.topLeft(), pWindow->grab());
        painter.end();
        picture = ToBitmap(image);
    });
    return picture;
}

}  // namespace Operator
