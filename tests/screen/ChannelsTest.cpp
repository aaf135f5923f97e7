// Work on two channels: what each command does to the plot on show and to the other, by what plots,
// read-outs, lists and files show of it.
#include <gtest/gtest.h>

#include "tests/plot/PlotSheet.h"
#include "tests/screen/LanguagePanel.h"
#include "tests/support/FileBytes.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"

namespace {

using Bar = CDlgBarInfo;
using Menu = CDlgBarMainMenu;
using Values = std::vector<std::int16_t>;

struct Device final : IRTDevice {
    std::uint32_t ReadParameter(std::uint32_t nNumber) override { return nNumber == 50 ? 2 : 1; }
};

/// A screen whose pictures are compared with those of plots that were never painted before.
class Channels : public ::testing::Test {
  protected:
    Channels() {
        m_session.m_pDevice = &m_device;
        m_session.m_nHostValueRate = 32800;  // 3 s: one of the 656 pixels for 150 values
        m_session.m_nHostAuxRate = 16000;
    }

    /// Expects the plot of a channel on show, as it is, and a change since the last look.
    void ExpectNewPicture(std::size_t nPlot, std::uint8_t nDisplay, const char* pStep) {
        constexpr int PLOTS[] = {IDC_PLOT_1, IDC_PLOT_2, IDC_PLOT_3};
        const std::vector<BYTE> picture =
            Operator::TakePicture(*m_panel.m_pDialog->GetControl(PLOTS[nPlot])).EncodePng();
        Operator::Ask([&] {
            const RTPlot& plot = m_session.m_aPlots[nPlot];
            PlotSheet sheet(Scaled(698), Scaled(343));
            sheet.m_graph = m_session.m_graph;
            const auto lock = plot.LockSession();
            sheet.ShowAs(plot);
            sheet.m_plot.m_nChannel = static_cast<std::uint8_t>(nPlot);
            sheet.m_plot.m_nDisplay = nDisplay;
            sheet.m_plot.m_nMode = m_session.m_nMode;
            sheet.Paint();
            EXPECT_TRUE(picture == sheet.m_bitmap.EncodePng()) << pStep;
        });
        EXPECT_TRUE(picture != m_lastPicture) << pStep;
        m_lastPicture = picture;
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_EQ(m_panel.IsVisible(PLOTS[k]), k == nPlot) << pStep;
    }
    void ExpectReadOuts(const wchar_t* pDistance, const wchar_t* pPercent, const char* pStep) {
        EXPECT_EQ(m_panel.BarText(Bar::ID_TIME_DISTANCE), pDistance) << pStep;
        EXPECT_EQ(m_panel.BarText(Bar::ID_TRIGGER_PERCENT), pPercent) << pStep;
    }
    /// A packet of so many sets of force and position of two channels.
    void Push(int nSets, int nForce) {
        Values values;
        for (int i = 0; i < nSets; ++i)
            for (const int n : {nForce + i, 40 - i, -nForce - 2 * i, 3 * i})
                values.push_back(static_cast<std::int16_t>(n));
        m_panel.m_queue.push(MakeSamples(5, values));
        m_panel.Settle();
    }
    void EndCapture() {
        m_panel.m_queue.push(MakeIdleReport());
        m_panel.Settle();
    }

    Device m_device;
    LanguagePanel m_language{false, 2, 2};
    TestPanel& m_panel = *m_language.m_pPanel;
    CRealTimeData& m_session = *m_panel.m_pSession;
    std::vector<BYTE> m_lastPicture;
};

}  // namespace

