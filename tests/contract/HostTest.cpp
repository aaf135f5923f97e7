// What the public headers offer to a host, used by one that is linked with the platform alone.
#include <gtest/gtest.h>

#include "acquisition/ObjRTGeneric.h"
#include "platform/operator/Operator.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Application.h"
#include "platform/windows/Controls.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/TemporaryFolder.h"

namespace {

/// Three blocks of 500 sets of mode 20: n and -n on channel 1, 2n and 7 on channel 2, n from 0 to
/// 1499; line 1 is set in the first block, line 2 in the others.
void PushBlocks(RTPacketQueue& queue) {
    for (int nBlock = 0; nBlock < 3; ++nBlock) {
        std::vector<std::uint8_t> payload{0, static_cast<std::uint8_t>(nBlock == 0 ? 1 : 2), 0x07,
                                          0xD0};
        for (int n = nBlock * 500; n < nBlock * 500 + 500; ++n)
            for (const int nValue : {n, -n, 2 * n, 7}) {
                payload.push_back(static_cast<std::uint8_t>(nValue & 0xFF));
                payload.push_back(static_cast<std::uint8_t>(nValue >> 8 & 0xFF));
            }
        queue.push(MakePacket(RTPACKET_SAMPLES, std::move(payload)));
    }
}

/// Takes the screen's messages, and keeps them.
class CKeepingView : public CView {
  public:
    std::vector<std::unique_ptr<CObjConfig>> m_messages;

  private:
    LRESULT OnSendObject(WPARAM wParam, LPARAM) {
        m_messages.emplace_back(reinterpret_cast<CObjConfig*>(wParam));
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CKeepingView, CView)
ON_MESSAGE(WM_RT_SENDOBJECT, OnSendObject)
END_MESSAGE_MAP()

/// The position inputs of channels 2 and 3 are 0-24 V.
class CDevice final : public IRTDevice {
  public:
    std::uint32_t ReadParameter(std::uint32_t nNumber) override {
        return nNumber == 50 ? 0b110 : 0b001;
    }
};

class Host : public ::testing::Test {
  protected:
    Host() {
        m_frame.Create(L"Host");
        m_view.Create(&m_frame);
        m_frame.SetActiveView(&m_view);
        m_app.m_pMainWnd = &m_frame;
        if (auto* pGetDialog = m_library.GetFunction<GetDialogFunction>("GetDialog"))
            m_pScreen.reset(pGetDialog());
        m_pSession = dynamic_cast<CRealTimeData*>(m_pScreen.get());
        if (!m_pSession) throw std::runtime_error("the plug-in library gives no screen");
        m_pSession->m_pPacketQueue = &m_queue;
        m_pSession->m_nMode = 20;
        m_pSession->m_nPositionInput = static_cast<std::uint8_t>(SecondInput::Position);
        m_pSession->m_nHostValueRate = 1000;
        m_pSession->m_nHostAuxRate = 250;
    }

    void Run(const std::function<void()>& script) {
        Operator::CScript running([&] {
            Operator::WaitUntil([this] { return m_pScreen->IsWindowVisible(); }, 5000);
            script();
            m_pScreen->PostMessage(WM_CLOSE);
        });
        m_pScreen->Run();
        running.Join();
    }

    /// Presses Start, has the queue bring the blocks, and waits for the end of the capture.
    void Capture(RTPacketQueue& queue) {
        Operator::Tap(*m_pScreen, IDC_START);
        PushBlocks(queue);
        Operator::WaitUntil([this] { return m_pScreen->GetControl(IDC_START)->IsWindowEnabled(); },
                            5000);
    }

