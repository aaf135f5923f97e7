// The panel with its instrument and the real screen, worked as an operator would.
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>

#include "host/Panel.h"
#include "platform/operator/Operator.h"
#include "plugin/DlgBase.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Controls.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class Session : public ::testing::Test {
  protected:
    Session() {
        m_options.m_strSettingsFile = m_folder.GetPath() / "settings.ini";
        m_options.m_strDataFolder = m_folder.GetPath();
        m_options.m_nValueRate = 10000;
    }

    /// Runs the panel until the script has ended.
    void Run(const std::function<void()>& script) {
        CPanel panel(m_options);
        Operator::CScript running([&] {
            EXPECT_TRUE(
                Operator::WaitUntil([] { return Operator::ModalWindow() != nullptr; }, 5000));
            m_pScreen = static_cast<CDlgBase*>(Operator::ModalWindow());
            m_pSession = dynamic_cast<CRealTimeData*>(m_pScreen);
            script();
            m_pScreen->PostMessage(WM_CLOSE);
        });
        EXPECT_EQ(panel.Run(), 0);
        running.Join();
    }

    bool Await(const std::function<bool()>& condition) {
        return Operator::WaitUntil(condition, 20000);
    }
    bool IsEnabled(int nID) { return ::IsEnabled(*m_pScreen, nID); }
    std::shared_ptr<CRTCurves> GetCurves() {
        const std::lock_guard lock(m_pSession->m_lock);
        return m_pSession->m_spCurves;
    }
    /// The values of a channel's first curve.
    std::vector<std::int16_t> GetValues(std::size_t nChannel) {
        const auto spCurve = GetCurves()->FirstCurve(nChannel);
        if (!spCurve) return {};
        const std::uint32_t nCount = spCurve->GetCount();
        return {spCurve->GetValues(), spCurve->GetValues() + nCount};
    }

    const TemporaryFolder m_folder;
    Options m_options;
    CDlgBase* m_pScreen = nullptr;
    CRealTimeData* m_pSession = nullptr;
};

TEST_F(Session, ACaptureArrivesWholeOnEveryChannel) {
    m_options.m_nMode = 20;
    m_options.m_strSampleTime = L"2";
    Run([this] {
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
        EXPECT_TRUE(GetValues(2).empty());
    });
}

TEST_F(Session, AContinuousCaptureRunsFromStrokeToStrokeUntilStop) {
    Run([this] {
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
    m_options.m_strTrigger = L"99.9";  // the press reaches 76 percent
    Run([this] {
        const auto isShown = [this] {
            const CBitmap plot = Operator::TakePicture(*m_pScreen->GetControl(IDC_PLOT_1));
            // The grid line at 0, and the time axis' last tick: 28000 of 30000 values.
            return plot.GetPixel(42, 118) == RGB(255, 255, 0) && plot.GetPixel(652, 310) == 0;
        };
        EXPECT_FALSE(isShown());
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        EXPECT_TRUE(Await(isShown));
        EXPECT_TRUE(GetValues(0).empty());
    });
}

TEST_F(Session, WithCaptureLockedTheInstrumentBeginsByItselfAtItsRate) {
    m_options.m_bCaptureLocked = true;
    m_options.m_nMode = 3;
    m_options.m_nAuxRate = 123;
    for (const std::uint16_t nRate : {10000, 65535}) {
        m_options.m_nValueRate = nRate;
        Run([this, nRate] {
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

TEST_F(Session, WhatTheDemonstrationMakesCanBeOpenedOnADesktop) {
    m_options.m_strDemo = m_folder.GetPath() / "out";
    m_options.m_strSampleTime = L"1";
    m_options.m_nMode = 20;
    EXPECT_EQ(CPanel(m_options).Run(), 0);

    EXPECT_GT(m_folder.Get("out/screen.png").size(), 1000u);
    // The header, and one row for each of 5000 pairs, the last without a line end.
    const std::string strCsv = m_folder.Get("out/capture.csv");
    EXPECT_EQ(std::count(strCsv.begin(), strCsv.end(), '\n'), 5000);
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.GetPath() / "RealTimeFiles"));

    m_options.m_strDemo.clear();
    m_options.m_strSampleTime.clear();
    m_options.m_nMode = 1;
    m_options.m_bDesktop = true;
    m_options.m_strCaptureFile = m_folder.GetPath() / "out" / "capture.rt3";
    Run([this] {
        EXPECT_EQ(m_pSession->m_pPacketQueue, nullptr);
        EXPECT_FALSE(IsEnabled(IDC_START));
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 10000; }));
        EXPECT_EQ(m_pScreen->GetWindowText(), L"Real Time Mode - capture.rt3");
        EXPECT_EQ(m_pSession->m_nMode, 20);  // as the file says
        EXPECT_EQ(m_pSession->m_nChannels, 2);
    });
}

TEST_F(Session, AMissingDataFolderIsSaid) {
    m_options.m_strDataFolder = m_folder.GetPath() / "nowhere";
    EXPECT_THROW(CPanel(m_options).Run(), CPanelError);
}

}  // namespace
