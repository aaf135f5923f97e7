#include "soak/RandomOperator.h"

#include <stdexcept>

#include "platform/system/Paths.h"
#include "platform/windows/Controls.h"
#include "platform/windows/FingerFileDialog.h"
#include "plugin/ScreenTemplate.h"
#include "siblings/KeyboardWindow.h"
#include "siblings/NumberPadWindow.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"
#include "ui/DlgSettings.h"
#include "ui/ProgressBox.h"

using Operator::PressKey;

struct CRandomOperator::Action {
    const char* m_pName;
    unsigned m_nWeight;
    void (*m_pDo)(CRandomOperator&);
    bool m_bMayClose = false;
};

using Self = CRandomOperator;

constinit const CRandomOperator::Action CRandomOperator::ON_SCREEN[] = {
    {"screen: Start", 14, [](Self& o) { o.m_panel.Tap(IDC_START); }},
    {"screen: Stop", 8, [](Self& o) { o.m_panel.Tap(IDC_STOP); }},
    {"screen: Clear", 4, [](Self& o) { o.m_panel.Tap(IDC_CLEAR); }},
    {"screen: Zoom All", 3, [](Self& o) { o.m_panel.Tap(IDC_ZOOM_ALL); }},
    {"screen: Save", 3, [](Self& o) { o.m_panel.Tap(IDC_SAVE); }},
    {"screen: Load", 4, [](Self& o) { o.m_panel.Tap(IDC_LOAD); }},
    {"screen: Settings", 3, [](Self& o) { o.m_panel.Tap(IDC_SETTINGS); }},
    {"screen: Sample Time", 4, [](Self& o) { o.m_panel.Tap(IDC_SAMPLE_TIME_MODE); }},
    {"screen: sample time entry", 3, [](Self& o) { o.m_panel.Tap(IDC_SAMPLE_TIME); }},
    {"screen: trigger entry", 2, [](Self& o) { o.m_panel.Tap(IDC_TRIGGER); }},
    {"screen: channel list", 4,
     [](Self& o) { o.SelectAny(*o.m_panel.m_pDialog, IDC_CHANNEL_LIST); }},
    {"screen: display list", 3,
     [](Self& o) { o.SelectAny(*o.m_panel.m_pDialog, IDC_DISPLAY_LIST); }},
    {"screen: tap in the plot", 8, [](Self& o) { o.TapPlot(); }},
    {"screen: drag in the plot", 8, [](Self& o) { o.DragPlot(); }},
    {"screen: right click", 1,
     [](Self& o) { Operator::RightClick(*o.m_panel.m_pDialog, o.PickPoint()); }},
    {"screen: bar button", 14, [](Self& o) { o.BarButton(); }},
    {"screen: key", 2, [](Self& o) { o.Key(); }},
    {"screen: closed by its bar", 1,
     [](Self& o) { o.m_panel.TapBar(CDlgBarMainMenu::ID_CLOSE_SCREEN); }, true},
    {"screen: Enter or Escape", 1,
     [](Self& o) { PressKey(o.OneIn(2) ? Operator::Key::Enter : Operator::Key::Escape); }, true},
    {"screen: closed by the host", 1, [](Self& o) { o.m_panel.m_pDialog->PostMessage(WM_CLOSE); },
     true},
    {"screen: file dropped", 2,
     [](Self& o) { Operator::DropFiles(*o.m_panel.m_pDialog, {o.PickPath()}); }},
    {"screen: stray message", 2, [](Self& o) { o.StrayMessage(); }},
    {"screen: wait", 6, [](Self& o) { Operator::Wait(1 + o.Pick(60)); }},
};

CRandomOperator::CRandomOperator(TestPanel& panel, const std::wstring& strFolder,
                                 std::uint32_t nSeed, CSoakRecord& record, Manner manner)
    : m_panel(panel), m_strFolder(strFolder), m_random(nSeed), m_record(record), m_manner(manner) {}

