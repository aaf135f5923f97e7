#include "platform/operator/PaintWatch.h"

#include <QEvent>

#include "platform/windows/qt/NativeWindow.h"

class CPaintWatch::Filter : public QObject {
  public:
    Filter(std::function<void()> begun, std::function<void()> done)
        : m_begun(std::move(begun)), m_done(std::move(done)) {}

    bool eventFilter(QObject*, QEvent* pEvent) override {
        if (pEvent->type() == PICTURE_BEGUN) m_begun();
        if (pEvent->type() == PICTURE_DONE) m_done();
        return false;
    }

  private:
    std::function<void()> m_begun;
    std::function<void()> m_done;
};

CPaintWatch::CPaintWatch(const CWnd& wnd, std::function<void()> begun, std::function<void()> done)
    : m_pFilter(std::make_unique<Filter>(std::move(begun), std::move(done))) {
    if (NativeWindow* pNative = NativeWindow::Of(wnd))
        pNative->m_widget.installEventFilter(m_pFilter.get());
}

CPaintWatch::~CPaintWatch() = default;
