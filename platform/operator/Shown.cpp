// What windows and controls there are, and what they say.
#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <typeinfo>

#include "platform/operator/Operator.h"
#include "platform/windows/qt/Widgets.h"

namespace {

const char* KindOf(QAccessible::Role role) {
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
        return "button";
    case QAccessible::EditableText:
        return "edit";
    case QAccessible::List:
    case QAccessible::ComboBox:
        return "list";
    case QAccessible::ListItem:
        return "row";
    case QAccessible::Graphic:
        return "picture";
    case QAccessible::StaticText:
        return "text";
    default:
        return "other";
    }
}

void CollectAccessible(QAccessibleInterface& parent,
                       std::vector<Operator::AccessibleControl>& controls) {
    for (int n = 0; n < parent.childCount(); ++n) {
        QAccessibleInterface* pChild = parent.child(n);
        if (!pChild || pChild->state().invisible) continue;
        const std::wstring strName = pChild->text(QAccessible::Name).toStdWString();
        const QAccessible::Role role = pChild->role();
        const bool bHolder = role == QAccessible::Client || role == QAccessible::Window;
        if (!bHolder && !(role == QAccessible::StaticText && strName.empty()))
            controls.push_back({KindOf(role), strName});
        CollectAccessible(*pChild, controls);
    }
}

}  // namespace

namespace Operator {

std::wstring ModalTitle() {
    std::wstring strTitle;
    Ask([&] {
        if (QWidget* pModal = QApplication::activeModalWidget())
            strTitle = pModal->windowTitle().toStdWString();
    });
    return strTitle;
}

std::wstring ModalText() {
    std::wstring strText;
    Ask([&] {
        QWidget* pModal = QApplication::activeModalWidget();
        if (pModal) {
            for (QWidget* pChild : pModal->findChildren<QWidget*>()) {
                auto* pStatic = dynamic_cast<StaticWidget*>(pChild);
                if (!pStatic || pStatic->m_text.isEmpty() || !pStatic->isVisible()) continue;
                if (!strText.empty()) strText += L'\n';
                strText += pStatic->m_text.toStdWString();
            }
        }
    });
    return strText;
}

CWnd* ModalWindow() {
    CWnd* pWnd = nullptr;
    Ask([&] {
        if (NativeWindow* pNative = NativeWindow::Of(QApplication::activeModalWidget()))
            pWnd = pNative->m_pOwner;
    });
    return pWnd;
}

std::vector<AccessibleControl> ListAccessible(const CWnd& wnd) {
    std::vector<AccessibleControl> controls;
    Ask([&] {
        NativeWindow* pNative = NativeWindow::Find(wnd.GetHandle());
        if (!pNative) return;
        if (auto* pWindow = QAccessible::queryAccessibleInterface(pNative->m_widget.window()))
            CollectAccessible(*pWindow, controls);
    });
    return controls;
}

std::vector<std::string> ListWidgets() {
    std::vector<std::string> kinds;
    Ask([&] {
        // A window goes when the events that it was in the middle of are over.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // A plain widget is the window system's own, for good.
        for (const QWidget* pWidget : QApplication::allWidgets())
            if (typeid(*pWidget) != typeid(QWidget))
                kinds.push_back(pWidget->metaObject()->className());
    });
    std::sort(kinds.begin(), kinds.end());
    return kinds;
}

}  // namespace Operator
