#include "platform/windows/qt/FrameWidget.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <memory>

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/Application.h"
#include "platform/windows/FrameLook.h"

namespace {

const QColor FRAME_COLOR(38, 96, 164);
const QColor FRAME_COLOR_BEHIND(122, 150, 184);  ///< of a window that does not have the keyboard
constexpr int TITLE_PIXELS = 16;
constexpr int TITLE_INDENT = 8;

Qt::WindowFlags FrameFlags() {
    if (GetDisplayKind() == DisplayKind::Panel) return Qt::Dialog | Qt::FramelessWindowHint;
    return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;  // no close box
}

}  // namespace

CSize GetFrameExtent() {
    if (GetDisplayKind() != DisplayKind::Panel) return {};
    const int nBorders = 2 * Scaled(FRAME_BORDER);
    return {nBorders, nBorders + Scaled(FRAME_CAPTION)};
}

FrameWidget::FrameWidget(QWidget* pParent)
    : QWidget(pParent, FrameFlags()), m_bDrawn(GetDisplayKind() == DisplayKind::Panel) {}

FrameWidget* FrameWidget::MakeDialog(CWnd* pOwner, QWidget* pParent, CSize client) {
    std::unique_ptr<FrameWidget> pFrame(new FrameWidget(pParent));
    pFrame->m_pClient = new DialogWidget(pOwner, pFrame.get());
    pFrame->m_pClient->m_native.SetFrame(*pFrame);
    pFrame->m_pClient->setFixedSize(client.cx, client.cy);
    pFrame->Arrange();
    return pFrame.release();
}

FrameWidget* FrameWidget::Of(const NativeWindow* pNative) {
    return pNative ? dynamic_cast<FrameWidget*>(&pNative->Outermost()) : nullptr;
}

void FrameWidget::AddFoot(QWidget& foot, int nHeight) {
    m_feet.push_back({&foot, nHeight});
    foot.setParent(this);
    Arrange();
    foot.show();
}

void FrameWidget::AddCover(QWidget& cover, const CRect& area) {
    cover.setParent(this);
    cover.setGeometry(m_pClient->x() + area.left, m_pClient->y() + area.top, area.Width(),
                      area.Height());
    cover.show();
}

void FrameWidget::childEvent(QChildEvent* pEvent) {
    if (!pEvent->removed()) return;
    const auto nFeet =
        std::erase_if(m_feet, [&](const Foot& foot) { return foot.m_pWidget == pEvent->child(); });
    if (nFeet > 0) Arrange();
}

void FrameWidget::Arrange() {
    const int nBorder = m_bDrawn ? Scaled(FRAME_BORDER) : 0;
    const QRect client(QPoint(nBorder, CaptionRect().bottom() + 1), m_pClient->size());
    m_pClient->move(client.topLeft());
    int nFeet = 0;
    for (const Foot& foot : m_feet) {
        foot.m_pWidget->setGeometry(client.left(), client.bottom() + 1 + nFeet, client.width(),
                                    foot.m_nHeight);
        nFeet += foot.m_nHeight;
    }
    const CSize extent = GetFrameExtent();
    setFixedSize(client.width() + extent.cx, client.height() + nFeet + extent.cy);
    if (isVisible()) Place();
}

QRect FrameWidget::CaptionRect() const {
    if (!m_bDrawn) return {};
    const int nBorder = Scaled(FRAME_BORDER);
    return {nBorder, nBorder, m_pClient->width(), Scaled(FRAME_CAPTION)};
}

void FrameWidget::Place() {
    const QWidget* pOwner = parentWidget();
    const QRect available = screen()->availableGeometry();
    QRect place(QPoint(), size());
    place.moveCenter(pOwner && pOwner->isVisible() ? pOwner->geometry().center()
                                                   : available.center());
    if (place.right() > available.right()) place.moveRight(available.right());
    if (place.bottom() > available.bottom()) place.moveBottom(available.bottom());
    if (place.left() < available.left()) place.moveLeft(available.left());
    if (place.top() < available.top()) place.moveTop(available.top());
    move(place.topLeft());
}

