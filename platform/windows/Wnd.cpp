#include "platform/windows/Wnd.h"

#include <QPointer>
#include <QWidget>
#include <new>

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/qt/NativeWindow.h"
#include "platform/windows/qt/UiQueue.h"
#include "platform/windows/qt/Widgets.h"

CWnd::~CWnd() {
    DestroyWindow();
    DropCallsOfGoneWindows();
}

LRESULT CWnd::SendMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) {
    if (!IsUiThread()) {
        PostMessage(nMessage, wParam, lParam);
        return 0;
    }
    return m_pNative ? m_pNative->Dispatch(nMessage, wParam, lParam) : 0;
}

bool CWnd::PostMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) {
    const WindowHandle hWnd = GetHandle();
    if (!hWnd) return false;
    PostToUi([=] {
        if (NativeWindow* pNative = NativeWindow::Find(hWnd))
            pNative->Dispatch(nMessage, wParam, lParam);
    });
    return true;
}

void CWnd::PostCall(std::function<void()> call) {
    const WindowHandle hWnd = GetHandle();
    if (!hWnd) return;
    PostToUi(
        [hWnd, call = std::move(call)] {
            if (!NativeWindow::Find(hWnd)) return;
            try {
                call();
            } catch (...) {
                ReportCurrentException();
            }
        },
        hWnd);
}

void CWnd::EnableWindow(bool bEnable) {
    if (m_pNative) m_pNative->m_widget.setEnabled(bEnable);
}

bool CWnd::IsWindowEnabled() const { return m_pNative && m_pNative->m_widget.isEnabled(); }

void CWnd::ShowWindow(bool bShow) {
    if (!m_pNative) return;
    // What a hidden window missed is drawn when it appears.
    QWidget& widget = m_pNative->Outermost();
    if (bShow && widget.isHidden()) m_pNative->MarkStale();
    widget.setVisible(bShow);
}

bool CWnd::IsWindowVisible() const { return m_pNative && m_pNative->m_widget.isVisible(); }

void CWnd::SetWindowText(const std::wstring& strText) {
    if (m_pNative) SetWidgetText(m_pNative->m_widget, QString::fromStdWString(strText));
}

std::wstring CWnd::GetWindowText() const {
    return m_pNative ? GetWidgetText(m_pNative->m_widget).toStdWString() : std::wstring();
}

void CWnd::SetAccessibleName(const std::wstring& strName) {
    if (m_pNative) m_pNative->m_widget.setAccessibleName(QString::fromStdWString(strName));
}

void CWnd::SetFont(CFont* pFont) {
    if (!m_pNative || !pFont) return;
    m_pNative->m_widget.setFont(ToQFont(*pFont));
    m_pNative->MarkStale();
}

void CWnd::SetFocus() {
    if (m_pNative) m_pNative->m_widget.setFocus();
}

int CWnd::GetControlID() const { return m_pNative ? m_pNative->m_nID : 0; }

void CWnd::Invalidate() {
    if (IsUiThread()) {
        if (m_pNative) m_pNative->MarkStale();
        return;
    }
    if (!GetHandle() || m_bPaintRequested.exchange(true)) return;
    try {
        PostToUi([hWnd = GetHandle()] {
            if (NativeWindow* pNative = NativeWindow::Find(hWnd)) pNative->MarkStale();
        });
    } catch (...) {
        m_bPaintRequested = false;
        throw;
    }
}

void CWnd::DragAcceptFiles(bool bAccept) {
    if (m_pNative) m_pNative->m_widget.setAcceptDrops(bAccept);
}

CRect CWnd::GetClientRect() const {
    if (!m_pNative) return {};
    return {0, 0, m_pNative->m_widget.width(), m_pNative->m_widget.height()};
}

CRect CWnd::GetWindowRect() const {
    CRect rect = GetClientRect();
    if (!m_pNative) return rect;
    const QPoint origin = m_pNative->m_widget.mapToGlobal(QPoint());
    rect.OffsetRect(origin.x(), origin.y());
    return rect;
}

