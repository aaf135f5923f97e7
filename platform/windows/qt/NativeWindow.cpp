#include "platform/windows/qt/NativeWindow.h"

#include <QCoreApplication>
#include <QPainter>
#include <QWindow>
#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/windows/ErrorBox.h"

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::microseconds REFRESH_TIME{1'000'000 / 60 + 1};

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
    : m_widget(nativeWidget), m_hWnd(NextHandle()), m_nID(nControlID), m_pOwner(nullptr),
      m_pStandIn(std::move(pNewStandIn)) {
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_refreshTimer, &QTimer::timeout, [this] { Refresh(); });
    // Once started, it needs no memory of its own again: a start that fails leaves nothing behind.
    m_refreshTimer.start(0);
    m_refreshTimer.stop();
    WindowTable()[m_hWnd] = this;
    WidgetTable()[&m_widget] = this;
    Attach(pNewOwner ? pNewOwner : m_pStandIn.get());
}

NativeWindow::~NativeWindow() {
    WidgetTable().erase(&m_widget);
    WidgetTable().erase(m_pFrame);
    WindowTable().erase(m_hWnd);
    Attach(nullptr);
}

void NativeWindow::SetFrame(QWidget& frame) {
    m_pFrame = &frame;
    WidgetTable()[m_pFrame] = this;
}

void NativeWindow::Retire() {
    const auto retireIn = [this](const QWidget& holder) {
        for (QObject* pChild : holder.children()) {
            NativeWindow* pNative = Of(qobject_cast<QWidget*>(pChild));
            if (pNative && pNative != this) pNative->Retire();
        }
    };
    retireIn(m_widget);
    if (m_pFrame) retireIn(*m_pFrame);
    WidgetTable().erase(&m_widget);
    WidgetTable().erase(m_pFrame);
    WindowTable().erase(m_hWnd);
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
    if (m_pOwner) {
        m_pOwner->m_hWnd.store(0, std::memory_order_release);
        m_pOwner->m_pNative = nullptr;
    }
    m_pOwner = pNewOwner;
    m_bPictureWhole = false;  // it is another's
    if (m_pOwner) {
        m_pOwner->m_pNative = this;
        m_pOwner->m_hWnd.store(m_hWnd, std::memory_order_release);
        m_pOwner->m_bPaintRequested = false;  // a request from now on finds the new handle
    }
}

LRESULT NativeWindow::Dispatch(UINT nMessage, WPARAM wParam, LPARAM lParam,
                               const std::function<LRESULT()>& runDefault) {
    if (!m_pOwner) return runDefault ? runDefault() : 0;

    const WindowHandle hSelf = m_hWnd;
    Handling handling{nMessage, &runDefault, wParam, lParam, m_pHandling};
    m_pHandling = &handling;
    LRESULT nResult = 0;
    try {
        nResult = m_pOwner->WindowProc(nMessage, wParam, lParam);
    } catch (...) {
        if (nMessage == WM_PAINT || nMessage == WM_ERASEBKGND)
            ReportCurrentExceptionLater();
        else
            ReportCurrentException();
    }
    if (Find(hSelf)) m_pHandling = handling.m_pOuter;
    return nResult;
}

bool NativeWindow::RunDefault(UINT nMessage, LRESULT* pResult) {
    if (!m_pHandling || m_pHandling->m_nMessage != nMessage || !*m_pHandling->m_pRunDefault)
        return false;
    *pResult = (*m_pHandling->m_pRunDefault)();
    return true;
}

void NativeWindow::Notify(UINT nCode) {
    if (NativeWindow* pParent = Parent())
        pParent->Dispatch(WM_COMMAND, CommandParam(static_cast<UINT>(m_nID), nCode),
                          static_cast<LPARAM>(m_hWnd));
}

void NativeWindow::MarkStale() {
    m_bStale = true;
    if (m_bOwnerDraws && IsShown())
        RequestRefresh();
    else
        WaitForPaintEvent();
}

bool NativeWindow::IsShown() const {
    const QWindow* pWindow = m_widget.window()->windowHandle();
    return m_widget.isVisible() && pWindow && pWindow->isExposed();
}

void NativeWindow::WaitForPaintEvent() {
    if (m_pOwner) m_pOwner->m_bPaintRequested = false;
    m_widget.update();
}

void NativeWindow::RequestRefresh() noexcept {
    if (m_refreshTimer.isActive()) return;
    using std::chrono::milliseconds;
    const auto wait = std::chrono::ceil<milliseconds>(m_nextRefresh - steady_clock::now());
    try {
        m_refreshTimer.start(std::max(wait, milliseconds(0)));
    } catch (const std::bad_alloc&) {
        // The next request tries again.
        if (m_pOwner) m_pOwner->m_bPaintRequested = false;
    }
}

void NativeWindow::Refresh() {
    if (!m_pOwner) return;
    if (!IsShown()) {
        WaitForPaintEvent();
        return;
    }
    if (m_bStale) Draw([this] { m_widget.update(); });
    // At once: a paint event that came later could find the picture stale and draw it a second
    // time.
    m_widget.repaint(std::exchange(m_changed, QRect()));
}

void NativeWindow::Draw(const std::function<void()>& paintDefault) {
    m_nextRefresh = steady_clock::now() + REFRESH_TIME;
    m_bStale = false;
    // Before the drawing: a request that comes during it may be of what it has not seen. And by an
    // exchange: what was written before a request that was dropped must be seen.
    if (m_pOwner) m_pOwner->m_bPaintRequested.exchange(false);
    QEvent begun(PICTURE_BEGUN);
    QCoreApplication::sendEvent(&m_widget, &begun);
    bool bDefault = false;
    Dispatch(WM_PAINT, 0, 0, [&] {
        bDefault = true;
        m_picture = QImage();
        m_bStale = true;
        paintDefault();
        return 0;
    });
    m_bOwnerDraws = !bDefault && !m_picture.isNull();
    // A picture covers what is below it, which then need not be painted.
    m_widget.setAttribute(Qt::WA_OpaquePaintEvent, m_bOwnerDraws);
    QEvent done(PICTURE_DONE);
    QCoreApplication::sendEvent(&m_widget, &done);
}

void NativeWindow::PaintWidget(const QRegion& region, const std::function<void()>& paintDefault) {
    if (m_bStale || m_picture.size() != m_widget.size()) {
        Draw(paintDefault);
        // A refresh that is due shows all of it: the window may get nothing of this paint, which
        // can be one into a picture of the window.
        if (!m_refreshTimer.isActive())
            m_widget.update(QRegion(std::exchange(m_changed, QRect())) - region);
    }
    // The painter is clipped to the region.
    if (m_bOwnerDraws) QPainter(&m_widget).drawImage(0, 0, m_picture);
}

NativeWindow* NativeWindow::Parent() const { return Of(Outermost().parentWidget()); }

NativeWindow* NativeWindow::Child(int nControlID) const {
    for (QObject* pChild : m_widget.children()) {
        NativeWindow* pNative = Of(qobject_cast<QWidget*>(pChild));
        if (pNative && pNative->m_nID == nControlID) return pNative;
    }
    return nullptr;
}