void FrameWidget::ShowInFront() {
    Place();
    show();
    activateWindow();
}

void FrameWidget::SetTitle(const QString& text) {
    setWindowTitle(text);
    update(CaptionRect());
}

void FrameWidget::paintEvent(QPaintEvent*) {
    if (!m_bDrawn) return;
    QPainter painter(this);
    painter.fillRect(rect(), isActiveWindow() ? FRAME_COLOR : FRAME_COLOR_BEHIND);
    CFont font;
    font.CreatePixelFont(TITLE_PIXELS, L"MS Shell Dlg", true);
    painter.setFont(ToQFont(font));
    painter.setPen(Qt::white);
    const int nIndent = Scaled(TITLE_INDENT);
    const QRect room = CaptionRect().adjusted(nIndent, 0, -nIndent, 0);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(windowTitle(), Qt::ElideRight, room.width()));
}

void FrameWidget::changeEvent(QEvent* pEvent) {
    if (pEvent->type() == QEvent::ActivationChange) update();
    QWidget::changeEvent(pEvent);
}

void FrameWidget::ShowPlace() {
    // A bare framebuffer clears only the place that a window has had before its last change: one
    // that is not painted in between would leave a picture of itself behind.
    if (isVisible()) repaint(CaptionRect());
}

void FrameWidget::hideEvent(QHideEvent* pEvent) {
    QWidget::hideEvent(pEvent);
    if (!m_bDrawn) return;
    // An X server without a window manager gives the keyboard to whatever is below the pointer.
    QWidget* pModal = QApplication::activeModalWidget();
    QWidget* pNext = pModal ? pModal : parentWidget();
    if (pNext && pNext->isVisible()) pNext->activateWindow();
}

void FrameWidget::keyPressEvent(QKeyEvent* pEvent) {
    switch (pEvent->key()) {
    case Qt::Key_Escape:
        m_pClient->m_native.Dispatch(WM_COMMAND, CommandParam(IDCANCEL, BN_CLICKED), 0);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        PressEnter();
        break;
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

void FrameWidget::PressEnter() {
    if (auto* pFocused = qobject_cast<QPushButton*>(focusWidget())) {
        pFocused->click();
        return;
    }
    NativeWindow* pOk = m_pClient->m_native.Child(IDOK);
    if (pOk && !pOk->m_widget.isEnabled()) return;
    m_pClient->m_native.Dispatch(WM_COMMAND, CommandParam(IDOK, BN_CLICKED), 0);
}

void FrameWidget::closeEvent(QCloseEvent* pEvent) {
    pEvent->ignore();  // the handler decides
    m_pClient->m_native.Dispatch(WM_CLOSE, 0, 0);
}

void FrameWidget::mousePressEvent(QMouseEvent* pEvent) {
    const QPoint point = pEvent->position().toPoint();
    if (pEvent->button() != Qt::LeftButton || point.y() > CaptionRect().bottom()) return;
    m_grip = point;
    m_bDragged = false;
}

void FrameWidget::mouseMoveEvent(QMouseEvent* pEvent) {
    if (!m_grip) return;
    const QPoint place = pEvent->globalPosition().toPoint() - *m_grip;
    // A finger is never quite still.
    m_bDragged |= (place - pos()).manhattanLength() >= QApplication::startDragDistance();
    if (!m_bDragged) return;
    // What stays on the screen is enough to drag it back by.
    const QRect available = screen()->availableGeometry();
    const int nReach = CaptionRect().bottom() + 1;
    move(std::clamp(place.x(), available.left() - width() + 2 * nReach,
                    available.right() + 1 - 2 * nReach),
         std::clamp(place.y(), available.top(), available.bottom() + 1 - nReach));
}
