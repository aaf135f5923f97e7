// Captures through the real screen: its buttons, the reader thread, the messages to the instrument.
#include <gtest/gtest.h>

#include "acquisition/ObjRTGeneric.h"
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

enum State { IDLE, CAPTURING, LOCKED, LOCKED_AFTER_CAPTURE, DESKTOP, LOCKED_DESKTOP };

/// Whether a control is enabled, by state.
constexpr std::pair<int, const char*> ENABLED[] = {
    {IDC_START, "100000"},    {IDC_STOP, "010000"},         {IDC_LOAD, "100010"},
    {IDC_ZOOM_ALL, "101111"}, {IDC_CLEAR, "100100"},        {IDC_SAVE, "101111"},
    {IDC_SETTINGS, "101111"}, {IDC_CHANNEL_LIST, "101111"}, {IDC_DISPLAY_LIST, "101111"},
    {IDC_TRIGGER, "100000"},  {IDC_SAMPLE_TIME, "100000"},  {IDC_SAMPLE_TIME_MODE, "100000"},
};

void ExpectState(TestPanel& panel, State state) {
    for (const auto& [nID, pStates] : ENABLED)
        EXPECT_EQ(panel.IsEnabled(nID), pStates[state] == '1') << nID << " in " << state;
}

const std::string STOP_IMAGE = Image({0x27, 1, 0x29, 2});

}  // namespace

TEST(Screen, OpensIdleAndClosesWithoutAQueue) {
    TestPanel panel;
    panel.m_pSession->m_pPacketQueue = nullptr;
    panel.m_pSession->m_nMode = 0;
    panel.Run([&] {
        ExpectState(panel, IDLE);
        EXPECT_TRUE(panel.Tap(IDC_ZOOM_ALL));
        EXPECT_EQ(panel.m_pSession->m_nChannels, 1);
    });
    EXPECT_EQ(panel.m_pSession->m_bStopReader, 1);
    EXPECT_FALSE(panel.m_pDialog->GetHandle());
}

TEST(Screen, CapturesUntilTheSampleTimeIsOverOrTheInstrumentReportsIdle) {
    TestPanel panel(20);
    panel.m_pSession->m_nHostValueRate = 1000;
    panel.Run([&] {
        ASSERT_TRUE(panel.Tap(IDC_START));
        ASSERT_EQ(panel.m_view.m_images.size(), 1u);
        // 3000 ms, sample time, 1000 values per second, trigger 0, first values
        EXPECT_EQ(panel.m_view.m_images[0],
                  Image({0x27, 1, 0x29, 2, 0xB8, 0x0B, 0, 0xE8, 0x03, 0, 0, 0}));
        for (std::size_t n = 0; n < 3; ++n) {
            ExpectState(panel, CAPTURING);
            EXPECT_EQ(panel.ValuesOf(1).size(), n * 1000);
            panel.m_queue.push(MakeSamples(5, std::vector<std::int16_t>(2000)));
            panel.Settle();
        }
        ExpectState(panel, IDLE);

        panel.Tap(IDC_START);
        panel.m_queue.push(MakeSamples(0, {1, 2, 3, 4, 5, 6, 7, 8}));
        panel.Tap(IDC_STOP);
        ASSERT_EQ(panel.m_view.m_images.size(), 3u);
        EXPECT_EQ(panel.m_view.m_images[2], STOP_IMAGE);
        panel.Settle();
        ExpectState(panel, CAPTURING);
        panel.m_queue.push(MakeIdleReport());
        panel.Settle();
        ExpectState(panel, IDLE);
        EXPECT_EQ(panel.ValuesOf(1, 1), (std::vector<std::int16_t>{3, 4, 7, 8}));
    });
}

TEST(Screen, StopsAContinuousCaptureOnceBeforeItCloses) {
    for (const auto& [bContinuous, bStop] :
         {std::pair{true, false}, {true, true}, {false, false}}) {
        TestPanel panel(1);
        auto& images = panel.m_view.m_images;
        panel.RunUntilClosed([&, bContinuous = bContinuous, bStop = bStop] {
            // The command without a control changes what is captured, not what is shown.
            if (bContinuous) panel.m_pDialog->PostMessage(WM_COMMAND, CommandParam(1015, 0));
            panel.Tap(IDC_START);
            EXPECT_EQ(panel.TextOf(IDC_SAMPLE_TIME_MODE), L"Sample Time:");
            if (bStop) panel.Tap(IDC_STOP);
            EXPECT_TRUE(panel.TapBar(CDlgBarMainMenu::ID_CLOSE_SCREEN));
        });
        ASSERT_EQ(images.size(), bContinuous ? 2u : 1u);
        EXPECT_EQ(images[0], Image({0x27, 1, 0x29, 2, 0xB8, 0x0B, bContinuous, 0x40, 0x9C}));
        EXPECT_EQ(images.back() == STOP_IMAGE, bContinuous);
    }
}

TEST(Screen, OffersWhatTheSessionAllows) {
    for (const bool bLocked : {false, true})
        for (const bool bDesktop : {false, true}) {
            TestPanel panel(1);
            panel.m_pSession->m_bCaptureLocked = bLocked;
            panel.m_pSession->m_bDesktopMode = bDesktop;
            panel.Run([&] {
                ExpectState(panel, bDesktop  ? bLocked ? LOCKED_DESKTOP : DESKTOP
                                   : bLocked ? LOCKED
                                             : IDLE);
                panel.m_folder.Put("a.rt3", "");
                if (bLocked || !bDesktop) {  // otherwise this would be an error box
                    Operator::DropFiles(*panel.m_pDialog, {panel.m_folder.Path("a.rt3")});
                    EXPECT_EQ(Operator::ModalTitle(), L"Real Time Mode");
                }
                if (!bLocked || bDesktop) return;
                panel.m_queue.push(MakeIdleReport());
                panel.Settle();
                ExpectState(panel, LOCKED_AFTER_CAPTURE);
            });
        }
}

TEST(Screen, DropsAReturnToIdleThatANewStartHasOvertaken) {
    TestPanel panel(1);
    panel.Run([&] {
        Operator::Ask([&] {  // the reader asks for idle while the screen is about to start
            const auto spReport = MakeIdleReport();
            panel.m_queue.push(spReport);
            panel.m_queue.push(MakePacket(RTPacketType{0}, {}));
            while (spReport.use_count() > 1) SleepMilliseconds(1);
            panel.m_pDialog->SendMessage(WM_COMMAND, CommandParam(IDC_START, BN_CLICKED));
        });
        Operator::Wait(5);
        ExpectState(panel, CAPTURING);
        panel.m_queue.push(MakeIdleReport());
        panel.Settle();
        ExpectState(panel, IDLE);
    });
}

TEST(Screen, LeavesAQueueThatItCannotDrainInTime) {
    // A packet of a million empty blocks takes a millisecond or more; there are a thousand times as
    // many as the reader has time for.
    TestPanel panel(1);
    const auto spPacket = MakePacket(RTPACKET_SAMPLES, std::vector<std::uint8_t>(4'000'000));
    for (int n = 0; n < 20000; ++n) panel.m_queue.push(spPacket);
    panel.Run([] {});
    EXPECT_FALSE(panel.m_pDialog->GetHandle());
    std::shared_ptr<RTPacket> spLeft;
    EXPECT_TRUE(panel.m_queue.try_pop(spLeft));
}
