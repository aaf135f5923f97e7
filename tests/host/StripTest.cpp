// The status strip: what it says of the instrument, of files and of the values at the markers.
#include "host/StatusStrip.h"

#include <set>

#include "host/StripPainter.h"
#include "platform/system/Paths.h"
#include "plot/RTPlot.h"
#include "tests/host/Session.h"
#include "tests/support/FileBytes.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"

namespace {

class Strip : public Session {
  protected:
    /// The program's own language files, and which of them is the panel's.
    void Speak(const char* pLanguage) {
        const std::filesystem::path files = ToUtf8(GetExecutableFolder()) + "/lang";
        std::filesystem::copy(files, m_folder.GetPath() / "lang");
        std::string text;
        for (const char* p = pLanguage; *p; ++p) text += {*p, '\0'};
        m_folder.Put("lang/default.txt", text);
    }
    bool AwaitStatus(const std::wstring& strPart) {
        const bool bSaid = Await([&] { return Status().find(strPart) != std::wstring::npos; });
        if (!bSaid) ADD_FAILURE() << ToUtf8(strPart) << " is not in " << ToUtf8(Status());
        return bSaid;
    }
    /// Whether assistive technology is told so of the strip.
    bool IsHeard(const std::wstring& strText) {
        return std::ranges::any_of(Operator::ListAccessible(*m_pScreen), [&](const auto& control) {
            return control.m_strKind == "text" && control.m_strName == strText;
        });
    }
    void TapBar(int nID) {
        const CWnd* pBar = nullptr;
        Operator::Ask([&] { pBar = m_pScreen->GetControl(IDC_BAR); });
        EXPECT_TRUE(pBar && Operator::Tap(*pBar, nID));
    }
    /// Taps the plot so many pixels from its left edge.
    void TapPlot(int x) {
        CRect area;
        Operator::Ask([&] {
            area = m_pScreen->GetControl(IDC_PLOT_1)->GetWindowRect();
            m_pScreen->ScreenToClient(area);
        });
        Operator::Press(*m_pScreen, {area.left + x, area.top + 100});
        Operator::Release(*m_pScreen, {area.left + x, area.top + 100});
    }
};

TEST_F(Strip, FollowsACaptureFromTheWaitForItsTriggerToItsEnd) {
    Run({"--sample-time=1", "--trigger=12.5"}, [this] {
        EXPECT_EQ(Status(), L"Ready\nSimulated press");
        EXPECT_TRUE(IsHeard(Status()));
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        AwaitStatus(L"Waiting for trigger 12.5 %\nSimulated press");
        AwaitStatus(L" of 1 s\nSimulated press");
        AwaitStatus(L"Ready");
    });
    Run({"--trigger=99.9"}, [this] {  // the press reaches 76 percent
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        AwaitStatus(L"Waiting for trigger 99.9 %");
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_STOP));
        AwaitStatus(L"Stopped after 0.0 s");
        EXPECT_TRUE(IsHeard(L"Stopped after 0.0 s\nSimulated press"));
    });
}

TEST_F(Strip, SpeaksTheLanguageOfThePanel) {
    Speak("German");
    Run({"--capture-locked"}, [this] { AwaitStatus(L"s\nSimulierte Presse (gesperrt)"); });
    Run({"--desktop"}, [this] { EXPECT_EQ(Status(), L"Kein Messger\u00E4t"); });
}

