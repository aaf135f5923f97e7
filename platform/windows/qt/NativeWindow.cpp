#include "platform/windows/qt/NativeWindow.h"

#include <QPainter>
#include <unordered_map>

#include "platform/windows/ErrorBox.h"

namespace {

/// The process-wide window table. Only the user-interface thread touches it; other threads hold
/// handles, which the calls that they queue resolve there.
std::unordered_map<WindowHandle, NativeWindow*>& WindowTable() {
    static std::unordered_map<WindowHandle, NativeWindow*> table;
    return table;
}

WindowHandle NextHandle() {
    static WindowHandle hLast = 0;
    return ++hLast;
}

/// The same windows by their widgets.
std::unordered_map<const QWidget*, NativeWindow*>& WidgetTable() {
    static std::unordered_map<const QWidget*, NativeWindow*> table;
    return table;
}

}  // namespace

NativeWindow::NativeWindow(QWidget& nativeWidget, int nControlID, CWnd* pNewOwner,
                           std::unique_ptr<CWnd> pNewStandIn)
    : widget(nativeWidget), hWnd(NextHandle()), nID(nControlID), pOwner(nullptr),
      m_pStandIn(std::move(pNewStandIn)) {
    WindowTable()[hWnd] = this;
    WidgetTable()[&widget] = this;
    Attach(pNewOwner ? pNewOwner : m_pStandIn.get());
}

NativeWindow::~NativeWindow() {
    WidgetTable().erase(&widget);
    WindowTable().erase(hWnd);
    Attach(nullptr);
}

void NativeWindow::Retire() {
    for (QObject* pChild : widget.children())
        if (NativeWindow* pNative = Of(qobject_cast<QWidget*>(pChild))) pNative->Retire();
    WidgetTable().erase(&widget);
    WindowTable().erase(hWnd);
    Attach(nullptr);
}

NativeWindow* NativeWindow::Find(WindowHandle hWnd) {
    const auto found = WindowTable().find(hWnd);
    return found == WindowTable().end() ? nullptr : found->second;
}

NativeWindow* NativeWindow::Of(const QWidget* pWidget) {
    const auto found = WidgetTable().find(pWidget);
    return found == WidgetTable().end() ? nullptr : found->second;
}

void NativeWindow::Attach(CWnd* pNewOwner) {
    if (pOwner) {
        pOwner->m_hWnd.store(0, std::memory_order_release);
        pOwner->m_pNative = nullptr;
    }
    pOwner = pNewOwner;
    if (pOwner) {
        pOwner->m_pNative = this;
        pOwner->m_bPaintRequested = false;
        pOwner->m_hWnd.store(hWnd, std::memory_order_release);
    }
}

LRESULT NativeWindow::Dispatch(UINT nMessage, WPARAM wParam, LPARAM lParam,
                               const std::function<LRESULT()>& runDefault) {
    if (!pOwner) return runDefault ? runDefault() : 0;

    const WindowHandle hSelf = hWnd;
    Handling handling{nMessage, &runDefault, wParam, lParam, m_pHandling};
    m_pHandling = &handling;
    LRESULT nResult = 0;
    try {
        nResult = pOwner->WindowProc(nMessage, wParam, lParam);
    } catch (...) {
        ReportCurrentException();
    }
    if (Find(hSelf)) m_pHandling = handling.pOuter;
    return nResult;
}

bool NativeWindow::RunDefault(UINT nMessage, LRESULT* pResult) {
    if (!m_pHandling || m_pHandling->nMessage != nMessage || !*m_pHandling->pRunDefault)
        return false;
    *pResult = (*m_pHandling->pRunDefault)();
    return true;
}

void NativeWindow::Notify(UINT nCode) {
    if (NativeWindow* pParent = Parent())
        pParent->Dispatch(WM_COMMAND, CommandParam(static_cast<UINT>(nID), nCode),
                          static_cast<LPARAM>(hWnd));
}

void NativeWindow::MarkStale() {
    bStale = true;
    widget.update();
}

void NativeWindow::PaintWidget(const std::function<void()>& paintDefault) {
    bool bDefault = false;
    if (bStale || picture.isNull()) {
        bStale = false;
        Dispatch(WM_PAINT, 0, 0, [&] {
            bDefault = true;
            picture = QImage();
            paintDefault();
            bStale = true;
            return 0;
        });
    }
    const bool bOwnPicture = !bDefault && !picture.isNull();
    // A picture covers what is below it, which then need not be painted.
    widget.setAttribute(Qt::WA_OpaquePaintEvent, bOwnPicture);
    if (bOwnPicture) QPainter(&widget).drawImage(0, 0, picture);
}

NativeWindow* NativeWindow::Parent() const { return Of(widget.parentWidget()); }

NativeWindow* NativeWindow::Child(int nControlID) const {
    for (QObject* pChild : widget.children()) {
        NativeWindow* pNative = Of(qobject_cast<QWidget*>(pChild));
        if (pNative && pNative->nID == nControlID) return pNative;
    }
    return nullptr;
}
