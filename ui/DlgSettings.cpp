#include "ui/DlgSettings.h"

#include "platform/windows/DialogLook.h"
#include "platform/windows/KeyboardCalls.h"
#include "plot/RTGraphSettings.h"
#include "ui/BigMessageBox.h"

namespace {

using enum CDlgSettings::Control;

constexpr DialogItem ITEMS[] = {
    {ID_AUTO_ZOOM_LABEL, ControlKind::Static, L"Auto zoom", 7, 16, 35, 8},
    {ID_AUTO_ZOOM, ControlKind::StyledButton, L"", 45, 10, 15, 14, CS_NONE, {3194, L"Auto zoom"}},
    {ID_RANGE_LABEL, ControlKind::Static, L"Graph range (mv)", 7, 39, 57, 8},
    {ID_RANGE_MIN, ControlKind::PushButton, L"", 65, 33, 41, 14},
    {ID_RANGE_DASH, ControlKind::Static, L"-", 109, 36, 8, 8},
    {ID_RANGE_MAX, ControlKind::PushButton, L"", 116, 33, 41, 14},
    {IDOK, ControlKind::StyledButton, L"", 153, 75, 28, 19, CS_NONE, NAME_CLOSE},
};

constexpr DialogTemplate TEMPLATE{107, L"Settings", 188, 101, L"Microsoft Sans Serif", 12, ITEMS};

/// What can be entered as an end of the graph range, in millivolts.
constexpr std::int32_t LOWEST_RANGE = -20000;
constexpr std::int32_t HIGHEST_RANGE = 70000;

}  // namespace

BEGIN_MESSAGE_MAP(CDlgSettings, CDlgLangBase)
ON_BN_CLICKED(ID_RANGE_MIN, OnRangeMin)
ON_BN_CLICKED(ID_RANGE_MAX, OnRangeMax)
ON_BN_CLICKED(ID_AUTO_ZOOM, OnAutoZoom)
END_MESSAGE_MAP()

CDlgSettings::CDlgSettings() : CDlgLangBase(TEMPLATE) {}

bool CDlgSettings::OnInitDialog() {
    CDlgLangBase::OnInitDialog();
    m_btnAutoZoom.AttachControl(ID_AUTO_ZOOM, this);
    if (m_pGraph) {
        ShowRangeValue(ID_RANGE_MIN, std::to_wstring(m_pGraph->m_nRangeMin));
        ShowRangeValue(ID_RANGE_MAX, std::to_wstring(m_pGraph->m_nRangeMax));
        ShowAutoZoom();
    }
    CButtonPictures().SetOn(*this, IDOK, PICTURE_CLOSE);
    SetLangText(ID_RANGE_LABEL, 1516, L"");
    SetWindowText(GetLangText(1511, L"Settings"));
    return true;
}

void CDlgSettings::OnAutoZoom() {
    if (!m_pGraph) return;
    SetAutoZoom(*m_pGraph, !IsAutoZoom(*m_pGraph));
    ShowAutoZoom();
}

void CDlgSettings::ShowAutoZoom() {
    const CButtonPictures pictures;
    if (!pictures) return;
    const bool bOn = IsAutoZoom(*m_pGraph);
    if (bOn)
        pictures.SetOn(m_btnAutoZoom, PICTURE_CHECKED);
    else
        m_btnAutoZoom.SetImage(nullptr);
    m_btnAutoZoom.SetCheck(bOn);
    m_btnAutoZoom.Invalidate();
}

void CDlgSettings::OnRangeMin() {
    if (!m_pGraph) return;
    if (const auto nEntered = EnterRangeValue(ID_RANGE_MIN)) m_pGraph->m_nRangeMin = *nEntered;
}

void CDlgSettings::OnRangeMax() {
    if (!m_pGraph) return;
    if (const auto nEntered = EnterRangeValue(ID_RANGE_MAX)) m_pGraph->m_nRangeMax = *nEntered;
}

void CDlgSettings::ShowRangeValue(int nButton, const std::wstring& strValue) {
    CWnd* const pButton = GetControl(nButton);
    if (!pButton) return;
    const NumberedText name = nButton == ID_RANGE_MIN
                                  ? NumberedText{3195, L"Lower end of the graph range: %1"}
                                  : NumberedText{3196, L"Upper end of the graph range: %1"};
    pButton->SetWindowText(strValue);
    pButton->SetAccessibleName(GetText(name, {strValue}));
}

/// Lets the operator enter a number, and shows it on the button as it was typed.
/// @return nothing when the entry was cancelled, or refused and reported
std::optional<std::int32_t> CDlgSettings::EnterRangeValue(int nButton) {
    CWnd* pButton = GetControl(nButton);
    std::wstring strResult;
    double dNumber = 0;
    if (!CallNumberPad(GetLangText(155, L"Current Value"),
                       pButton ? pButton->GetWindowText() : std::wstring(), &strResult, &dNumber, 1,
                       0))
        return std::nullopt;
    if (!(dNumber >= LOWEST_RANGE && dNumber <= HIGHEST_RANGE)) {
        ShowBigMessageBox(GetLangText(1094, L"Data Error"),
                          GetLangText(1093, L"Parameter must be within range") + L": " +
                              std::to_wstring(LOWEST_RANGE) + L" to " +
                              std::to_wstring(HIGHEST_RANGE),
                          BIGBTN_OK_CENTRE);
        return std::nullopt;
    }
    ShowRangeValue(nButton, strResult);
    return static_cast<std::int32_t>(dNumber);
}