TEST_F(Strip, SaysWhatBecameOfFiles) {
    const std::wstring strFolder = FromUtf8(m_folder.GetPath().native());
    const auto save = [this] {
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_SAVE));
        EXPECT_TRUE(AwaitModal(L"Real Time file name"));
        Operator::Type(L"run1");
        Operator::PressKey(Operator::Key::Enter);
    };
    Run({"--sample-time=1"}, [&] {
        EXPECT_TRUE(Operator::Tap(*m_pScreen, IDC_START));
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_SAVE); }));
        m_folder.Put("RealTimeFiles", "in the way of the folder");
        save();
        AwaitStatus(L"\nNot saved: run1.rt3\nNot a directory.");
        EXPECT_TRUE(Operator::PressModalButton(L"OK"));
        std::filesystem::remove(m_folder.GetPath() / "RealTimeFiles");
        save();
        AwaitStatus(L"\nSaved: run1.rt3\n" + strFolder + L"/RealTimeFiles");

        TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        Operator::AnswerFileDialog(strFolder + L"/a.csv");
        AwaitStatus(L"\nExported: a.csv\n" + strFolder);
    });
    const std::string strFile = m_folder.GetPath() / "cut.rt3";
    m_folder.Put("cut.rt3", FileBytes{FileBytes::SmallCapture()}.Text().substr(0, 9));
    Run(
        {"--desktop", strFile.c_str()},
        [this] { AwaitStatus(L"\nNot loaded: cut.rt3\nThe file ends too early."); },
        FromUtf8(strFile).c_str());
}

TEST_F(Strip, ShowsBothQuantitiesAtTheMarkersAndTheirDifferences) {
    m_folder.Put("a.rt3", FileBytes{FileBytes::SmallCapture()}.Text());
    const std::string strFile = m_folder.GetPath() / "a.rt3";
    Run({"--desktop", strFile.c_str()}, [&] {
        AwaitStatus(L"\nLoaded: a.rt3\n" + FromUtf8(m_folder.GetPath().native()));
        TapBar(CDlgBarMainMenu::ID_INFO);
        TapBar(CDlgBarInfo::ID_MARKER_A);
        // Four values on 657 pixels right of the margin: two pairs.
        TapPlot(40 + 100);
        AwaitStatus(L"\nForce A 100 B \u2013 \u0394 \u2013\nVoltage A -200 B \u2013 \u0394 \u2013");
        TapPlot(40 + 250);
        AwaitStatus(L"\nForce A 100 B 300 \u0394 200\nVoltage A -200 B -50 \u0394 150");
    });
}

TEST(StripTexts, AreRightForEveryState) {
    using enum InstrumentActivity;
    const std::pair<InstrumentState, const wchar_t*> states[] = {
        {{Waiting, false, 5, 3000, 0, 0, L""}, L"Waiting for trigger 0.5 %"},
        {{Capturing, false, 0, 3000, 1299, 1, L""}, L"Capturing 1.2 of 3 s"},
        {{Capturing, false, 0, 2500, 99, 1, L""}, L"Capturing 0.0 of 2.5 s"},
        {{Capturing, true, 0, 0, 61000, 41, L""}, L"Capturing stroke 41, 61.0 s"},
        {{Stopped, false, 0, 3000, 1299, 1, L""}, L"Stopped after 1.2 s"},
        {{Stopped, true, 0, 0, 61000, 41, L""}, L"Stopped: stroke 41, 61.0 s"},
        {{Unreachable, false, 0, 0, 0, 0, L"silence"}, L"No connection"},
        {{Ready, false, 0, 3000, 3000, 1, L""}, L"Ready"},
    };
    for (const auto& [state, pHead] : states)
        EXPECT_EQ(DescribeInstrument(state, L"press", false).m_strHead, pHead);
    const auto& lost = states[6].first;
    EXPECT_EQ(DescribeInstrument(lost, L"press", true).m_strDetail, L"silence (locked)");
    EXPECT_EQ(DescribeInstrument(lost, L"press", false).m_mood, StripMood::Alarm);
    EXPECT_EQ(NameInstrument(L"/some/stroke.csv"), L"Recording stroke.csv");
}