TEST_F(Channels, KeepWhatIsTheirsFromCaptureToFile) {
    m_panel.Run([&] {
        EXPECT_EQ(int{m_session.m_graph.m_nGraphRate}, 32800);
        m_panel.TapBar(Menu::ID_INFO);
        ASSERT_TRUE(m_panel.Select(IDC_CHANNEL_LIST, L"Channel 2"));
        ExpectNewPicture(1, 0, "empty");
        ASSERT_TRUE(m_panel.Select(IDC_DISPLAY_LIST, L"Position (0-10V)"));
        m_panel.Tap(IDC_START);
        EXPECT_EQ(m_panel.m_view.m_images.back()[11], 0) << "the display of channel 1";
        Push(400, 100);
        ExpectNewPicture(1, 1, "first packet");
        Push(9000, 300);
        ExpectNewPicture(1, 1, "second packet");
        EndCapture();
        ExpectNewPicture(1, 1, "extremes");
        m_panel.Select(IDC_DISPLAY_LIST, L"F/V vs P (0-10V)");
        ExpectNewPicture(1, 2, "both quantities");
        m_panel.Select(IDC_DISPLAY_LIST, L"Position (0-10V)");
        ExpectNewPicture(1, 1, "position");

        // Markers and trigger level of channel 2: 100 pixels of 150 values apart.
        m_panel.TapBar(Bar::ID_MARKER_A);
        m_panel.TapPlot(40 + 50);
        ExpectNewPicture(1, 1, "marker A");
        m_panel.TapPlot(40 + 145);
        ExpectNewPicture(1, 1, "marker B");
        ExpectReadOuts(L"375", L"0", "markers of channel 2");
        m_panel.TapBar(Bar::ID_MARKER_A);
        m_panel.TapBar(Bar::ID_MARKER_B);  // takes its place
        m_panel.TapPlot(40 + 125);
        ExpectReadOuts(L"300", L"0", "marker B moved");
        m_panel.TapBar(Bar::ID_MARKER_A);
        m_panel.TapPlot(40 + 70);
        ExpectReadOuts(L"225", L"0", "marker A moved");
        m_panel.TapPlot(40 + 145);
        for (const int nID : {Bar::ID_TIME_DISTANCE, Bar::ID_TRIGGER_PERCENT}) {
            m_panel.TapBar(nID);
            Operator::Type(L"9");
        }
        ExpectReadOuts(L"300", L"0", "they only show");

        m_panel.Select(IDC_CHANNEL_LIST, L"Channel 1");
        EXPECT_EQ(m_panel.TextOf(IDC_DISPLAY_LIST), L"Force/Voltage");
        ExpectNewPicture(0, 0, "channel 1");
        ExpectReadOuts(L"0", L"0", "nothing set on channel 1");
        m_panel.TapBar(Bar::ID_TRIGGER);
        m_panel.TapPlot(300, 20);
        ExpectNewPicture(0, 0, "trigger level");
        const RTPlot& first = m_session.m_aPlots[0];
        const std::wstring strPercent = std::to_wstring(first.m_nTriggerLevel / 50);
        ExpectReadOuts(L"0", strPercent.c_str(), "trigger of channel 1");
        // The line stands at the finger, a row lower for the level's cut-off fraction.
        const int yLine = Scaled(20) + 1;
        const CWnd& plot = *m_panel.m_pDialog->GetControl(IDC_PLOT_1);
        EXPECT_EQ(Operator::TakePicture(plot).GetPixel(Scaled(90), yLine), RGB(255, 0, 255));
        m_panel.Select(IDC_CHANNEL_LIST, L"Channel 2");
        ExpectReadOuts(L"300", L"0", "channel 2 again");
        EXPECT_EQ(m_panel.TextOf(IDC_DISPLAY_LIST), L"Position (0-10V)");
        Operator::Press(*m_panel.m_pDialog, m_panel.AtPlot(100, 100));
        Operator::MoveTo(*m_panel.m_pDialog, m_panel.AtPlot(300, 100));
        EXPECT_EQ(m_session.m_aPlots[1].m_nDragBandX, Scaled(300));
        Operator::Release(*m_panel.m_pDialog, m_panel.AtPlot(300, 100));
        ExpectNewPicture(1, 1, "zoomed");
        m_panel.Tap(IDC_ZOOM_ALL);
        ExpectNewPicture(1, 1, "the whole of it");

        m_session.m_nHostValueRate = 17000;  // after the capture
        m_session.m_nHostAuxRate = 17000;
        m_panel.SaveAs(L"two");
        FileBytes saved;
        saved.Long(4).Byte(2).Byte(2).Word(32800).Word(16000).Spans({98400, 98400, 1});
        saved.Byte(14).Byte(3);
        for (const int nSign : {1, -1}) {
            saved.Long(1).Word(0).Long(18800).Long(98400);
            for (const auto& [nSets, nForce] : {std::pair{400, 100}, {9000, 300}})
                for (int i = 0; i < nSets; ++i)
                    saved.Words(nSign > 0 ? std::vector{nForce + i, 40 - i}
                                          : std::vector{-nForce - 2 * i, 3 * i});
            saved.Pulses({{800, 5}, {18800, 5}}).Longs(std::vector(10, -1));
            if (nSign > 0)
                saved.Words({40, -8959, 9299, 100});
            else
                saved.Words({26997, 0, -100, -18298});
        }
        saved.Long(0);
        EXPECT_TRUE(m_language.m_folder.Get("RealTimeFiles/two.rt3") == saved.Text());

        // Another capture is loaded: of other spans, rates and mode.
        FileBytes other;
        other.Long(4).Byte(1).Byte(1).Word(500).Word(125).Spans({4, 7, 1}).Byte(14).Byte(3);
        for (const int nCount : {4, 6}) {
            other.Long(1).Word(0).Long(nCount).Long(nCount + 1);
            for (int i = 0; i < nCount; ++i) other.Word(1000 * nCount + 100 * i);
            other.Pulses({}).Longs(std::vector(10, -1)).Words({4300, 4100, 4200, 4000});
        }
        other.Long(0);
        m_language.m_folder.Put("RealTimeFiles/other.rt3", other.Text());
        m_panel.Tap(IDC_LOAD);
        CWnd* pList = Operator::ModalWindow();
        Operator::Select(*pList->GetControl(CDlgListFiles::ID_FILES), L"other");
        Operator::Tap(*pList, IDOK);
        Operator::Wait(1);
        ExpectNewPicture(1, 1, "loaded");
        ExpectReadOuts(L"0", L"0", "cleared by the load");
        EXPECT_EQ(m_panel.TextOf(IDC_DISPLAY_LIST), L"Position (0-24V)");
        EXPECT_EQ(m_session.m_nMode, 2);
        EXPECT_EQ(m_session.m_nPositionInput, 2);
        for (std::size_t k = 0; k < 2; ++k) EXPECT_EQ(m_session.m_aPlots[k].m_nViewEnd, k ? 7 : 5);
        m_panel.TapBar(Bar::ID_BACK);
        m_panel.TapBar(Menu::ID_EXPORT_CSV);
        m_panel.AnswerFileDialog(m_language.m_folder.Path("out"));
        EXPECT_EQ(m_language.m_folder.Get("out.csv"),
                  "Force, Distance\r\n6.000,6.100\r\n6.200,6.300\r\n6.400,6.500");

        m_panel.TapBar(Menu::ID_INFO);
        m_panel.Select(IDC_CHANNEL_LIST, L"Channel 1");
        ExpectReadOuts(L"0", strPercent.c_str(), "the load clears the plot on show alone");
        EXPECT_EQ(m_panel.TextOf(IDC_DISPLAY_LIST), L"Force/Voltage");
        ExpectNewPicture(0, 0, "channel 1 of the loaded");
    });
}

