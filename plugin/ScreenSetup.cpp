// What happens between the making of the screen's window and its showing.
#include <algorithm>
#include <iterator>
#include <mutex>

#include "curves/InstrumentMode.h"
#include "platform/drawing/DisplayScale.h"
#include "platform/windows/Controls.h"
#include "plugin/DlgSetupMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/Language.h"

namespace {

/// Where a bar stands in the screen's client area, in pixels of the design.
constexpr CPoint BAR_POSITION{90, 395};

/// The device parameter with the ranges of the position inputs, one bit per channel.
constexpr std::uint32_t PARAMETER_POSITION_RANGE = 50;

struct ControlText {
    int m_nControl;
    std::int32_t m_nString;
};

constexpr ControlText CONTROL_TEXTS[] = {
    {IDC_START, 144},     {IDC_STOP, 145},
    {IDC_CLEAR, 1507},    {IDC_ZOOM_ALL, 1508},
    {IDC_LOAD, 1509},     {IDC_SAVE, 1510},
    {IDC_SETTINGS, 1511}, {IDC_SAMPLE_TIME_MODE, 1514},
    {IDC_SECONDS, 1521},  {IDC_TRIGGER_LABEL, 1517},
};

}  // namespace

bool CDlgSetupMode::OnInitDialog() {
    CDlgBase::OnInitDialog();
    // The host, which knows no lock, may be changing its rate.
    m_graph.m_nGraphRate = std::atomic_ref(m_nHostValueRate).load(std::memory_order_relaxed);
    BindPlots();
    MakeFonts();
    LoadLanguageTable();
    PrepareTouchEntry();
    FillChannelList();
    FillDisplayList(m_nMode, m_nPositionInput);
    for (std::size_t k = 0; k < m_nChannels; ++k) {
        m_aPlots[k].m_nDisplay = m_abyDisplay[k];
        m_aPlots[k].m_nMode = m_nMode;
    }
    DisableWhatTheSessionForbids();
    OnSwitchBar(BAR_MAINMENU, 0);
    SetTexts();
    DragAcceptFiles(m_bDesktopMode != 0);
    return true;
}

void CDlgSetupMode::BindPlots() {
    for (std::size_t k = 0; k < m_nChannels; ++k) {
        RTPlot& plot = m_aPlots[k];
        {
            const std::lock_guard lock(m_lock);
            plot.m_spCurves = m_spCurves;
            plot.m_nChannel = static_cast<std::uint8_t>(k);
        }
        plot.m_pGraph = &m_graph;

        CDialogDraw& control = m_aPlotCtrl[k];
        control.AttachControl(PLOT_CONTROLS[k], this);
        control.m_nPlotIndex = static_cast<std::uint8_t>(k);
        control.m_pPlot = &plot;
        m_nPlotLeft = control.GetWindowRect().left - GetWindowRect().left;
    }
}

void CDlgSetupMode::MakeFonts() {
    m_fontLarge.CreatePointFont(180, L"MS Shell Dlg");
    m_fontSmall.CreatePointFont(140, L"MS Shell Dlg");
    for (const int nID : {IDC_CHANNEL_LIST, IDC_DISPLAY_LIST, IDC_SAMPLE_TIME_MODE})
        if (CWnd* pControl = GetControl(nID)) pControl->SetFont(&m_fontLarge);
    for (const int nID :
         {IDC_SAMPLE_TIME, IDC_SECONDS, IDC_TRIGGER_LABEL, IDC_TRIGGER, IDC_TRIGGER_UNIT})
        if (CWnd* pControl = GetControl(nID)) pControl->SetFont(&m_fontSmall);
}

void CDlgSetupMode::LoadLanguageTable() {
    m_pLangTable = &m_langTable;
    LoadLanguage(FindLanguage(), m_pLangTable);
    m_layerTexts.emplace([this](std::int32_t nString) { return m_langTable.Find(nString); });
}

void CDlgSetupMode::PrepareTouchEntry() {
    m_editSampleTime.AttachControl(IDC_SAMPLE_TIME, this);
    m_editSampleTime.m_strPadTitle = GetLangText(1534, L"Enter sample time (1-60 seconds)");
    m_editSampleTime.m_dMax = 60.0;
    m_editSampleTime.m_dMin = 1.0;
    m_editSampleTime.m_bOneDecimal = 0;

    m_editTrigger.AttachControl(IDC_TRIGGER, this);
    m_editTrigger.m_strPadTitle = GetLangText(1524, L"Enter sample Trigger") + L" (0-99.9%)";
    m_editTrigger.m_dMax = 99.9;
    m_editTrigger.m_dMin = 0.0;
    m_editTrigger.m_bOneDecimal = 1;
}

