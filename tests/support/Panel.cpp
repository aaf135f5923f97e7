#include "tests/support/Panel.h"

#include <mutex>
#include <stdexcept>

#include "platform/drawing/DisplayScale.h"

std::shared_ptr<RTPacket> MakeSamples(std::uint8_t byState,
                                      const std::vector<std::int16_t>& values) {
    std::vector<std::uint8_t> payload{0, byState, static_cast<std::uint8_t>(values.size() >> 8),
                                      static_cast<std::uint8_t>(values.size())};
    for (const std::int16_t nValue : values) {
        payload.push_back(static_cast<std::uint8_t>(nValue));
        payload.push_back(static_cast<std::uint8_t>(nValue >> 8));
    }
    return MakePacket(RTPACKET_SAMPLES, std::move(payload));
}

std::shared_ptr<RTPacket> MakeIdleReport() {
    return MakePacket(RTPACKET_CONTROL, {RTCMD_STATUS, 0, 0, 0, 0, 0});
}

BEGIN_MESSAGE_MAP(CTestView, CView)
ON_MESSAGE(WM_RT_SENDOBJECT, OnSendObject)
END_MESSAGE_MAP()

LRESULT CTestView::OnSendObject(WPARAM wParam, LPARAM) {
    m_messages.emplace_back(reinterpret_cast<CObjConfig*>(wParam));
    m_messages.back()->ToBytes(m_images.emplace_back());
    return 0;
}

TestPanel::TestPanel(std::uint8_t nMode, std::uint8_t nPositionInput)
    : m_library(L"RealTimeMode.dll"), m_app(L"rt-screen-test", m_folder.Path("settings.ini")) {
    m_frame.Create(L"Panel");
    m_view.Create(&m_frame);
    m_frame.SetActiveView(&m_view);
    m_app.m_pMainWnd = &m_frame;

    auto* pGetDialog = m_library.GetFunction<GetDialogFunction>("GetDialog");
    if (!pGetDialog) throw std::runtime_error("the plug-in library is not there");
    m_pDialog.reset(pGetDialog());
    m_pSession = dynamic_cast<CRealTimeData*>(m_pDialog.get());
    if (!m_pSession) throw std::runtime_error("the screen has no session record");
    m_pSession->m_pPacketQueue = &m_queue;
    m_pSession->m_nMode = nMode;
    m_pSession->m_nPositionInput = nPositionInput;
    m_pSession->m_nHostValueRate = 40000;
    m_pSession->m_nHostAuxRate = 20000;
}

void TestPanel::Run(const std::function<void()>& script) {
    RunUntilClosed([&] {
        script();
        m_pDialog->PostMessage(WM_CLOSE);
    });
}

void TestPanel::RunUntilClosed(const std::function<void()>& script) {
    Operator::CScript running([&] {
        Operator::WaitFor("the screen", [this] { return m_pDialog->IsWindowVisible(); });
        script();
    });
    m_pDialog->Run();
    running.Join();
}

CWnd* TestPanel::Control(int nID) {
    CWnd* pControl = nullptr;
    Operator::Ask([&] { pControl = m_pDialog->GetControl(nID); });
    return pControl;
}

bool TestPanel::TapBar(int nID) {
    const CWnd* pBar = Control(IDC_BAR);
    return pBar && Operator::Tap(*pBar, nID);
}

CPoint TestPanel::AtPlot(int x, int y) {
    CRect area;
    Operator::Ask([&] {
        area = m_pDialog->GetControl(IDC_PLOT_1)->GetWindowRect();
        m_pDialog->ScreenToClient(area);
    });
    return {area.left + Scaled(x), area.top + Scaled(y)};
}

void TestPanel::TapPlot(int x, int y) {
    Operator::Press(*m_pDialog, AtPlot(x, y));
    Operator::Release(*m_pDialog, AtPlot(x, y));
}

void TestPanel::Drag(int xFrom, int xTo) {
    Operator::Press(*m_pDialog, AtPlot(xFrom, 100));
    Operator::MoveTo(*m_pDialog, AtPlot(xTo, 120));
    Operator::Release(*m_pDialog, AtPlot(xTo, 120));
}

void TestPanel::SaveAs(const std::wstring& strName) {
    Tap(IDC_SAVE);
    if (!AwaitModal(L"Real Time file name")) throw std::runtime_error("no keyboard");
    Operator::Type(strName);
    Operator::PressKey(Operator::Key::Enter);
    Operator::Wait(30);
}

void TestPanel::AnswerFileDialog(const std::wstring& strPath) {
    Operator::AnswerFileDialog(strPath);
    Operator::WaitFor("the screen", [this] { return Operator::ModalWindow() == m_pDialog.get(); });
}

std::vector<std::int16_t> TestPanel::ValuesOf(std::size_t nChannel, std::size_t nCurve) {
    const std::lock_guard lock(m_pSession->m_lock);
    const RTCurveList& curves = m_pSession->m_spCurves->m_lstCurves[nChannel];
    if (nCurve >= curves.size()) return {};
    const RTCurveData& curve = *curves[nCurve];
    return {curve.GetValues(), curve.GetValues() + curve.GetCount()};
}

std::size_t TestPanel::CurveCount(std::size_t nChannel) {
    const std::lock_guard lock(m_pSession->m_lock);
    return m_pSession->m_spCurves->m_lstCurves[nChannel].size();
}

void TestPanel::Settle() {
    // The reader looks at its queue every 10 ms; a packet that it ignores marks the end.
    constexpr RTPacketType IGNORED{0};
    const auto spMark = MakePacket(IGNORED, {});
    m_queue.push(spMark);
    m_queue.push(MakePacket(IGNORED, {}));
    for (int i = 0; i < 1000 && spMark.use_count() > 1; ++i) Operator::Wait(2);
    Operator::Ask([] {});
    Operator::Wait(5);
}