    TemporaryFolder m_folder;
    CDynamicLibrary m_library{L"RealTimeMode.dll"};
    CApplication m_app{L"rt-contract-test", m_folder.Path("settings.ini")};
    CFrameWindow m_frame;
    CKeepingView m_view;
    CDevice m_device;
    RTPacketQueue m_queue;
    std::unique_ptr<CDlgBase> m_pScreen;
    CRealTimeData* m_pSession = nullptr;
};

TEST_F(Host, ReadsACaptureThroughThePublicHeaders) {
    Run([this] { Capture(m_queue); });

    const CRTCurves& curves = *m_pSession->m_spCurves;
    EXPECT_EQ(curves.m_byVersion, 14);
    ASSERT_EQ(curves.m_lstCurves[0].size(), 1u);
    EXPECT_EQ(curves.FirstCurve(2), nullptr);
    const RTCurveData& first = *curves.FirstCurve(0);
    const RTCurveData& second = *curves.FirstCurve(1);
    for (const RTCurveData* pCurve : {&first, &second}) {
        ASSERT_EQ(pCurve->GetCount(), 3000u);
        EXPECT_EQ(pCurve->GetCapacity(), 3000u);
        EXPECT_EQ(pCurve->m_anMarkers[9], -1);
        EXPECT_EQ(pCurve->m_wReserved, 0);
    }
    for (int n = 0; n < 1500; ++n) {
        ASSERT_EQ(first.GetValues()[2 * n], n);
        ASSERT_EQ(first.GetValues()[2 * n + 1], -n);
        ASSERT_EQ(second.GetValues()[2 * n], 2 * n);
        ASSERT_EQ(second.GetValues()[2 * n + 1], 7);
    }
    // Channel 1 is the one on show, whose extremes are worked out at the end of a capture.
    EXPECT_EQ(first.GetExtremes(), (RTExtremes{1499, 0, 0, -1499}));
    const RTMinMax all = first.FindMinMax(1, 3000);
    EXPECT_EQ(all.m_nMin, -1499);
    EXPECT_EQ(all.m_nMax, 0);
    const RTMinMax some = second.FindMinMax(200, 301);
    EXPECT_EQ(some.m_nMin, 200);
    EXPECT_EQ(some.m_nMax, 300);

    const RTPulseList& pulses = second.GetPulses();
    ASSERT_EQ(pulses.GetCount(), 3u);
    EXPECT_EQ(pulses.At(0), (RTPulse{1000, 1}));
    EXPECT_EQ(pulses.At(1), (RTPulse{2000, 2}));
    EXPECT_EQ(pulses.At(2), (RTPulse{3000, 2}));
    EXPECT_EQ(pulses.FindPosition(3, 1001), 1u);
}

TEST_F(Host, ReadsSessionAndPlots) {
    Run([this] { Capture(m_queue); });

    EXPECT_FALSE(m_pSession->m_hReaderThread);
    EXPECT_EQ(m_pSession->m_bStopReader, 1);
    EXPECT_EQ(m_pSession->m_nChannels, 2);
    EXPECT_EQ(m_pSession->m_nValueRate, 1000);
    EXPECT_EQ(m_pSession->m_nAuxRate, 250);
    EXPECT_EQ(m_pSession->m_graph.m_nGraphRate, 1000);
    EXPECT_EQ(m_pSession->m_graph.m_nRangeMin, -5000);
    EXPECT_TRUE(IsAutoZoom(m_pSession->m_graph));

    RTPlot& plot = m_pSession->m_aPlots[1];
    EXPECT_EQ(plot.m_spCurves, m_pSession->m_spCurves);
    EXPECT_EQ(plot.m_pGraph, &m_pSession->m_graph);
    EXPECT_EQ(plot.m_nChannel, 1);
    EXPECT_EQ(plot.m_nMode, 20);
    EXPECT_EQ(plot.m_nViewStart, 0);
    EXPECT_EQ(plot.m_nViewEnd, 3000);
    EXPECT_EQ(plot.m_nSpanValues, 3000);
    EXPECT_EQ(plot.m_bZoomed, 0);
    EXPECT_EQ(plot.m_pColours->m_crBackground, RGB(192, 192, 192));
    EXPECT_EQ(plot.GetTimeDistance(), 0);
    EXPECT_EQ(plot.GetTriggerPercent(), 0);
    plot.m_nMarkerA = 2440;
    plot.m_nMarkerB = 400;
    plot.m_nTriggerLevel = 1299;
    EXPECT_EQ(plot.GetTimeDistance(), 51);
    EXPECT_EQ(plot.GetTriggerPercent(), 25);
}

TEST_F(Host, ChangesQueueAndRatesWhileTheScreenRuns) {
    RTPacketQueue other;
    RTPlot& plot = m_pSession->m_aPlots[0];
    std::uint32_t nCapacity = 0;
    Run([&] {
        Capture(m_queue);
        std::atomic_ref(m_pSession->m_nHostValueRate).store(500);
        std::atomic_ref(m_pSession->m_nHostAuxRate).store(125);
        std::atomic_ref(m_pSession->m_pPacketQueue).store(&other);
        Capture(other);
        const auto lock = plot.LockSession();
        EXPECT_TRUE(lock.owns_lock());
        nCapacity = plot.m_spCurves->m_lstCurves[0].back()->GetCount();
    });
    EXPECT_EQ(nCapacity, 1500u);
    EXPECT_EQ(m_pSession->m_nValueRate, 500);
    EXPECT_EQ(m_pSession->m_nAuxRate, 125);
}

TEST_F(Host, AnswersForItsDevice) {
    m_pSession->m_nPositionInput = static_cast<std::uint8_t>(SecondInput::Analogue);
    m_pSession->m_pDevice = &m_device;
    std::wstring strView;
    Run([&] {
        Operator::Ask([&] {
            auto* pList = static_cast<CComboBox*>(m_pScreen->GetControl(IDC_DISPLAY_LIST));
            strView = pList->GetItemText(2);
        });
    });
    EXPECT_EQ(strView, L"F/V vs P (0-10V)");
}

TEST_F(Host, OwnsTheMessagesOfTheScreen) {
    Run([this] {
        Operator::Tap(*m_pScreen, IDC_START);
        Operator::Tap(*m_pScreen, IDC_STOP);
    });
    ASSERT_EQ(m_view.m_messages.size(), 2u);
    std::string image;
    m_view.m_messages[0]->ToBytes(image);
    std::string expected{39, 1, 41, 2, '\xB8', 0x0B, 0, '\xE8', 0x03};
    expected.resize(44);
    EXPECT_EQ(image, expected);
    EXPECT_EQ(m_view.m_messages[0]->HostHook11(1), "");

    // Messages of the host's own.
    CObjRTGeneric copy;
    copy.m_nType = 40;
    copy.CopyFrom(m_view.m_messages[0].get());
    copy.ToBytes(image);
    expected[0] = 40;
    EXPECT_EQ(image, expected);
    const std::uint8_t abyStop[] = {2};
    const std::uint32_t nLength = 1;
    copy.FromBytes(abyStop, &nLength);
    copy.ToBytes(image);
    expected = {40, 1, 41, 2};
    expected.resize(44);
    EXPECT_EQ(image, expected);
}

TEST_F(Host, MakesPacketsThatOwnTheirPayload) {
    std::vector<std::uint8_t> payload{RTCMD_STATUS, 0, 0, 1};
    const auto* const pBytes = payload.data();
    const std::shared_ptr<RTPacket> spPacket = MakePacket(RTPACKET_CONTROL, std::move(payload));
    EXPECT_EQ(spPacket->m_nType, 39);
    EXPECT_EQ(spPacket->m_nLength, 4);
    EXPECT_EQ(spPacket->m_pData, pBytes);  // taken over, not copied
    EXPECT_EQ(spPacket->m_pData[3], 1);
    EXPECT_EQ(MakePacket(RTPACKET_SAMPLES, {})->m_nLength, 0);
}

}  // namespace
