// Captures through the real screen: its buttons, the reader thread, the messages to the instrument.
#include <gtest/gtest.h>

#include <numeric>

#include "acquisition/ObjRTGeneric.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Panel.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"

namespace {

/// The image of a capture or stop command: header, given payload bytes, zeros up to 44 bytes.
std::string Image(std::initializer_list<unsigned char> bytes) {
    std::string image(bytes.begin(), bytes.end());
    image.resize(44, '\0');
    return image;
}

constexpr int IDLE_CONTROLS[] = {IDC_START,        IDC_LOAD,         IDC_ZOOM_ALL,
                                 IDC_CLEAR,        IDC_SAVE,         IDC_SETTINGS,
                                 IDC_CHANNEL_LIST, IDC_DISPLAY_LIST, IDC_SAMPLE_TIME_MODE,
                                 IDC_SAMPLE_TIME,  IDC_TRIGGER};

void ExpectIdle(TestPanel& panel) {
    EXPECT_FALSE(panel.IsEnabled(IDC_STOP));
    for (const int nID : IDLE_CONTROLS) EXPECT_TRUE(panel.IsEnabled(nID)) << nID;
}

void ExpectCapturing(TestPanel& panel) {
    EXPECT_TRUE(panel.IsEnabled(IDC_STOP));
    for (const int nID : IDLE_CONTROLS) EXPECT_FALSE(panel.IsEnabled(nID)) << nID;
}

}  // namespace

TEST(Screen, OpensIdleAndClosesWithoutAQueue) {
    TestPanel panel;
    panel.m_pSession->m_pPacketQueue = nullptr;
    panel.m_pSession->m_nMode = 0;
    panel.Run([&] {
        ExpectIdle(panel);
        EXPECT_TRUE(panel.Tap(IDC_ZOOM_ALL));
        EXPECT_EQ(panel.m_pSession->m_nChannels, 1);
    });
    EXPECT_EQ(panel.m_pSession->m_bStopReader, 1);
    EXPECT_FALSE(panel.m_pDialog->GetHandle());
}

TEST(Screen, TakesASampleTimeCaptureToItsEnd) {
    TestPanel panel(1);
    panel.m_pSession->m_nHostValueRate = 1000;
    panel.Run([&] {
        ASSERT_TRUE(panel.Tap(IDC_START));
        ExpectCapturing(panel);
        ASSERT_EQ(panel.m_view.m_images.size(), 1u);
        // 3000 ms, sample time, 1000 values per second, trigger 0, first values
        EXPECT_EQ(panel.m_view.m_images[0],
                  Image({0x27, 1, 0x29, 2, 0xB8, 0x0B, 0, 0xE8, 0x03, 0, 0, 0}));

        std::vector<std::int16_t> block(1000);
        std::iota(block.begin(), block.end(), std::int16_t{0});
        for (int n = 0; n < 2; ++n) panel.m_queue.push(MakeSamples(5, block));
        panel.Settle();
        ExpectCapturing(panel);
        EXPECT_EQ(panel.ValuesOf(0).size(), 2000u);

        panel.m_queue.push(MakeSamples(5, block));
        panel.Settle();
        ExpectIdle(panel);
        const auto values = panel.ValuesOf(0);
        ASSERT_EQ(values.size(), 3000u);
        EXPECT_EQ(values[1234], 234);
        EXPECT_EQ(panel.m_pSession->m_spCurves->FirstCurve(0)->GetExtremes(),
                  (RTExtremes{998, 0, 999, 1}));
    });
}

TEST(Screen, StopsWhenTheInstrumentReportsIdle) {
    TestPanel panel(20);
    panel.Run([&] {
        panel.Tap(IDC_START);
        panel.m_queue.push(MakeSamples(0, {1, 2, 3, 4, 5, 6, 7, 8}));
        panel.Tap(IDC_STOP);
        ASSERT_EQ(panel.m_view.m_images.size(), 2u);
        EXPECT_EQ(panel.m_view.m_images[1], Image({0x27, 1, 0x29, 2}));
        panel.Settle();
        ExpectCapturing(panel);

        panel.m_queue.push(MakeIdleReport());
        panel.Settle();
        ExpectIdle(panel);
        EXPECT_EQ(panel.ValuesOf(0), (std::vector<std::int16_t>{1, 2, 5, 6}));
        EXPECT_EQ(panel.ValuesOf(1), (std::vector<std::int16_t>{3, 4, 7, 8}));
    });
}