void CRandomOperator::Work(unsigned nMilliseconds) {
    const std::uint64_t nEnd = TickMilliseconds() + nMilliseconds;
    while (IsOpen() && TickMilliseconds() < nEnd) {
        Act();
        const unsigned nMost = OneIn(20) ? m_manner.m_nRestMost : m_manner.m_nPauseMost;
        if (nMost > 0) Operator::Wait(Pick(nMost));
    }
}

bool CRandomOperator::ReturnToScreen() {
    for (int i = 0; IsOpen() && FindWork() != &Self::WorkScreen; ++i) LeaveFront(i);
    return IsOpen();
}

void CRandomOperator::CloseScreen() {
    for (int i = 0; IsOpen(); ++i) {
        if (FindWork() == &Self::WorkScreen)
            m_panel.TapBar(CDlgBarMainMenu::ID_CLOSE_SCREEN) ||
                m_panel.m_pDialog->PostMessage(WM_CLOSE);
        LeaveFront(i);
    }
}

/// Closes the window in front of the screen, if there is one.
void CRandomOperator::LeaveFront(int nTry) {
    constexpr int TRIES = 300;
    if (nTry == TRIES) throw std::runtime_error("the screen does not close");
    if (FindWork() != &Self::WorkScreen &&
        (nTry % 3 != 2 || !Operator::PressModalButton(L"Cancel")))
        PressKey(Operator::Key::Escape);  // no use where the focus has gone elsewhere
    Operator::Wait(2);
}

CRandomOperator::FrontWork CRandomOperator::FindWork() const {
    // A control that tells each window; every window of keys has the first one.
    static constexpr std::pair<int, FrontWork> WINDOWS[] = {
        {CNumberPadWindow::ID_DIGIT, &Self::WorkNumberPad},
        {CKeyboardWindow::ID_SIGNS, &Self::WorkKeyboard},
        {CProgressBox::ID_PERCENT, &Self::WorkProgress},
        {CDlgSettings::ID_AUTO_ZOOM, &Self::WorkSettings},
        {CFingerFileDialog::ID_ROWS, &Self::WorkFileDialog},
        {CDlgListFiles::ID_FILES, &Self::WorkFileList}};
    FrontWork work = &Self::WorkBox;
    Operator::Ask([&] {
        const CWnd* const pFront = Operator::ModalWindow();
        if (pFront == m_panel.m_pDialog.get()) work = &Self::WorkScreen;
        for (const auto& [nID, workThere] : WINDOWS)
            if (pFront && work != &Self::WorkScreen && pFront->GetControl(nID)) work = workThere;
    });
    return work;
}

void CRandomOperator::Act() {
    const FrontWork work = FindWork();
    // Windows in front of the screen close by nobody's hand but this thread's; the progress box,
    // which does, is worked by keys only.
    const CWnd* const pFront = Operator::ModalWindow();
    if (m_manner.m_bCloses && work != &Self::WorkScreen && work != &Self::WorkProgress &&
        OneIn(60)) {
        m_record.Count("closed by the host behind a window");
        m_panel.m_pDialog->PostMessage(WM_CLOSE);
    }
    (this->*work)(pFront ? *pFront : *m_panel.m_pDialog);
}

void CRandomOperator::WorkScreen(const CWnd&) {
    unsigned nWeights = 0;
    for (const Action& action : ON_SCREEN) nWeights += action.m_nWeight;
    const Action* pAction = ON_SCREEN;
    for (unsigned n = Pick(nWeights); n >= pAction->m_nWeight; ++pAction) n -= pAction->m_nWeight;
    if (pAction->m_bMayClose && !m_manner.m_bCloses) return;
    m_record.Count(pAction->m_pName);
    pAction->m_pDo(*this);
}

void CRandomOperator::TapPlot() {
    const CPoint point = PickPoint();
    Operator::Press(*m_panel.m_pDialog, point);
    Operator::Release(*m_panel.m_pDialog, point);
}

