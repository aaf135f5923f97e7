#include "host/LinkWait.h"

#include <QTimer>

#include "host/LinkInstrument.h"
#include "host/LinkTexts.h"
#include "platform/drawing/FitText.h"
#include "platform/system/Text.h"
#include "platform/system/Threads.h"
#include "platform/windows/DialogLook.h"

namespace {

using enum CLinkWait::Control;

constexpr NumberedText TITLE{3320, L"Instrument"};

constexpr DialogItem ITEMS[] = {
    {ID_STATE, ControlKind::Static, L"", 9, 9, 262, 15},
    {ID_DETAILS, ControlKind::Static, L"", 9, 27, 262, 45},
    {IDCANCEL, ControlKind::StyledButton, L"", 115, 80, 50, 42, CS_NONE, NAME_CANCEL},
};

constexpr DialogTemplate TEMPLATE{708, L"", 280, 129, L"MS Shell Dlg", 8, ITEMS};

constexpr int DETAIL_ROWS = 3;
constexpr std::chrono::milliseconds LOOK_EVERY{100};
constexpr std::uint64_t PATIENCE_MS = 10000;
constexpr unsigned LOOK_MS = 20;

}  // namespace

CLinkWait::CLinkWait(const CLinkInstrument& instrument)
    : CDialog(TEMPLATE), m_instrument(instrument) {}

CLinkWait::~CLinkWait() = default;

bool CLinkWait::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(GetText(TITLE));
    m_fontState.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", true);
    m_fontDetails.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", false);
    GetControl(ID_STATE)->SetFont(&m_fontState);
    GetControl(ID_DETAILS)->SetFont(&m_fontDetails);
    m_btnCancel.AttachControl(IDCANCEL, this);
    CButtonPictures().SetOn(m_btnCancel, PICTURE_CANCEL);
    Update();
    m_pTimer = std::make_unique<QTimer>();
    QObject::connect(m_pTimer.get(), &QTimer::timeout, [this] { Update(); });
    m_pTimer->start(LOOK_EVERY);
    return true;
}

void CLinkWait::Update() {
    if (m_instrument.GetHello()) return EndDialog(IDOK);
    const StripField field =
        DescribeLink(m_instrument.GetStatus(), FromUtf8(m_instrument.GetAddress()));
    const int nWidth = GetControl(ID_STATE)->GetClientRect().Width() - 1;
    SetControlText(ID_STATE, FitText(field.m_strHead, m_fontState, nWidth, 1));
    SetControlText(ID_DETAILS, FitText(field.m_strDetail, m_fontDetails, nWidth, DETAIL_ROWS));
}

std::string AwaitInstrument(const CLinkInstrument& instrument) {
    const std::uint64_t nEnd = TickMilliseconds() + PATIENCE_MS;
    for (;;) {
        if (instrument.GetHello()) return "";
        const LinkStatus status = instrument.GetStatus();
        if (status.m_bRefused || TickMilliseconds() >= nEnd)
            return DescribeStatus(status, instrument.GetAddress());
        SleepMilliseconds(LOOK_MS);
    }
}