TEST(Screen, KeepsEarlierCapturesUntilClear) {
    TestPanel panel(3);
    panel.Run([&] {
        for (int i = 0; i < 2; ++i) {
            panel.Tap(IDC_START);
            panel.m_queue.push(MakeSamples(0, {10, 20, 30}));
            panel.m_queue.push(MakeIdleReport());
            panel.Settle();
        }
        for (std::size_t k = 0; k < 3; ++k) EXPECT_EQ(panel.CurveCount(k), 2u);
        EXPECT_EQ(panel.ValuesOf(2, 1), (std::vector<std::int16_t>{30}));

        panel.Tap(IDC_CLEAR);
        for (std::size_t k = 0; k < 3; ++k) EXPECT_EQ(panel.CurveCount(k), 0u);
        panel.m_queue.push(MakeSamples(0, {10, 20, 30}));
        panel.Settle();
        EXPECT_EQ(panel.CurveCount(0), 0u);
    });
}

TEST(Screen, RunsContinuouslyAndStopsThatBeforeItCloses) {
    TestPanel panel(1);
    panel.RunUntilClosed([&] {
        panel.Tap(IDC_SAMPLE_TIME_MODE);
        EXPECT_EQ(panel.TextOf(IDC_SAMPLE_TIME_MODE), L"Continuous");
        EXPECT_FALSE(panel.IsVisible(IDC_SECONDS));
        EXPECT_FALSE(panel.IsVisible(IDC_SAMPLE_TIME));

        panel.Tap(IDC_START);
        EXPECT_EQ(panel.m_view.m_images.back()[6], 1);
        panel.m_queue.push(MakeSamples(0, {1, 2}));
        panel.m_queue.push(MakePacket(RTPACKET_NEW_CURVE, {'P'}));
        panel.m_queue.push(MakeSamples(0, {3, 4, 5, 6}));
        panel.Settle();
        EXPECT_EQ(panel.CurveCount(0), 1u);
        EXPECT_EQ(panel.ValuesOf(0), (std::vector<std::int16_t>{3, 4, 5, 6}));
        EXPECT_EQ(panel.m_view.m_images.size(), 1u);

        EXPECT_TRUE(panel.TapBar(CDlgBarMainMenu::ID_CLOSE_SCREEN));
    });
    ASSERT_EQ(panel.m_view.m_images.size(), 2u);
    EXPECT_EQ(panel.m_view.m_images[1], Image({0x27, 1, 0x29, 2}));
}

TEST(Screen, LeavesLockedControlsAlone) {
    TestPanel panel(1);
    panel.m_pSession->m_bCaptureLocked = 1;
    panel.Run([&] {
        constexpr int LOCKED[] = {IDC_START, IDC_STOP,        IDC_CLEAR,  IDC_SAMPLE_TIME_MODE,
                                  IDC_LOAD,  IDC_SAMPLE_TIME, IDC_TRIGGER};
        for (const int nID : LOCKED) EXPECT_FALSE(panel.IsEnabled(nID)) << nID;
        EXPECT_FALSE(panel.Tap(IDC_START));

        panel.m_queue.push(MakeIdleReport());
        panel.Settle();
        for (const int nID : LOCKED) EXPECT_EQ(panel.IsEnabled(nID), nID == IDC_CLEAR) << nID;
    });
}

TEST(Screen, ClosesUnderAFlood) {
    TestPanel panel(3);
    std::atomic<bool> bFlood{true};
    const auto spPacket = MakeSamples(0, std::vector<std::int16_t>(300, 7));
    CThreadHandle flood = StartThread([&] {
        for (int n = 1; bFlood; ++n) {
            panel.m_queue.push(spPacket);
            if (n % 1000 == 0) SleepMilliseconds(1);
        }
    });
    panel.Run([&] {
        panel.Tap(IDC_START);
        Operator::Wait(200);
        EXPECT_TRUE(panel.TapBar(CDlgBarMainMenu::ID_INFO));
        EXPECT_TRUE(panel.BarControl(CDlgBarInfo::ID_BACK));
    });
    bFlood = false;
    EXPECT_FALSE(panel.m_pDialog->GetHandle());
}