void CWnd::ScreenToClient(CRect& rect) const {
    if (!m_pNative) return;
    const QPoint origin = m_pNative->m_widget.mapToGlobal(QPoint());
    rect.OffsetRect(-origin.x(), -origin.y());
}

void CWnd::SetWindowPosition(CPoint position) {
    if (m_pNative) m_pNative->Outermost().move(position.x, position.y);
}

void CWnd::SetTopMost() {
    if (!m_pNative) return;
    QWidget& widget = m_pNative->Outermost();
    const bool bVisible = widget.isVisible();
    widget.setWindowFlag(Qt::WindowStaysOnTopHint);
    if (bVisible) widget.show();
}

CWnd* CWnd::GetParent() const {
    NativeWindow* pParent = m_pNative ? m_pNative->Parent() : nullptr;
    return pParent ? pParent->m_pOwner : nullptr;
}

CWnd* CWnd::GetControl(int nID) const {
    NativeWindow* pChild = m_pNative ? m_pNative->Child(nID) : nullptr;
    return pChild ? pChild->m_pOwner : nullptr;
}

void CWnd::SetControlText(int nID, const std::wstring& strText) {
    if (CWnd* pControl = GetControl(nID)) pControl->SetWindowText(strText);
}

bool CWnd::AttachControl(int nID, CWnd* pParent) {
    NativeWindow* pChild = pParent && pParent->m_pNative ? pParent->m_pNative->Child(nID) : nullptr;
    if (!pChild) return false;
    pChild->Attach(this);
    return true;
}

void CWnd::DestroyWindow() {
    if (!m_pNative) return;
    NativeWindow* pNative = m_pNative;
    const QPointer<QWidget> pWidget = &pNative->Outermost();
    pNative->Dispatch(WM_DESTROY, 0, 0);
    if (!pWidget) return;
    pNative->Retire();
    try {
        pWidget->hide();
        // The widget may be in the middle of an event of its own: it goes when that is over.
        pWidget->deleteLater();
    } catch (const std::bad_alloc&) {
        // Nobody's window any more: it goes with its parent.
    }
}

LRESULT CWnd::WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) {
    const UINT nCode = nMessage == WM_COMMAND ? static_cast<UINT>(wParam >> 16) & 0xFFFFu : 0;
    const UINT nID = nMessage == WM_COMMAND ? static_cast<UINT>(wParam) & 0xFFFFu : 0;
    for (const MessageMap* pMap = GetMessageMap(); pMap; pMap = pMap->m_pBaseMap)
        for (const MessageMapEntry& entry : pMap->m_entries)
            if (entry.m_nMessage == nMessage && entry.m_nCode == nCode && entry.m_nID == nID)
                return entry.m_pInvoke(*this, wParam, lParam);
    return DefWindowProc(nMessage, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT nMessage, WPARAM wParam, LPARAM) {
    LRESULT nResult = 0;
    if (m_pNative && m_pNative->RunDefault(nMessage, &nResult)) return nResult;
    switch (nMessage) {
    case WM_ERASEBKGND:
        reinterpret_cast<CDC*>(wParam)->FillSolidRect(GetClientRect(), BUTTON_FACE);
        return 1;
    case WM_CLOSE:
        DestroyWindow();
        return 0;
    default:
        return 0;
    }
}

LRESULT CWnd::Default() {
    const auto* pHandling = m_pNative ? m_pNative->m_pHandling : nullptr;
    return pHandling
               ? DefWindowProc(pHandling->m_nMessage, pHandling->m_wParam, pHandling->m_lParam)
               : 0;
}

const MessageMap* CWnd::GetThisMessageMap() {
    static const MessageMap map{nullptr, {}};
    return &map;
}

const MessageMap* CWnd::GetMessageMap() const { return GetThisMessageMap(); }