TEST_F(Channels, AreClearedAndShownAnew) {
    m_panel.Run([&] {
        m_panel.TapBar(Menu::ID_INFO);
        m_panel.Select(IDC_CHANNEL_LIST, L"Channel 2");
        m_panel.Tap(IDC_START);
        Push(9000, 300);
        EndCapture();
        ExpectNewPicture(1, 0, "captured");
        const RTPlot& plot = m_session.m_aPlots[1];
        const auto mark = [&] {
            m_panel.TapBar(Bar::ID_MARKER_A);
            m_panel.TapPlot(100);
            m_panel.TapPlot(195);
            m_panel.TapBar(Bar::ID_TRIGGER);
            m_panel.TapPlot(300, 20);
        };
        mark();
        ExpectNewPicture(1, 0, "marked");
        m_panel.TapBar(Bar::ID_CLEAR_TRIGGER);
        ExpectNewPicture(1, 0, "trigger cleared");
        ExpectReadOuts(L"375", L"0", "trigger cleared");
        m_panel.TapBar(Bar::ID_CLEAR_MARKERS);
        ExpectNewPicture(1, 0, "markers cleared");
        ExpectReadOuts(L"0", L"0", "markers cleared");
        EXPECT_EQ(plot.m_nMarkerA, -1);
        EXPECT_EQ(plot.m_nMarkerB, -1);

        mark();
        m_panel.Tap(IDC_CLEAR);
        Operator::Wait(1);
        ExpectNewPicture(1, 0, "cleared");
        ExpectReadOuts(L"0", L"0", "cleared");
        EXPECT_EQ(plot.m_nMarkerB, -1);
        EXPECT_EQ(plot.m_nTriggerLevel, -1);
        for (std::size_t k = 0; k < 2; ++k) EXPECT_EQ(m_panel.CurveCount(k), 0u);

        // Without the bar, Clear leaves the markers.
        m_panel.Tap(IDC_START);
        Push(9000, 300);
        EndCapture();
        mark();
        m_panel.TapBar(Bar::ID_BACK);
        ExpectNewPicture(1, 0, "marked again");
        m_panel.Tap(IDC_CLEAR);
        Operator::Wait(1);
        ExpectNewPicture(1, 0, "cleared without the bar");
        EXPECT_NE(plot.m_nMarkerA, -1);
        EXPECT_NE(plot.m_nTriggerLevel, -1);

        m_panel.Tap(IDC_SAMPLE_TIME_MODE);
        m_panel.Tap(IDC_START);
        ExpectNewPicture(1, 0, "a continuous capture");
        Push(9000, 300);
        ExpectNewPicture(1, 0, "its values");
        EXPECT_TRUE(m_panel.TapBar(Menu::ID_INFO)) << "the bars stay usable";
        EndCapture();
        m_panel.Drag(100, 300);
        ExpectNewPicture(1, 0, "zoomed");
        m_panel.Tap(IDC_SETTINGS);
        Operator::PressKey(Operator::Key::Escape);
        ExpectNewPicture(1, 0, "the whole of it, after the settings");
        EXPECT_EQ(plot.m_nViewEnd, 98400);
    });
}

TEST_F(Channels, AreDrawnInTheirColumns) {
    m_session.m_nMode = 3;
    // The channel list is sorted by its texts; channel 1 has the last one here.
    m_language.m_folder.Put("lang/English.txt",
                            std::string("0\0\t\0\t\0001\0002\0000\0\t\0\t\0Z\0", 18));
    m_panel.Run([&] {
        EXPECT_EQ(m_panel.TextOf(IDC_CHANNEL_LIST), L"Channel 2");
        m_panel.Tap(IDC_START);
        Values values(60000);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<std::int16_t>(i * i % 4001);
        for (int n = 0; n < 3; ++n) m_panel.m_queue.push(MakeSamples(0, values));
        EndCapture();
        for (const std::size_t k : {2u, 1u, 0u}) {
            m_panel.Select(IDC_CHANNEL_LIST, k ? L"Channel " + std::to_wstring(k + 1) : L"Z");
            ExpectNewPicture(k, 0, "a channel of three");
        }
    });
}
