// Scripts beside a modal run, and how they wait.
#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <stdexcept>
#include <thread>

#include "platform/operator/Operator.h"
#include "platform/system/Text.h"
#include "platform/system/Threads.h"
#include "platform/windows/Dialog.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/FileDialog.h"
#include "platform/windows/qt/UiQueue.h"
#include "platform/windows/qt/Widgets.h"

namespace Operator {

namespace {

/// The title and the texts of the front modal window, in UTF-8.
std::string DescribeFront() { return ToUtf8(ModalTitle() + L": " + ModalText()); }

/// How long windows may take to close after a script has ended.
constexpr unsigned CLOSING_PATIENCE = 10000;

/// Closes the front modal window. On the user-interface thread.
/// @return whether there was none
bool CloseFront() {
    QWidget* pModal = QApplication::activeModalWidget();
    NativeWindow* pNative = NativeWindow::Of(pModal);
    if (auto* pDialog = dynamic_cast<CDialog*>(pNative ? pNative->m_pOwner : nullptr))
        pDialog->EndDialog(IDCANCEL);
    else if (auto* pStandard = qobject_cast<QDialog*>(pModal))
        pStandard->reject();
    return !pModal;
}

/// Nobody else would close what a script has left open.
void CloseWhatIsLeft(std::exception_ptr& pException) {
    const auto isNone = [] { return !QApplication::activeModalWidget(); };
    if (WaitUntil(isNone, pException ? 0 : CLOSING_PATIENCE)) return;
    const std::runtime_error error("the script has left a window open: " + DescribeFront());
    if (!pException) pException = std::make_exception_ptr(error);
    if (!WaitUntil(CloseFront, CLOSING_PATIENCE)) throw error;
}

}  // namespace

struct CScript::State {
    std::thread m_thread;
    QEventLoop m_loop;
    std::atomic<bool> m_bEnded{false};
    std::exception_ptr m_pException;
};

CScript::CScript(std::function<void()> script) : m_pState(std::make_unique<State>()) {
    CFileDialog::SetKind(DisplayKind::Panel);
    m_pState->m_thread = std::thread([pState = m_pState.get(), script = std::move(script)] {
        try {
            script();
        } catch (...) {
            pState->m_pException = std::current_exception();
        }
        // A window that cannot be closed, and a user-interface thread that does not answer, would
        // keep the caller for ever: what is thrown here ends the program.
        CloseWhatIsLeft(pState->m_pException);
        pState->m_bEnded = true;
        PostToUi([pState] { pState->m_loop.quit(); });
    });
}

CScript::~CScript() {
    if (!m_pState->m_bEnded) m_pState->m_loop.exec();
    m_pState->m_thread.join();
    CFileDialog::SetKind(std::nullopt);
    // The call that ends the loop may still be queued, and refers to the state.
    QCoreApplication::processEvents();
}

void CScript::Join() {
    while (!m_pState->m_bEnded) m_pState->m_loop.exec();
    if (m_pState->m_pException)
        std::rethrow_exception(std::exchange(m_pState->m_pException, nullptr));
}

bool WaitUntil(const std::function<bool()>& condition, unsigned nMilliseconds) {
    const std::uint64_t nEnd = TickMilliseconds() + nMilliseconds;
    for (;;) {
        bool bHolds = false;
        Ask([&] { bHolds = condition(); });
        if (bHolds) return true;
        if (TickMilliseconds() >= nEnd) return false;
        Wait(5);
    }
}

void WaitFor(const std::string& strWhat, const std::function<bool()>& condition,
             unsigned nMilliseconds) {
    if (WaitUntil(condition, nMilliseconds)) return;
    throw std::runtime_error("waited " + std::to_string(nMilliseconds) + " ms in vain for " +
                             strWhat + "; in front: " + DescribeFront());
}

void Wait(unsigned nMilliseconds) {
    if (!IsUiThread()) {
        SleepMilliseconds(nMilliseconds);
        return;
    }
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(nMilliseconds), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void After(unsigned nMilliseconds, std::function<void()> call) {
    PostToUi([nMilliseconds, call = std::move(call)] {
        QTimer::singleShot(static_cast<int>(nMilliseconds), Qt::PreciseTimer, qApp, [call] {
            try {
                call();
            } catch (...) {
                ReportCurrentException();
            }
        });
    });
}

}  // namespace Operator