void CDlgSetupMode::FillChannelList() {
    auto* pList = static_cast<CComboBox*>(GetControl(IDC_CHANNEL_LIST));
    if (!pList) return;
    static constexpr const wchar_t* BUILT_IN[] = {L"Channel 1", L"Channel 2", L"Channel 3"};
    const int nChannels = std::min<int>(m_nChannels, std::size(BUILT_IN));
    for (int k = 0; k < nChannels; ++k) {
        const std::wstring strChannel = GetLangText(120 + k, BUILT_IN[k]);
        pList->SetItemData(pList->AddString(strChannel), static_cast<DWORD>(k));
        m_aPlotCtrl[static_cast<std::size_t>(k)].SetAccessibleName(
            GetText({3189, L"Plot of %1"}, {strChannel}));
    }
    pList->SetCurSel(0);
}

std::wstring CDlgSetupMode::GetRangeTag(std::uint8_t nPositionInput) const {
    if (SecondInput{nPositionInput} != SecondInput::Analogue) return {};
    const std::uint32_t nRanges =
        m_pDevice ? m_pDevice->ReadParameter(PARAMETER_POSITION_RANGE) & 0xFFu : 0;
    return (nRanges >> CurrentIndex()) & 1u ? L" (0-24V)" : L" (0-10V)";
}

void CDlgSetupMode::FillDisplayList(std::uint8_t nMode, std::uint8_t nPositionInput) {
    const std::wstring strTag = GetRangeTag(nPositionInput);
    auto* pList = static_cast<CComboBox*>(GetControl(IDC_DISPLAY_LIST));
    if (!pList) return;
    pList->ResetContent();

    const auto add = [pList](const std::wstring& strText, DWORD nDisplay) {
        const int nItem = pList->AddString(strText);
        pList->SetItemData(nItem, nDisplay);
        if (nDisplay == 0) pList->SetCurSel(nItem);
    };
    const std::wstring strForce = GetLangText(0, L"Force");
    const std::wstring strVoltage = GetLangText(101, L"Voltage");
    if (!OffersPairViews(nMode, SecondInput{m_nPositionInput})) {
        add(strForce, 0);
    } else if (nPositionInput != 0) {
        add(strForce + L"/" + strVoltage, 0);
        add(GetLangText(1, L"Position") + strTag, 1);
        add(L"F/V vs P" + strTag, 2);
    } else {
        add(strForce, 0);
        add(strVoltage, 1);
        add(L"F vs V", 2);
    }
}

void CDlgSetupMode::DisableWhatTheSessionForbids() {
    const auto disable = [this](int nID) {
        if (CWnd* pControl = GetControl(nID)) pControl->EnableWindow(false);
    };
    disable(IDC_STOP);
    if (m_bDesktopMode || m_bCaptureLocked)
        for (const int nID :
             {IDC_START, IDC_CLEAR, IDC_SAMPLE_TIME_MODE, IDC_SAMPLE_TIME, IDC_TRIGGER})
            disable(nID);
    if (m_bCaptureLocked) disable(IDC_LOAD);
}

void CDlgSetupMode::SetTexts() {
    for (const ControlText& text : CONTROL_TEXTS) SetLangText(text.m_nControl, text.m_nString, L"");
    SetWindowText(GetLangText(2004, L"Real Time Mode"));
}

LRESULT CDlgSetupMode::OnSwitchBar(WPARAM wParam, LPARAM) {
    const auto show = [this](auto& pBar) {
        pBar->m_pLangTable = m_pLangTable;
        pBar->InitLanguage();
        pBar->Create(this);
        pBar->SetWindowPosition({Scaled(BAR_POSITION.x), Scaled(BAR_POSITION.y)});
        pBar->ShowWindow(true);
    };
    if (wParam == BAR_MAINMENU) {
        m_pInfoBar.reset();
        m_pMainMenuBar = std::make_unique<CDlgBarMainMenu>(this);
        show(m_pMainMenuBar);
    } else if (wParam == BAR_INFO) {
        m_pMainMenuBar.reset();
        m_pInfoBar = std::make_unique<CDlgBarInfo>(this);
        show(m_pInfoBar);
    }
    return 0;
}
