#include "platform/windows/qt/UiQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <algorithm>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/windows/qt/NativeWindow.h"

namespace {

class Waker : public QObject {
  protected:
    void customEvent(QEvent*) override;
};

struct UiCall {
    std::function<void()> m_call;
    WindowHandle m_hWnd;
};

/// The queue is ours, not the event loop's, so that what the caller wrote before is visible to the
/// call by way of an ordinary mutex; an event only says that there is something to take.
struct UiQueue {
    std::mutex m_mutex;
    std::deque<UiCall> m_calls;
    std::unique_ptr<Waker> m_pWaker;
    std::thread::id m_uiThread;
};

UiQueue& Queue() {
    static UiQueue queue;
    return queue;
}

void Waker::customEvent(QEvent*) {
    std::function<void()> call;
    {
        const std::lock_guard lock(Queue().m_mutex);
        if (Queue().m_calls.empty()) return;
        call = std::move(Queue().m_calls.front().m_call);
        Queue().m_calls.pop_front();
    }
    call();
}

}  // namespace

void OpenUiQueue() {
    const std::lock_guard lock(Queue().m_mutex);
    Queue().m_uiThread = std::this_thread::get_id();
    Queue().m_pWaker = std::make_unique<Waker>();
}

void CloseUiQueue() {
    std::deque<UiCall> dropped;
    std::unique_ptr<Waker> pWaker;
    const std::lock_guard lock(Queue().m_mutex);
    dropped.swap(Queue().m_calls);
    pWaker.swap(Queue().m_pWaker);
}

bool IsUiThread() {
    const std::lock_guard lock(Queue().m_mutex);
    return std::this_thread::get_id() == Queue().m_uiThread;
}

void PostToUi(std::function<void()> call, WindowHandle hWnd) {
    const std::lock_guard lock(Queue().m_mutex);
    if (!Queue().m_pWaker) return;
    Queue().m_calls.push_back({std::move(call), hWnd});
    try {
        QCoreApplication::postEvent(Queue().m_pWaker.get(), new QEvent(QEvent::User));
    } catch (...) {
        Queue().m_calls.pop_back();  // a call without its event would be made in place of the next
        throw;
    }
}

void DropCallsOfGoneWindows() {
    for (;;) {
        std::function<void()> dropped;
        const std::lock_guard lock(Queue().m_mutex);
        auto& calls = Queue().m_calls;
        const auto gone = std::ranges::find_if(calls, [](const UiCall& call) {
            return call.m_hWnd != 0 && !NativeWindow::Find(call.m_hWnd);
        });
        if (gone == calls.end()) return;
        dropped = std::move(gone->m_call);
        calls.erase(gone);
    }
}
