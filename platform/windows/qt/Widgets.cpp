#include "platform/windows/qt/Widgets.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/qt/Surface.h"
#include "platform/windows/Controls.h"
#include "platform/windows/PaintDC.h"
#include "platform/windows/qt/FrameWidget.h"

namespace {

QColor ToQColor(COLORREF color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
            static_cast<int>((color >> 16) & 0xFF)};
}

/// A window keeps its mouse events to itself: a bar's are not its screen's.
/// @return whether it is one
bool KeepMouse(QEvent* pEvent) {
    switch (pEvent->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        pEvent->accept();
        return true;
    default:
        return false;
    }
}

}  // namespace

bool DialogWidget::event(QEvent* pEvent) {
    const bool bTaken = MessageWidget::event(pEvent);
    return KeepMouse(pEvent) || bTaken;
}

void DialogWidget::paintEvent(QPaintEvent*) {
    if (!m_native.m_pOwner) return;
    if (m_native.m_bStale || m_native.m_picture.size() != size()) {
        m_native.m_bStale = false;
        CPaintDC dc(m_native.m_pOwner);
        m_native.Dispatch(WM_ERASEBKGND, reinterpret_cast<WPARAM>(&dc), 0);
    }
    QPainter(this).drawImage(0, 0, m_native.m_picture);
}

void DialogWidget::dragEnterEvent(QDragEnterEvent* pEvent) {
    if (pEvent->mimeData()->hasUrls()) pEvent->acceptProposedAction();
}

void DialogWidget::dropEvent(QDropEvent* pEvent) {
    std::vector<std::wstring> paths;
    for (const QUrl& url : pEvent->mimeData()->urls())
        if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdWString());
    pEvent->acceptProposedAction();
    if (!paths.empty()) m_native.Dispatch(WM_DROPFILES, 0, reinterpret_cast<LPARAM>(&paths));
}

bool ViewWidget::event(QEvent* pEvent) {
    const bool bTaken = MessageWidget::event(pEvent);
    return KeepMouse(pEvent) || bTaken;
}

void ViewWidget::paintEvent(QPaintEvent* pEvent) {
    m_native.PaintWidget(pEvent->region(), [] {});
}

StaticWidget::StaticWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent)
    : MessageWidget(nID, nullptr, std::move(pStandIn), pParent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);  // a click goes to the dialog
}

void StaticWidget::SetText(const QString& text) {
    m_text = text;
    setAccessibleName(text);
    m_native.MarkStale();
}

QAccessibleInterface* DescribePainted(const QString&, QObject* pObject) {
    if (auto* pStatic = dynamic_cast<StaticWidget*>(pObject))
        return new QAccessibleWidget(pStatic, pStatic->m_bFrame ? QAccessible::Graphic
                                                                : QAccessible::StaticText);
    auto* pView = dynamic_cast<ViewWidget*>(pObject);
    if (!pView || pView->isWindow()) return nullptr;
    return new QAccessibleWidget(pView, QAccessible::StaticText);
}

void StaticWidget::paintEvent(QPaintEvent* pEvent) {
    m_native.PaintWidget(pEvent->region(), [this] { PaintText(); });
}

void StaticWidget::PaintText() {
    CBitmap scratch;
    scratch.CreateBitmap(1, 1);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SelectBitmap(&scratch);
    dc.SetTextColor(RGB(0, 0, 0));
    const CBrush* pBrush = nullptr;
    if (NativeWindow* pParent = m_native.Parent())
        pBrush = reinterpret_cast<const CBrush*>(
            pParent->Dispatch(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(&dc),
                              reinterpret_cast<LPARAM>(m_native.m_pOwner)));

    QPainter painter(this);
    if (pBrush) painter.fillRect(rect(), ToQColor(pBrush->m_color));
    QColor color = ToQColor(dc.SetTextColor(0));
    if (!isEnabled()) color = palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.setPen(color);
    const auto flags = (m_bCentered ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop |
                       Qt::TextWordWrap | Qt::TextExpandTabs;
    painter.drawText(rect(), static_cast<int>(flags), m_text);
}

ButtonWidget::ButtonWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent)
    : MessageWidget(nID, nullptr, std::move(pStandIn), pParent) {
    connect(this, &QPushButton::clicked, this, [this] { m_native.Notify(BN_CLICKED); });
}

