#include "platform/windows/PaintDC.h"

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/qt/NativeWindow.h"

namespace {

/// The picture that a control keeps of what was drawn on it last. It may be a null image (nothing
/// was drawn yet); null: the control has no window.
QImage* KeptPicture(const CWnd* pWnd) {
    NativeWindow* pNative = pWnd ? NativeWindow::Of(*pWnd) : nullptr;
    return pNative ? &pNative->m_picture : nullptr;
}

QImage* FittedPicture(const CWnd* pWnd) {
    QImage* pPicture = KeptPicture(pWnd);
    if (!pPicture) return nullptr;
    const QSize size = NativeWindow::Of(*pWnd)->m_widget.size();
    if (pPicture->size() != size) *pPicture = QImage(size, QImage::Format_RGB32);
    return pPicture;
}

}  // namespace

CPaintDC::CPaintDC(CWnd* pWnd) : CDC(std::make_unique<GraphicsSurface>(FittedPicture(pWnd))) {}

CClientDC::CClientDC(CWnd* pWnd)
    : CDC(std::make_unique<GraphicsSurface>(KeptPicture(pWnd))),
      m_hWnd(pWnd ? pWnd->GetHandle() : 0) {}

CClientDC::~CClientDC() {
    if (NativeWindow* pNative = NativeWindow::Find(m_hWnd)) pNative->m_widget.update();
}
