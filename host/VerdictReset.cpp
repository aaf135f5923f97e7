#include "host/VerdictReset.h"

#include "host/VerdictPainter.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/Controls.h"

BEGIN_MESSAGE_MAP(CVerdictReset, CDialog)
ON_BN_CLICKED(ID_RESET, OnReset)
END_MESSAGE_MAP()

namespace {

constexpr NumberedText RESET{3240, L"Reset"};

// 58 by 41 dialog units are 87 by 67 pixels of the design.
constexpr DialogItem ITEMS[] = {
    {CVerdictReset::ID_RESET, ControlKind::PushButton, L"Reset", 0, 0, 58, 41}};
constexpr DialogTemplate TEMPLATE{0, L"", 58, 41, L"MS Shell Dlg", 8, ITEMS, true};

}  // namespace

CVerdictReset::CVerdictReset(std::function<void()> onReset)
    : CDialog(TEMPLATE), m_onReset(std::move(onReset)) {}

void CVerdictReset::Show(CWnd& strip) {
    if (!Create(&strip)) return;
    const CRect room = strip.GetClientRect();
    const CRect own = GetClientRect();
    SetWindowPosition(
        {room.right - own.Width() - Scaled(VERDICT_MARGIN), (room.Height() - own.Height()) / 2});
    ShowWindow(true);
}

bool CVerdictReset::OnInitDialog() {
    CDialog::OnInitDialog();
    SetControlText(ID_RESET, GetText(RESET));
    if (auto* const pButton = dynamic_cast<CButton*>(GetControl(ID_RESET)))
        pButton->SetTakesFocus(false);
    return true;
}
