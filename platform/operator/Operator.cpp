#include "platform/operator/Operator.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QListWidget>
#include <QMimeData>
#include <QThreadPool>
#include <QUrl>
#include <QtTest/QTest>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>

#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "platform/windows/FingerFileDialog.h"
#include "platform/windows/qt/UiQueue.h"
#include "platform/windows/qt/Widgets.h"

namespace {

using namespace std::chrono_literals;

/// A sign from the user-interface thread to a waiting script.
class Signal {
  public:
    void Give() {
        const std::lock_guard lock(m_mutex);
        m_bGiven = true;
        m_changed.notify_all();
    }
    void Await() {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, 60s, [this] { return m_bGiven; }))
            throw std::runtime_error("the user-interface thread does not answer");
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_bGiven = false;
};

/// Gives the signal once the calls that are queued now, and those that they queue, have been made.
void SignalWhenIdle(const std::shared_ptr<Signal>& pSignal, int nRounds) {
    PostToUi([=] {
        if (nRounds == 0)
            pSignal->Give();
        else
            SignalWhenIdle(pSignal, nRounds - 1);
    });
}

/// Does something on the user-interface thread and waits until that thread waits for events again.
void Perform(std::function<void()> action) {
    if (IsUiThread()) {
        action();
        QCoreApplication::processEvents();
        return;
    }
    PostToUi(std::move(action));
    const auto pSignal = std::make_shared<Signal>();
    SignalWhenIdle(pSignal, 3);
    pSignal->Await();
}

/// The widget at a window's point, its top-level window, and the point there.
struct Target {
    QWindow* m_pWindow = nullptr;
    QPoint m_position;
};

Target FindTarget(QWidget& widget, QPoint point) {
    QWidget* pTop = widget.window();
    return {pTop->windowHandle(), widget.mapTo(pTop, point)};
}

Target FindTarget(WindowHandle hWnd, CPoint point) {
    NativeWindow* pNative = NativeWindow::Find(hWnd);
    return pNative ? FindTarget(pNative->m_widget, QPoint(point.x, point.y)) : Target();
}

using MouseFunction = void (*)(QWindow*, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int);

void SendMouse(MouseFunction send, const Target& target, Qt::MouseButton button) {
    if (target.m_pWindow) send(target.m_pWindow, button, {}, target.m_position, -1);
}

void SendMove(const Target& target) {
    if (target.m_pWindow) QTest::mouseMove(target.m_pWindow, target.m_position);
}

/// Whether a finger reaches the widget.
bool IsReachable(const QWidget& widget) {
    const QWidget* pModal = QApplication::activeModalWidget();
    return widget.isVisible() && widget.isEnabled() &&
           (!pModal || pModal == widget.window() || pModal->isAncestorOf(widget.window()));
}

bool TapWidget(const std::function<QWidget*()>& find) {
    bool bReachable = false;
    Operator::Ask([&] {
        QWidget* pWidget = find();
        bReachable = pWidget && IsReachable(*pWidget);
    });
    if (!bReachable) return false;
    const auto target = [find] {
        QWidget* pWidget = find();
        return pWidget ? FindTarget(*pWidget, pWidget->rect().center()) : Target();
    };
    Perform([target] { SendMouse(QTest::mousePress, target(), Qt::LeftButton); });
    Perform([target] { SendMouse(QTest::mouseRelease, target(), Qt::LeftButton); });
    return true;
}

std::function<QWidget*()> WidgetFinder(WindowHandle hWnd) {
    return [hWnd]() -> QWidget* {
        NativeWindow* pNative = NativeWindow::Find(hWnd);
        return pNative ? &pNative->m_widget : nullptr;
    };
}

/// The window that has the keyboard. A modal window that has just come up may not have got it from
/// the window system yet; keys are meant for it all the same.
QWindow* FindKeyWindow() {
    QWindow* pFocus = QGuiApplication::focusWindow();
    const QWidget* pModal = QApplication::activeModalWidget();
    QWindow* pFront = pModal ? pModal->windowHandle() : nullptr;
    return pFront && !(pFocus && pFront->isAncestorOf(pFocus)) ? pFront : pFocus;
}

void SendKey(Qt::Key key, const QString& text) {
    if (QWindow* pWindow = FindKeyWindow())
        QTest::sendKeyEvent(QTest::Click, pWindow, key, text, Qt::NoModifier);
}