void CRandomOperator::DragPlot() {
    Operator::Press(*m_panel.m_pDialog, PickPoint());
    for (unsigned nMoves = Pick(6); nMoves > 0; --nMoves)
        Operator::MoveTo(*m_panel.m_pDialog, PickPoint());
    // Sometimes the window system keeps the release to itself.
    if (!OneIn(10)) Operator::Release(*m_panel.m_pDialog, PickPoint());
}

void CRandomOperator::BarButton() {
    constexpr int BUTTONS[] = {CDlgBarMainMenu::ID_INFO,       CDlgBarMainMenu::ID_INFO,
                               CDlgBarMainMenu::ID_EXPORT_CSV, CDlgBarMainMenu::ID_PASS_OUTPUT,
                               CDlgBarInfo::ID_MARKER_A,       CDlgBarInfo::ID_MARKER_B,
                               CDlgBarInfo::ID_CLEAR_MARKERS,  CDlgBarInfo::ID_TRIGGER,
                               CDlgBarInfo::ID_CLEAR_TRIGGER,  CDlgBarInfo::ID_BACK};
    m_panel.TapBar(BUTTONS[Pick(std::size(BUTTONS))]);
}

void CRandomOperator::Key() {
    constexpr Operator::Key KEYS[] = {Operator::Key::Tab, Operator::Key::Space, Operator::Key::Up,
                                      Operator::Key::Down, Operator::Key::Backspace};
    for (unsigned nKeys = 1 + Pick(8); nKeys > 0; --nKeys) PressKey(KEYS[Pick(std::size(KEYS))]);
}

void CRandomOperator::StrayMessage() {
    CDlgBase& screen = *m_panel.m_pDialog;
    const std::pair<UINT, WPARAM> MESSAGES[] = {{WM_RT_BARCOMMAND, 198 + Pick(9)},
                                                {WM_RT_SWITCHBAR, 208 + Pick(5)},
                                                {WM_COMMAND, CommandParam(IDC_CONTINUOUS, 0)},
                                                {2000 + Pick(100), m_random()}};
    const auto& [nMessage, wParam] = MESSAGES[Pick(4)];
    screen.PostMessage(nMessage, wParam);
    // The bar that a tap may be aimed at next must be the one that stands then.
    Operator::Ask([] {});
}

CPoint CRandomOperator::PickPoint() {
    CRect area;
    Operator::Ask([&] {
        CWnd* const pPlot = m_panel.m_pDialog->GetControl(IDC_PLOT_1);
        if (!pPlot) return;
        area = pPlot->GetWindowRect();
        m_panel.m_pDialog->ScreenToClient(area);
    });
    // Some points lie beside the plot, some outside of the window.
    const int nAround = OneIn(5) ? 120 : 0;
    const auto pick = [&](int nFrom, int nTo) {
        return nFrom - nAround +
               static_cast<int>(Pick(static_cast<unsigned>(nTo - nFrom + 1) +
                                     2 * static_cast<unsigned>(nAround)));
    };
    return {pick(area.left, area.right), pick(area.top, area.bottom)};
}

void CRandomOperator::SelectAny(const CWnd& dialog, int nID) {
    CWnd* pList = nullptr;
    std::wstring strRow;
    Operator::Ask([&] {
        pList = dialog.GetControl(nID);
        if (auto* pCombo = dynamic_cast<CComboBox*>(pList); pCombo && pCombo->GetCount() > 0)
            strRow = pCombo->GetItemText(
                static_cast<int>(Pick(static_cast<unsigned>(pCombo->GetCount()))));
        if (auto* pBox = dynamic_cast<CListBox*>(pList); pBox && pBox->GetCount() > 0)
            strRow = pBox->GetText(static_cast<int>(Pick(static_cast<unsigned>(pBox->GetCount()))));
    });
    if (!strRow.empty()) Operator::Select(*pList, strRow);
}