TEST(StripPainter, KeepsLongTextsWithinTheirField) {
    static constexpr int WIDTH = 795;
    const auto paint = [](const StripContents& contents) {
        CBitmap bitmap;
        bitmap.CreateBitmap(WIDTH, STRIP_HEIGHT);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        dc.SelectBitmap(&bitmap);
        PaintStrip(dc, {0, 0, WIDTH, STRIP_HEIGHT}, contents);
        dc.SelectBitmap(nullptr);
        return bitmap;
    };
    /// The columns in which two pictures differ, from the first to behind the last.
    const auto compare = [](const CBitmap& a, const CBitmap& b) {
        std::pair<int, int> columns{WIDTH, 0};
        for (int x = 0; x < WIDTH; ++x)
            for (int y = 0; y < STRIP_HEIGHT; ++y)
                if (a.GetPixel(x, y) != b.GetPixel(x, y))
                    columns = {std::min(columns.first, x), x + 1};
        return columns;
    };
    const std::wstring strLong = std::wstring(5000, L'x') + L".rt3";
    // What became of the file stays before a name of any length, beside the longest values too.
    const auto look = [&](const std::wstring& strHead, std::size_t nKept) {
        return paint({{},
                      {StripMood::Alarm, strHead, L"", nKept},
                      {{L"Position", L"A -32768", L"B -32768", L"\u0394 -65535"}}});
    };
    const std::wstring strLead = L"Nicht exportiert: ";
    const CBitmap whole = look(strLead + strLong, strLead.size());
    const CBitmap lead = look(strLead, 0);
    EXPECT_GE(compare(whole, lead).first, compare(look(L"", 0), lead).second);
    StripContents empty, filled;
    filled.m_file = {StripMood::Quiet, L"Saved: " + strLong, strLong, 7};
    for (const bool bMarkers : {false, true}) {
        int nRoomEnd = WIDTH;
        if (bMarkers) {
            const CBitmap before = paint(empty);
            empty.m_markers = filled.m_markers = {{L"Force", L"A 1", L"B 2", L"\u0394 1"}};
            nRoomEnd = compare(before, paint(empty)).first - 8;
        }
        const auto [nBegin, nEnd] = compare(paint(empty), paint(filled));
        EXPECT_TRUE(nBegin >= 264 && nBegin < 270) << nBegin;
        EXPECT_TRUE(nEnd <= nRoomEnd - 8 && nEnd > nRoomEnd - 30) << nEnd << " of " << nRoomEnd;
    }
    std::set<COLORREF> grounds;
    for (const auto mood : {StripMood::Quiet, StripMood::Busy, StripMood::Waits, StripMood::Alarm})
        grounds.insert(paint({{mood, L"", L""}, {}, {}}).GetPixel(100, 20));
    EXPECT_EQ(grounds.size(), 4u);
}

TEST(MarkerValues, AreThoseOfTheNewestCurveAsFarAsItHasCome) {
    using Rows = std::vector<MarkerValues>;
    RTPlot plot;
    plot.m_nChannel = 1;
    EXPECT_EQ(ReadMarkerValues(plot, true), Rows());
    plot.m_nMarkerB = 3;
    EXPECT_EQ(ReadMarkerValues(plot, true), Rows(2)) << "without curves";
    plot.m_spCurves = std::make_shared<CRTCurves>();
    plot.m_spCurves->AddCurve(1, 8);
    const auto spCurve = plot.m_spCurves->AddCurve(1, 8);
    std::ranges::copy(std::array{1, -2, 30, -32768, 5, 6}, spCurve->GetFreeValues().begin());
    spCurve->PublishCount(5);
    plot.m_nMarkerA = 5;
    EXPECT_EQ(ReadMarkerValues(plot, true), (Rows{{5, 30}, {std::nullopt, -32768}}));
    EXPECT_EQ(ReadMarkerValues(plot, false), (Rows{{std::nullopt, -32768}}));
    plot.m_nMarkerA = INT32_MAX;
    EXPECT_EQ(ReadMarkerValues(plot, true), (Rows{{std::nullopt, 30}, {std::nullopt, -32768}}));
}

}  // namespace