bool SelectRow(const std::function<QWidget*()>& findList, const QString& text) {
    // A release that comes too soon after the press that opened a drop-down list is taken for the
    // end of that press; how soon goes by the double-click interval.
    constexpr int SHORT_INTERVAL_MS = 150;
    const int nInterval = QApplication::doubleClickInterval();
    bool bFound = false;
    Operator::Ask([&] {
        QWidget* pList = findList();
        if (!pList || !IsReachable(*pList)) return;
        if (auto* pCombo = qobject_cast<QComboBox*>(pList)) {
            bFound = pCombo->findText(text) >= 0;
            QApplication::setDoubleClickInterval(SHORT_INTERVAL_MS);
        } else if (auto* pListWidget = qobject_cast<QListWidget*>(pList)) {
            const auto found = pListWidget->findItems(text, Qt::MatchExactly);
            bFound = !found.isEmpty();
            if (bFound) pListWidget->scrollToItem(found.front());
        }
    });
    if (!bFound) return false;

    bool bCombo = false;
    Operator::Ask([&] { bCombo = qobject_cast<QComboBox*>(findList()) != nullptr; });
    if (bCombo) {
        TapWidget(findList);
        Operator::Wait(SHORT_INTERVAL_MS + 20);
    }
    const auto target = [findList, text]() -> Target {
        QWidget* pList = findList();
        QAbstractItemView* pView = qobject_cast<QListWidget*>(pList);
        int nRow = -1;
        if (auto* pCombo = qobject_cast<QComboBox*>(pList)) {
            pView = pCombo->view();
            nRow = pCombo->findText(text);
        } else if (auto* pListWidget = qobject_cast<QListWidget*>(pList)) {
            nRow = pListWidget->row(pListWidget->findItems(text, Qt::MatchExactly).value(0));
        }
        if (!pView || nRow < 0) return {};
        const QModelIndex index = pView->model()->index(nRow, 0);
        return FindTarget(*pView->viewport(), pView->visualRect(index).center());
    };
    if (bCombo) Perform([target] { SendMove(target()); });
    Perform([target] { SendMouse(QTest::mousePress, target(), Qt::LeftButton); });
    Perform([target] { SendMouse(QTest::mouseRelease, target(), Qt::LeftButton); });
    Operator::Ask([nInterval] { QApplication::setDoubleClickInterval(nInterval); });
    return true;
}

/// Whether a drop-down list shows the row; of one that does not, the rows are put away.
bool ShowsRow(const std::function<QWidget*()>& findList, const QString& text) {
    bool bShown = true;
    Operator::Ask([&] {
        auto* pCombo = qobject_cast<QComboBox*>(findList());
        bShown = !pCombo || pCombo->currentText() == text;
        if (!bShown) pCombo->hidePopup();
    });
    return bShown;
}

/// Taps through folders until a file dialog shows one.
void GoToFolder(const CFingerFileDialog& dialog, const std::wstring& strTarget) {
    const CWnd* pRows = nullptr;
    std::wstring strFolder;
    const auto look = [&] {
        pRows = dialog.GetControl(CFingerFileDialog::ID_ROWS);
        strFolder = dialog.GetFolder();
    };
    for (Operator::Ask(look); strFolder != strTarget; Operator::Ask(look)) {
        const std::wstring strBefore = strFolder;
        const std::wstring strInside = JoinPath(strFolder, L"");
        if (strTarget.starts_with(strInside)) {
            std::wstring strNext = strTarget.substr(strInside.size());
            Operator::Select(*pRows, strNext.substr(0, strNext.find(L'/')));
        } else {
            Operator::Tap(dialog, CFingerFileDialog::ID_FOLDER_UP);
        }
        Operator::WaitFor("a folder on the way to " + ToUtf8(strTarget), [&] {
            look();
            return strFolder != strBefore;
        });
    }
}

}  // namespace

