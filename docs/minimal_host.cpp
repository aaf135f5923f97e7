// The smallest panel application: it shows the screen and answers its captures with a saw-tooth.
// docs/host.md goes through it; the tests build and run it.
#include <cstdlib>
#include <memory>
#include <vector>

#include "acquisition/ObjRTGeneric.h"
#include "platform/operator/Operator.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Application.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"

namespace {

/// A block of 1,000 values with digital lines 1 and 3 set.
std::shared_ptr<RTPacket> MakeBlock() {
    constexpr int VALUES = 1000;
    std::vector<std::uint8_t> payload{0, 0b0101, VALUES >> 8, VALUES & 0xFF};
    for (int i = 0; i < VALUES; ++i) {
        const int nValue = 4 * i;
        payload.push_back(static_cast<std::uint8_t>(nValue));
        payload.push_back(static_cast<std::uint8_t>(nValue >> 8));
    }
    return MakePacket(RTPACKET_SAMPLES, std::move(payload));
}

/// The view that the screen hands its messages to.
class CInstrumentView : public CView {
  public:
    explicit CInstrumentView(RTPacketQueue& queue) : m_queue(queue) {}

  private:
    LRESULT OnSendObject(WPARAM wParam, LPARAM) {
        const std::unique_ptr<CObjConfig> pMessage(reinterpret_cast<CObjConfig*>(wParam));
        std::string image;
        pMessage->ToBytes(image);
        // A real host sends the 44 bytes to the instrument, whose packets come on another thread.
        const bool bStart = image[3] == RTCMD_CAPTURE && image[7] + image[8] != 0;
        if (bStart)
            for (int i = 0; i < 12; ++i) m_queue.push(MakeBlock());
        m_queue.push(MakePacket(RTPACKET_CONTROL, {RTCMD_STATUS, 0, 0, 0, 0, 0}));
        return 0;
    }
    DECLARE_MESSAGE_MAP()

    RTPacketQueue& m_queue;
};

BEGIN_MESSAGE_MAP(CInstrumentView, CView)
ON_MESSAGE(WM_RT_SENDOBJECT, OnSendObject)
END_MESSAGE_MAP()

}  // namespace

int main(int argc, char** argv) {
    CWindowSystem windowSystem(argc, argv);
    CApplication app(L"minimal_host");

    RTPacketQueue queue;
    CFrameWindow frame;
    CInstrumentView view(queue);
    frame.Create(L"Minimal host");
    view.Create(&frame);
    frame.SetActiveView(&view);
    app.m_pMainWnd = &frame;
    if (GetDisplayKind() == DisplayKind::Panel) frame.FillDisplay();

    const CDynamicLibrary library(L"RealTimeMode.dll");
    auto* pGetDialog = library.GetFunction<GetDialogFunction>("GetDialog");
    if (!pGetDialog) return EXIT_FAILURE;

    const std::unique_ptr<CDlgBase> pScreen(pGetDialog());
    auto* pSession = dynamic_cast<CRealTimeData*>(pScreen.get());
    if (!pSession) return EXIT_FAILURE;
    pSession->m_pPacketQueue = &queue;
    pSession->m_nMode = 1;
    pSession->m_nPositionInput = 0;
    pSession->m_nHostValueRate = 4000;
    pSession->m_nHostAuxRate = 2000;

    // With an argument: one capture, then the screen closes by itself.
    if (argc > 1) {
        Operator::CScript script([&] {
            Operator::WaitFor("the screen", [&] { return pScreen->IsWindowVisible(); });
            Operator::Tap(*pScreen, IDC_START);
            Operator::WaitFor("the end of the capture",
                              [&] { return pScreen->GetControl(IDC_START)->IsWindowEnabled(); });
            pScreen->PostMessage(WM_CLOSE);
        });
        pScreen->Run();
        script.Join();
        const auto spCurve = pSession->m_spCurves->FirstCurve(0);
        return spCurve && spCurve->GetCount() == 12000 ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    pScreen->Run();
    return EXIT_SUCCESS;
}
