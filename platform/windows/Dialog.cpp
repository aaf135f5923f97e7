#include "platform/windows/Dialog.h"

#include <QApplication>
#include <QEventLoop>
#include <QFontMetrics>
#include <QScreen>

#include "platform/drawing/qt/Surface.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemoryReserve.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/DialogLook.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/qt/Widgets.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, OnOK)
ON_COMMAND(IDCANCEL, OnCancel)
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

namespace {

QFont TemplateFont(const wchar_t* pFace, int nPointSize) {
    CFont font;
    font.CreatePointFont(nPointSize * 10, pFace);
    return ToQFont(font);
}

/// Centres a window over its owner, or on the screen, and keeps it on the screen.
void PlaceWindow(QWidget& widget) {
    const QWidget* pOwner = widget.parentWidget() ? widget.parentWidget()->window() : nullptr;
    const QRect available = widget.screen()->availableGeometry();
    QRect place(QPoint(), widget.size());
    place.moveCenter(pOwner && pOwner->isVisible() ? pOwner->geometry().center()
                                                   : available.center());
    if (place.right() > available.right()) place.moveRight(available.right());
    if (place.bottom() > available.bottom()) place.moveBottom(available.bottom());
    if (place.left() < available.left()) place.moveLeft(available.left());
    if (place.top() < available.top()) place.moveTop(available.top());
    widget.move(place.topLeft());
}

}  // namespace

