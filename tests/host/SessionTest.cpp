// The panel with its instrument and the real screen.
#include <algorithm>

#include "platform/windows/Controls.h"
#include "tests/host/Session.h"
#include "tests/support/FileBytes.h"

namespace {

TEST_F(Session, ACaptureArrivesWholeOnEveryChannel) {
    Run({"--mode=2", "--second-input=analogue", "--device-24v=1", "--sample-time=2",
         "--trigger=0.57"},
        [this] {
            Operator::Ask([&] {
                const auto& displays =
                    dynamic_cast<CComboBox&>(*m_pScreen->GetControl(IDC_DISPLAY_LIST));
                EXPECT_EQ(displays.GetItemText(1), L"Position (0-24V)");
            });
            EXPECT_EQ(TextOf(IDC_SAMPLE_TIME), L"2");
            EXPECT_EQ(TextOf(IDC_TRIGGER), L"0.6");
            EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
            EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
            for (const std::size_t nChannel : {0, 1}) {
                const auto values = GetValues(nChannel);
                ASSERT_EQ(values.size(), 20000u);
                // Force at the even indices, position at the odd ones.
                std::int16_t nForce = 0, nPosition = 0;
                for (std::size_t n = 0; n < values.size(); n += 2) {
                    nForce = std::max(nForce, values[n]);
                    nPosition = std::max(nPosition, values[n + 1]);
                }
                EXPECT_NEAR(nForce, nChannel == 0 ? 3800 : 3040, 250);
                EXPECT_NEAR(nPosition, 4200, 10);
            }
            EXPECT_GE(GetValues(0)[0], 30);  // the trigger level
            EXPECT_TRUE(GetValues(2).empty());
        });
}

TEST_F(Session, AContinuousCaptureRunsFromStrokeToStrokeUntilStop) {
    Run({}, [this] {
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_SAMPLE_TIME_MODE));
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        const auto spFirst = GetCurves();
        EXPECT_TRUE(Await([&] { return GetCurves() != spFirst && !GetValues(0).empty(); }));
        // A whole stroke of 1.5 s.
        EXPECT_EQ(spFirst->FirstCurve(0)->GetCount(), 15000u);
        EXPECT_FALSE(IsEnabled(IDC_START));
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_STOP));
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
    });
}

TEST_F(Session, AxesAndGridAreThereWhileTheInstrumentWaitsForItsTrigger) {
    Run({"--trigger", "99.9"}, [this] {  // the press reaches 76 percent
        const auto isShown = [this] {
            const CBitmap plot = Operator::TakePicture(*m_pScreen->GetControl(IDC_PLOT_1));
            // The grid line at 0, and the time axis' tick there.
            return plot.GetPixel(42, 118) == RGB(255, 255, 0) && plot.GetPixel(40, 310) == 0;
        };
        EXPECT_FALSE(isShown());
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        EXPECT_TRUE(Await(isShown));
        EXPECT_TRUE(GetValues(0).empty());
    });
}

TEST_F(Session, WithCaptureLockedTheInstrumentBeginsByItselfAtItsRate) {
    for (const std::uint16_t nRate : {10000, 65535}) {
        const std::string strRate = std::to_string(nRate);
        Run({"--capture-locked", "--mode=3", "--aux-rate=123", "--value-rate", strRate.c_str()},
            [this, nRate] {
                const auto spFirst = GetCurves();
                EXPECT_TRUE(
                    Await([&] { return GetCurves() != spFirst && GetValues(2).size() >= 100; }));
                EXPECT_FALSE(IsEnabled(IDC_START));
                EXPECT_FALSE(IsEnabled(IDC_STOP));
                const auto spCurve = GetCurves()->FirstCurve(2);
                EXPECT_EQ(spCurve ? spCurve->GetCapacity() : 0, 3u * nRate);
                const std::lock_guard lock(m_pSession->m_lock);
                EXPECT_EQ(m_pSession->m_aPlots[2].m_nSpanValues, 3 * nRate);
                EXPECT_EQ(int{m_pSession->m_graph.m_nGraphRate}, nRate);
                EXPECT_EQ(m_pSession->m_nAuxRate, 123);  // saved with the capture
            });
    }
}

TEST_F(Session, TheSimulatedPressGoesByItsSeedAndSecondInput) {
    const auto capture = [this](const char* pSeed, const char* pInput) {
        std::vector<std::int16_t> values;
        Run({"--capture-locked", "--seed", pSeed, "--second-input", pInput}, [&] {
            EXPECT_TRUE(Await([this] { return GetValues(0).size() >= 100; }));
            values = GetValues(0);
        });
        values.resize(100);
        return values;
    };
    const auto first = capture("7", "position");
    EXPECT_EQ(capture("7", "position"), first);
    EXPECT_NE(capture("8", "position"), first);
    // At rest: position 0, or 400 mV with their noise.
    EXPECT_NEAR(first[1], 0, 3);
    EXPECT_NEAR(capture("7", "voltage")[1], 400, 30);
}

TEST_F(Session, ADesktopShowsTheChannelsAndQuantitiesOfItsFile) {
    auto bytes = FileBytes::SmallCapture();
    bytes[4] = 20;  // the mode; the second input is a voltage
    m_folder.Put("a.rt3", {bytes.begin(), bytes.end()});
    const std::string strFile = m_folder.GetPath() / "a.rt3";
    Run({"--desktop", strFile.c_str()}, [this] {
        EXPECT_EQ(m_pSession->m_pPacketQueue, nullptr);
        EXPECT_FALSE(IsEnabled(IDC_START));
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 4; }));
        EXPECT_EQ(m_pScreen->GetWindowText(), L"Real Time Mode - a.rt3");
        EXPECT_EQ(m_pSession->m_nChannels, 2);
        EXPECT_EQ(TextOf(IDC_DISPLAY_LIST), L"Force");  // with a position: Force/Voltage
    });
    m_folder.Put("a.rt3", {bytes.begin(), bytes.begin() + 4});  // ends in front of the mode
    for (const std::string strBad : {"/nowhere.rt3", strFile.c_str()})
        Run(
            {"--desktop", strBad.c_str()},
            [this] { EXPECT_EQ(TextOf(IDC_DISPLAY_LIST), L"Force/Voltage"); },
            FromUtf8(strBad).c_str());
}

}  // namespace
