#include "platform/windows/Dialog.h"

#include <QApplication>
#include <QEventLoop>
#include <QFontMetrics>

#include "platform/drawing/qt/Surface.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemoryReserve.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/Application.h"
#include "platform/windows/DialogLook.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/qt/FrameWidget.h"

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

/// The window that a dialog without a parent stands above, or null.
QWidget* FindOwner() {
    if (QWidget* pModal = QApplication::activeModalWidget()) return pModal;
    if (QWidget* pActive = QApplication::activeWindow()) return pActive->window();
    const CApplication* pApp = GetApp();
    NativeWindow* pMain = pApp && pApp->m_pMainWnd ? NativeWindow::Of(*pApp->m_pMainWnd) : nullptr;
    return pMain && pMain->m_widget.isVisible() ? &pMain->m_widget : nullptr;
}

}  // namespace

CSize DialogBaseUnits(const wchar_t* pFontFace, int nPointSize) {
    if (nPointSize == 8 && std::wstring_view(pFontFace) == L"MS Shell Dlg") return {6, 13};
    QFont font = TemplateFont(pFontFace, nPointSize);
    font.setPixelSize(PixelsOfPointSize(nPointSize * 10));  // of the design, not of the display
    const QFontMetrics metrics(font);
    const int nAlphabet = metrics.horizontalAdvance(
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {(nAlphabet / 26 + 1) / 2, metrics.height()};
}

bool CDialog::CreateFromTemplate(CWnd* pParent) {
    // A widget that runs out of memory in the middle of its making leaves its parent broken: a
    // window is begun only when there is enough for one.
    CMemoryReserve(WINDOW_MEMORY).Release();
    NativeWindow* pNative = pParent ? NativeWindow::Of(*pParent) : nullptr;
    const CSize units = DialogBaseUnits(m_template.m_pFontFace, m_template.m_nPointSize);
    const CRect client = MapDialogRect(units, 0, 0, m_template.cx, m_template.cy);
    DialogWidget* pWidget = nullptr;
    if (m_template.m_bChild) {
        pWidget = new DialogWidget(this, pNative ? &pNative->m_widget : nullptr);
        pWidget->setFixedSize(client.Width(), client.Height());
    } else {
        QWidget* pAbove = pNative ? pNative->m_widget.window() : FindOwner();
        pWidget =
            &FrameWidget::MakeDialog(this, pAbove, {client.Width(), client.Height()})->Client();
    }
    pWidget->setFont(TemplateFont(m_template.m_pFontFace, m_template.m_nPointSize));
    SetWidgetText(*pWidget, QString::fromWCharArray(m_template.m_pTitle));
    pWidget->m_baseUnits = units;
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
    FrameWidget& frame = *FrameWidget::Of(m_pNative);
    frame.setWindowModality(Qt::ApplicationModal);

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
        frame.ShowInFront();
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
    FrameWidget& frame = *FrameWidget::Of(m_pNative);
    frame.setWindowModality(Qt::ApplicationModal);
    frame.ShowInFront();
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