void ButtonWidget::paintEvent(QPaintEvent* pEvent) {
    bool bDefault = false;
    m_native.PaintWidget(pEvent->region(), [&] { bDefault = true; });
    if (!bDefault) return;

    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const int nBeside = Scaled(3);
    const int nAbove = Scaled(2);
    QRect inside = rect().adjusted(nBeside, nAbove, -nBeside, -nAbove);
    if (isDown()) inside.translate(ScaledThickness(1), ScaledThickness(1));
    if (m_picture) {
        if (!isEnabled()) painter.setOpacity(0.35);
        DrawBitmap(painter, m_picture, inside);
    } else {
        const int nFlags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextWordWrap;
        style()->drawItemText(&painter, inside, nFlags, palette(), isEnabled(), text(),
                              QPalette::ButtonText);
    }
    if (hasFocus() && (option.state & QStyle::State_KeyboardFocusChange)) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(nBeside, nBeside, -nBeside, -nBeside);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

EditWidget::EditWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent)
    : MessageWidget(nID, nullptr, std::move(pStandIn), pParent) {
    setTextMargins(0, 0, 0, 0);
    connect(this, &QLineEdit::textEdited, this, [this] { m_native.Notify(EN_CHANGE); });
}

ComboWidget::ComboWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent)
    : MessageWidget(nID, nullptr, std::move(pStandIn), pParent) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(this, &QComboBox::activated, this, [this] { m_native.Notify(CBN_SELCHANGE); });
}

void ComboWidget::changeEvent(QEvent* pEvent) {
    MessageWidget::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange) FitHeight();
}

void ComboWidget::showPopup() {
    view()->installEventFilter(this);
    QComboBox::showPopup();
}

/// The list itself closes when Enter and Escape are only announced; where an open list does not get
/// the keyboard, as on a framebuffer, the keys then went to the dialog, and closed that too.
bool ComboWidget::eventFilter(QObject* pObject, QEvent* pEvent) {
    const bool bAnnounced = pEvent->type() == QEvent::ShortcutOverride;
    if (!bAnnounced && pEvent->type() != QEvent::KeyPress)
        return QComboBox::eventFilter(pObject, pEvent);
    const int nKey = dynamic_cast<QKeyEvent&>(*pEvent).key();
    const bool bEnter = nKey == Qt::Key_Return || nKey == Qt::Key_Enter;
    if (!bEnter && nKey != Qt::Key_Escape) return QComboBox::eventFilter(pObject, pEvent);
    pEvent->accept();
    if (bAnnounced) return true;
    const int nRow = view()->currentIndex().row();
    hidePopup();
    if (bEnter && nRow >= 0) {
        setCurrentIndex(nRow);
        emit activated(nRow);
    }
    return true;
}

void ComboWidget::FitHeight() { resize(width(), fontMetrics().height() + Scaled(8)); }

void ComboWidget::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    // A text that is too long for the closed list is drawn smaller rather than cut.
    const int nRoom =
        style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this)
            .width() -
        Scaled(4);
    QFont smaller = font();
    while (smaller.pixelSize() > Scaled(8) &&
           QFontMetrics(smaller).horizontalAdvance(option.currentText) > nRoom)
        smaller.setPixelSize(smaller.pixelSize() - 1);
    painter.setFont(smaller);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

ListWidget::ListWidget(int nID, std::unique_ptr<CWnd> pStandIn, QWidget* pParent)
    : MessageWidget(nID, nullptr, std::move(pStandIn), pParent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemSelectionChanged, this,
            [this] { m_native.Notify(LBN_SELCHANGE); });
}