CSize DialogBaseUnits(const wchar_t* pFontFace, int nPointSize) {
    if (nPointSize == 8 && std::wstring_view(pFontFace) == L"MS Shell Dlg") return {6, 13};
    const QFontMetrics metrics(TemplateFont(pFontFace, nPointSize));
    const int nAlphabet = metrics.horizontalAdvance(
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {(nAlphabet / 26 + 1) / 2, metrics.height()};
}

bool CDialog::CreateFromTemplate(CWnd* pParent) {
    // A widget that runs out of memory in the middle of its making leaves its parent broken: a
    // window is begun only when there is enough for one.
    CMemoryReserve(WINDOW_MEMORY).Release();
    QWidget* pParentWidget = nullptr;
    if (NativeWindow* pNative = pParent ? NativeWindow::Of(*pParent) : nullptr)
        pParentWidget = &pNative->m_widget;
    else if (!m_template.m_bChild)
        pParentWidget = QApplication::activeModalWidget() ? QApplication::activeModalWidget()
                                                          : QApplication::activeWindow();
    if (pParentWidget && !m_template.m_bChild) pParentWidget = pParentWidget->window();

    const Qt::WindowFlags flags = m_template.m_bChild
                                      ? Qt::Widget
                                      : Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    auto* pWidget = new DialogWidget(this, pParentWidget, flags);
    pWidget->setFont(TemplateFont(m_template.m_pFontFace, m_template.m_nPointSize));
    pWidget->setWindowTitle(QString::fromWCharArray(m_template.m_pTitle));
    pWidget->m_baseUnits = DialogBaseUnits(m_template.m_pFontFace, m_template.m_nPointSize);
    const CRect client = MapDialogRect(pWidget->m_baseUnits, 0, 0, m_template.cx, m_template.cy);
    pWidget->setFixedSize(client.Width(), client.Height());
    for (const DialogItem& item : m_template.m_items) CreateControl(item, *pWidget);
    return true;
}

void CDialog::NameControls() {
    for (const DialogItem& item : m_template.m_items)
        if (CWnd* pControl = item.m_name ? GetControl(item.m_nID) : nullptr)
            pControl->SetAccessibleName(GetText(item.m_name));
}

int CDialog::DoModal() {
    /// Whatever happens, the window goes and nothing refers to the loop any more.
    struct Ending {
        ~Ending() {
            m_dialog.m_endModalLoop = nullptr;
            m_dialog.DestroyWindow();
        }
        CDialog& m_dialog;
    };
    QEventLoop loop;
    const Ending ending{*this};
    CreateFromTemplate(m_pParentWnd);
    const WindowHandle hWnd = GetHandle();
    QWidget& widget = m_pNative->m_widget;
    widget.setWindowModality(Qt::ApplicationModal);

    bool bEnded = false;
    m_nModalResult = IDCANCEL;
    m_endModalLoop = [&] {
        bEnded = true;
        loop.quit();
    };
    bool bDefaultFocus = false;
    try {
        bDefaultFocus = OnInitDialog();
        NameControls();
    } catch (...) {
        ReportCurrentException();
        EndDialog(-1);
    }
    if (!bEnded && NativeWindow::Find(hWnd)) {
        PlaceWindow(widget);
        widget.show();
        widget.activateWindow();
        if (bDefaultFocus && !widget.focusWidget()) widget.setFocus();
        const auto quit = QObject::connect(&widget, &QObject::destroyed, &loop, &QEventLoop::quit);
        loop.exec();
        QObject::disconnect(quit);
    }
    return m_nModalResult;
}

bool CDialog::Create(CWnd* pParent) {
    if (!CreateFromTemplate(pParent)) return false;
    OnInitDialog();
    NameControls();
    return true;
}

bool CDialog::CreateModal(CWnd* pParent) {
    if (!Create(pParent)) return false;
    QWidget& widget = m_pNative->m_widget;
    widget.setWindowModality(Qt::ApplicationModal);
    PlaceWindow(widget);
    widget.show();
    widget.activateWindow();
    return true;
}

void CDialog::EndDialog(int nResult) {
    m_nModalResult = nResult;
    if (m_endModalLoop)
        m_endModalLoop();
    else
        ShowWindow(false);
}

bool CDialog::UpdateData(bool bSaveAndValidate) {
    CDataExchange exchange{this, bSaveAndValidate};
    try {
        DoDataExchange(&exchange);
    } catch (const CUserException&) {
        return false;
    }
    return true;
}

bool CDialog::OnInitDialog() {
    UpdateData(false);
    return true;
}

void CDialog::OnOK() {
    if (UpdateData(true)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

bool CDialog::OnEraseBkgnd(CDC* pDC) {
    pDC->FillSolidRect(GetClientRect(), DIALOG_BACKGROUND);
    return true;
}

LRESULT CDialog::DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) {
    if (nMessage == WM_CLOSE) return SendMessage(WM_COMMAND, CommandParam(IDCANCEL, BN_CLICKED));
    return CWnd::DefWindowProc(nMessage, wParam, lParam);
}

namespace {

/// Exchanges a whole number; one that does not convert, or does not fit, is reported.
template <class Number>
void ExchangeNumber(CDataExchange* pExchange, int nID, Number& nValue) {
    CWnd* pControl = pExchange->m_pDialog->GetControl(nID);
    if (!pControl) return;
    if (!pExchange->m_bSaveAndValidate) {
        pControl->SetWindowText(std::to_wstring(nValue));
        return;
    }
    bool bConverts = false;
    const long long nEntered =
        QString::fromStdWString(pControl->GetWindowText()).trimmed().toLongLong(&bConverts);
    if (!bConverts || nEntered < std::numeric_limits<Number>::min() ||
        nEntered > std::numeric_limits<Number>::max()) {
        ShowErrorBox(GetText({3109, L"Please enter a whole number between %1 and %2."},
                             {std::to_wstring(std::numeric_limits<Number>::min()),
                              std::to_wstring(std::numeric_limits<Number>::max())}));
        pControl->SetFocus();
        throw CUserException();
    }
    nValue = static_cast<Number>(nEntered);
}

}  // namespace

void ExchangeText(CDataExchange* pExchange, int nID, std::int16_t& nValue) {
    ExchangeNumber(pExchange, nID, nValue);
}

void ExchangeText(CDataExchange* pExchange, int nID, std::int32_t& nValue) {
    ExchangeNumber(pExchange, nID, nValue);
}

void ExchangeText(CDataExchange* pExchange, int nID, std::wstring& strValue) {
    CWnd* pControl = pExchange->m_pDialog->GetControl(nID);
    if (!pControl) return;
    if (pExchange->m_bSaveAndValidate)
        strValue = pControl->GetWindowText();
    else
        pControl->SetWindowText(strValue);
}

void ExchangeControl(CDataExchange* pExchange, int nID, CWnd& control) {
    if (!control.GetHandle()) control.AttachControl(nID, pExchange->m_pDialog);
}
