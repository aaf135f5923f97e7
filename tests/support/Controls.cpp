#include "tests/support/Controls.h"

int RunModal(CDialog& dialog, const std::function<void()>& script) {
    Operator::CScript running([&] {
        Operator::WaitFor("the dialog", [&] { return dialog.IsWindowVisible(); });
        script();
        Operator::Ask([&] {
            if (dialog.GetHandle()) dialog.EndDialog(IDCANCEL);
        });
    });
    const int nResult = dialog.DoModal();
    running.Join();
    return nResult;
}

namespace {

/// What a control says of itself; nothing where there is no such control.
template <class Result>
Result Ask(const CWnd& dialog, int nID, Result (CWnd::*get)() const) {
    Result result{};
    Operator::Ask([&] {
        if (const CWnd* pControl = dialog.GetControl(nID)) result = (pControl->*get)();
    });
    return result;
}

}  // namespace

std::wstring TextOf(const CWnd& dialog, int nID) { return Ask(dialog, nID, &CWnd::GetWindowText); }

bool IsVisible(const CWnd& dialog, int nID) { return Ask(dialog, nID, &CWnd::IsWindowVisible); }

bool IsEnabled(const CWnd& dialog, int nID) { return Ask(dialog, nID, &CWnd::IsWindowEnabled); }

bool AwaitModal(const std::wstring& strTitle) {
    return Operator::WaitUntil([&] { return Operator::ModalTitle() == strTitle; }, 5000);
}

bool EnterOnPad(const std::wstring& strTitle, const std::wstring& strNumber) {
    if (!AwaitModal(strTitle)) return false;
    Operator::Type(strNumber);
    Operator::PressKey(Operator::Key::Enter);
    return true;
}