namespace Operator {

void Ask(const std::function<void()>& question) {
    if (IsUiThread()) {
        question();
        return;
    }
    const auto pSignal = std::make_shared<Signal>();
    PostToUi([&question, pSignal] {
        question();
        pSignal->Give();
    });
    pSignal->Await();
}

void Press(const CWnd& wnd, CPoint point) {
    Perform([hWnd = wnd.GetHandle(), point] {
        SendMouse(QTest::mousePress, FindTarget(hWnd, point), Qt::LeftButton);
    });
}

void MoveTo(const CWnd& wnd, CPoint point) {
    Perform([hWnd = wnd.GetHandle(), point] { SendMove(FindTarget(hWnd, point)); });
}

void Release(const CWnd& wnd, CPoint point) {
    Perform([hWnd = wnd.GetHandle(), point] {
        SendMouse(QTest::mouseRelease, FindTarget(hWnd, point), Qt::LeftButton);
    });
}

void RightClick(const CWnd& wnd, CPoint point) {
    Perform([hWnd = wnd.GetHandle(), point] {
        SendMouse(QTest::mouseClick, FindTarget(hWnd, point), Qt::RightButton);
    });
}

bool Tap(const CWnd& wnd) { return TapWidget(WidgetFinder(wnd.GetHandle())); }

bool Tap(const CWnd& dialog, int nID) {
    return TapWidget([hWnd = dialog.GetHandle(), nID]() -> QWidget* {
        NativeWindow* pNative = NativeWindow::Find(hWnd);
        NativeWindow* pControl = pNative ? pNative->Child(nID) : nullptr;
        return pControl ? &pControl->m_widget : nullptr;
    });
}

bool Select(const CWnd& list, const std::wstring& strText) {
    const auto findList = WidgetFinder(list.GetHandle());
    const QString text = QString::fromStdWString(strText);
    // On a busy machine the rows may come up too late for the tap on one of them.
    for (int nTries = 3; nTries > 0; --nTries) {
        if (!SelectRow(findList, text)) return false;
        if (ShowsRow(findList, text)) return true;
    }
    return false;
}

void Type(const std::wstring& strText) {
    for (const QChar ch : QString::fromStdWString(strText)) {
        const Qt::Key key = ch.unicode() < 128 ? QTest::asciiToKey(ch.toLatin1()) : Qt::Key_unknown;
        Perform([key, ch] { SendKey(key, QString(ch)); });
    }
}

void PressKey(Key key) {
    static const struct {
        Key m_key;
        Qt::Key m_code;
        const char* m_pText;
    } keys[] = {
        {Key::Enter, Qt::Key_Return, "\r"}, {Key::Escape, Qt::Key_Escape, "\x1b"},
        {Key::Tab, Qt::Key_Tab, "\t"},      {Key::Backspace, Qt::Key_Backspace, "\b"},
        {Key::Space, Qt::Key_Space, " "},   {Key::Up, Qt::Key_Up, ""},
        {Key::Down, Qt::Key_Down, ""},
    };
    for (const auto& entry : keys)
        if (entry.m_key == key)
            Perform([&entry] { SendKey(entry.m_code, QString::fromLatin1(entry.m_pText)); });
}

void AnswerFileDialog(const std::wstring& strPath) {
    const CFingerFileDialog* pDialog = nullptr;
    WaitFor("a file dialog", [&pDialog] {
        pDialog = dynamic_cast<const CFingerFileDialog*>(ModalWindow());
        return pDialog != nullptr;
    });
    GoToFolder(*pDialog, GetFolderOfPath(strPath));
    Type(GetNameOfPath(strPath));
    PressKey(Key::Enter);
}

void DropFiles(const CWnd& wnd, const std::vector<std::wstring>& arrPaths) {
    Perform([hWnd = wnd.GetHandle(), arrPaths] {
        NativeWindow* pNative = NativeWindow::Find(hWnd);
        if (!pNative || !pNative->m_widget.acceptDrops()) return;
        QMimeData data;
        QList<QUrl> urls;
        for (const std::wstring& strPath : arrPaths)
            urls.append(QUrl::fromLocalFile(QString::fromStdWString(strPath)));
        data.setUrls(urls);
        const QPoint middle = pNative->m_widget.rect().center();
        QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&pNative->m_widget, &enter);
        if (!enter.isAccepted()) return;
        QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&pNative->m_widget, &drop);
    });
}

bool PressModalButton(const std::wstring& strText) {
    return TapWidget([text = QString::fromStdWString(strText)]() -> QWidget* {
        QWidget* pModal = QApplication::activeModalWidget();
        if (!pModal) return nullptr;
        for (QAbstractButton* pButton : pModal->findChildren<QAbstractButton*>())
            if (pButton->isVisible() && pButton->text().remove(QLatin1Char('&')) == text)
                return pButton;
        return nullptr;
    });
}

void EndIdleThreads() { QThreadPool::globalInstance()->waitForDone(); }

}  // namespace Operator
