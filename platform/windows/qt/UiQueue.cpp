#include "platform/windows/qt/UiQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace {

class Waker : public QObject {
  protected:
    void customEvent(QEvent*) override;
};

/// The queue is ours, not the event loop's, so that what the caller wrote before is visible to the
/// call by way of an ordinary mutex; an event only says that there is something to take.
struct UiQueue {
    std::mutex mutex;
    std::deque<std::function<void()>> calls;
    std::unique_ptr<Waker> pWaker;
    std::thread::id uiThread;
};

UiQueue& Queue() {
    static UiQueue queue;
    return queue;
}

void Waker::customEvent(QEvent*) {
    std::function<void()> call;
    {
        const std::lock_guard lock(Queue().mutex);
        if (Queue().calls.empty()) return;
        call = std::move(Queue().calls.front());
        Queue().calls.pop_front();
    }
    call();
}

}  // namespace

void OpenUiQueue() {
    const std::lock_guard lock(Queue().mutex);
    Queue().uiThread = std::this_thread::get_id();
    Queue().pWaker = std::make_unique<Waker>();
}

void CloseUiQueue() {
    std::deque<std::function<void()>> dropped;
    std::unique_ptr<Waker> pWaker;
    const std::lock_guard lock(Queue().mutex);
    dropped.swap(Queue().calls);
    pWaker.swap(Queue().pWaker);
}

bool IsUiThread() {
    const std::lock_guard lock(Queue().mutex);
    return std::this_thread::get_id() == Queue().uiThread;
}

void PostToUi(std::function<void()> call) {
    const std::lock_guard lock(Queue().mutex);
    if (!Queue().pWaker) return;
    Queue().calls.push_back(std::move(call));
    QCoreApplication::postEvent(Queue().pWaker.get(), new QEvent(QEvent::User));
}
