#include "platform/windows/PaintDC.h"

#include <exception>

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/qt/NativeWindow.h"

namespace {

/// The picture that a control keeps. It may be a null image (nothing was drawn yet); null: the
/// control has no window.
QImage* KeptPicture(const CWnd* pWnd) {
    NativeWindow* pNative = pWnd ? NativeWindow::Of(*pWnd) : nullptr;
    return pNative ? &pNative->m_picture : nullptr;
}

}  // namespace

CWindowDC::CWindowDC(CWnd* pWnd, bool bPaint)
    : CDC(std::make_unique<GraphicsSurface>(KeptPicture(pWnd))),
      m_hWnd(pWnd ? pWnd->GetHandle() : 0), m_bPaint(bPaint),
      m_nExceptions(std::uncaught_exceptions()) {
    NativeWindow* pNative = NativeWindow::Find(m_hWnd);
    if (!pNative) return;
    const QSize size = pNative->m_widget.size();
    m_bKept = pNative->m_bPictureWhole && pNative->m_picture.size() == size;
    if (!bPaint) return;
    pNative->m_bPictureWhole = false;
    if (pNative->m_picture.size() != size) pNative->m_picture = QImage(size, QImage::Format_RGB32);
}

CWindowDC::~CWindowDC() {
    NativeWindow* pNative = NativeWindow::Find(m_hWnd);
    if (!pNative) return;
    const bool bWhole = std::uncaught_exceptions() == m_nExceptions;
    QRect changed = pNative->m_widget.rect();
    if (m_changed && m_bKept && bWhole)
        changed &= QRect(m_changed->left, m_changed->top, m_changed->Width(), m_changed->Height());
    if (!changed.isEmpty()) pNative->m_changed |= changed;
    if (m_bPaint)
        pNative->m_bPictureWhole = bWhole;
    else
        pNative->RequestRefresh();
}