void CreateControl(const DialogItem& item, DialogWidget& dialog) {
    QWidget* pWidget = nullptr;
    const QString text = QString::fromWCharArray(item.m_pText ? item.m_pText : L"");
    switch (item.m_kind) {
    case ControlKind::Static:
    case ControlKind::StaticFrame: {
        auto* pStatic = new StaticWidget(item.m_nID, std::make_unique<CStatic>(), &dialog);
        pStatic->m_bFrame = item.m_kind == ControlKind::StaticFrame;
        pStatic->SetText(text);
        pStatic->m_bCentered = (item.m_nStyle & CS_CENTER) != 0;
        pWidget = pStatic;
        break;
    }
    case ControlKind::PushButton:
    case ControlKind::StyledButton: {
        std::unique_ptr<CWnd> pStandIn;
        if (item.m_kind == ControlKind::StyledButton)
            pStandIn = std::make_unique<CStyledButton>();
        else
            pStandIn = std::make_unique<CButton>();
        auto* pButton = new ButtonWidget(item.m_nID, std::move(pStandIn), &dialog);
        pButton->setText(text);
        pWidget = pButton;
        break;
    }
    case ControlKind::Edit: {
        auto* pEdit = new EditWidget(item.m_nID, std::make_unique<CEdit>(), &dialog);
        pEdit->setText(text);
        pEdit->setReadOnly((item.m_nStyle & CS_READONLY) != 0);
        if (item.m_nStyle & CS_READONLY) pEdit->setFocusPolicy(Qt::NoFocus);
        pWidget = pEdit;
        break;
    }
    case ControlKind::DropDownList: {
        auto* pCombo = new ComboWidget(item.m_nID, std::make_unique<CComboBox>(), &dialog);
        pCombo->m_bSorted = (item.m_nStyle & CS_SORT) != 0;
        pWidget = pCombo;
        break;
    }
    case ControlKind::ListBox: {
        auto* pList = new ListWidget(item.m_nID, std::make_unique<CListBox>(), &dialog);
        pList->m_bSorted = (item.m_nStyle & CS_SORT) != 0;
        pWidget = pList;
        break;
    }
    }
    const CRect rect = MapDialogRect(dialog.m_baseUnits, item.x, item.y, item.cx, item.cy);
    pWidget->setGeometry(rect.left, rect.top, rect.Width(), rect.Height());
    if (auto* pCombo = dynamic_cast<ComboWidget*>(pWidget)) pCombo->FitHeight();
    pWidget->setVisible((item.m_nStyle & CS_HIDDEN) == 0);
}

QString GetWidgetText(const QWidget& widget) {
    if (auto* pStatic = dynamic_cast<const StaticWidget*>(&widget)) return pStatic->m_text;
    if (auto* pButton = qobject_cast<const QPushButton*>(&widget)) return pButton->text();
    if (auto* pEdit = qobject_cast<const QLineEdit*>(&widget)) return pEdit->text();
    if (auto* pCombo = qobject_cast<const QComboBox*>(&widget)) return pCombo->currentText();
    NativeWindow* pNative = NativeWindow::Of(&widget);
    return (pNative ? pNative->Outermost() : widget).windowTitle();
}

void SetWidgetText(QWidget& widget, const QString& text) {
    if (auto* pStatic = dynamic_cast<StaticWidget*>(&widget)) {
        pStatic->SetText(text);
    } else if (auto* pButton = qobject_cast<QPushButton*>(&widget)) {
        pButton->setText(text);
    } else if (auto* pEdit = qobject_cast<QLineEdit*>(&widget)) {
        pEdit->setText(text);
    } else if (FrameWidget* pFrame = FrameWidget::Of(NativeWindow::Of(&widget))) {
        pFrame->SetTitle(text);
    } else {
        widget.setWindowTitle(text);
        if (!widget.isWindow()) widget.setAccessibleName(text);
    }
}
