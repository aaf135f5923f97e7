#include "Support.h"

#include "platform/Controls.h"

int RunModal(CDialog& dialog, const std::function<void()>& script) {
    Operator::CScript running([&] {
        Operator::WaitUntil([&] { return dialog.IsWindowVisible(); }, 5000);
        script();
        Operator::Ask([&] {
            if (dialog.GetSafeHwnd()) dialog.EndDialog(IDCANCEL);
        });
    });
    const int nResult = dialog.DoModal();
    running.Join();
    return nResult;
}

std::wstring TextOf(const CWnd& dialog, int nID) {
    std::wstring strText;
    Operator::Ask([&] {
        if (const CWnd* pControl = dialog.GetDlgItem(nID)) strText = pControl->GetWindowText();
    });
    return strText;
}

bool IsVisible(const CWnd& dialog, int nID) {
    bool bVisible = false;
    Operator::Ask([&] {
        const CWnd* pControl = dialog.GetDlgItem(nID);
        bVisible = pControl && pControl->IsWindowVisible();
    });
    return bVisible;
}

bool IsEnabled(const CWnd& dialog, int nID) {
    bool bEnabled = false;
    Operator::Ask([&] {
        const CWnd* pControl = dialog.GetDlgItem(nID);
        bEnabled = pControl && pControl->IsWindowEnabled();
    });
    return bEnabled;
}

COLORREF ColorAt(const CWnd& wnd, CPoint point) {
    return Operator::TakePicture(wnd).GetPixel(point.x, point.y);
}

bool AwaitModal(const std::wstring& strTitle) {
    return Operator::WaitUntil([&] { return Operator::ModalTitle() == strTitle; }, 5000);
}

bool EnterOnPad(const std::wstring& strTitle, const std::wstring& strNumber) {
    if (!AwaitModal(strTitle)) return false;
    Operator::Type(strNumber);
    Operator::PressKey(Operator::Key::Enter);
    return true;
}
