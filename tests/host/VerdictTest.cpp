// The verdict on each stroke: through the real panel, by finger, on strokes made for it.
#include "host/VerdictStrip.h"

#include <csignal>
#include <map>
#include <span>
#include <sys/resource.h>

#include "host/VerdictPainter.h"
#include "link/ScreenPackets.h"
#include "platform/commandline/CommandLine.h"
#include "platform/operator/Operator.h"
#include "platform/system/Paths.h"
#include "tests/host/Session.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FileBytes.h"
#include "tests/support/Panel.h"
#include "ui/DlgListFiles.h"

namespace {

/// Sends what the test gives it, and keeps what it is sent.
class CPreparedInstrument final : public IInstrument {
  public:
    explicit CPreparedInstrument(CPacketSink sink) : m_sink(std::move(sink)) {}

    void Send(std::string_view image) override { m_images.emplace_back(image); }
    InstrumentState GetState() const override { return {}; }

    void Push(const std::shared_ptr<RTPacket>& spPacket) { m_sink(spPacket); }
    std::size_t CountPassOutputs() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            m_images, [](const std::string& image) { return image[3] == 3; }));
    }

  private:
    const CPacketSink m_sink;
    std::vector<std::string> m_images;
};

using Values = std::vector<std::int16_t>;

/// 5000 points to position 2499 and back, the force in proportion, on the way back half of it: a
/// good one comes to 249 and is at 100 where a bad one, of 499, is at 200.
Values MakeStroke(int nPositionsPerForce) {
    Values values;
    for (int n = 0; n < 5000; ++n) {
        const int nPosition = std::min(n, 4999 - n);
        const int nShare = n < 2500 ? nPositionsPerForce : 2 * nPositionsPerForce;
        values.push_back(static_cast<std::int16_t>(nPosition / nShare));
        values.push_back(static_cast<std::int16_t>(nPosition));
    }
    return values;
}
const Values GOOD = MakeStroke(10);
const Values BAD = MakeStroke(5);
const std::shared_ptr<RTPacket> NEW_CURVE = MakePacket(RTPACKET_NEW_CURVE, {'P'});

// In newtons, tenths of a value: free up to 15 N between 500 and 1000, a peak from 20 N to 30 N.
constexpr const char* LIMITS = R"({"format": "rt3-limits", "version": 1, "title": "Seat",
  "force": {"unit": "N", "factor": 0.1},
  "objects": [
    {"name": "free", "kind": "block", "x": [500, 1000], "y": [15, null]},
    {"name": "peak", "kind": "feature", "feature": "peak_force", "min": 20, "max": 30}]})";
constexpr const wchar_t* BAD_FAULTS =
    L"\nfree: touched, margin -5 N\npeak: above maximum, margin -19.9 N\n";

class Verdict : public Session {
  protected:
    /// Runs the panel on the prepared instrument.
    void RunJudged(std::vector<const char*> arguments, const std::function<void()>& script) {
        m_folder.Put("seat.json", LIMITS);
        m_makeInstrument = [this](CPacketSink sink) {
            auto pInstrument = std::make_unique<CPreparedInstrument>(std::move(sink));
            m_pInstrument = pInstrument.get();
            return pInstrument;
        };
        const std::string strLimits = m_folder.GetPath() / "seat.json";
        arguments.insert(arguments.end(), {"--limits", strLimits.c_str(), "--sample-time", "1"});
        Run(arguments, script);
    }
    std::wstring Said() {
        std::wstring strText;
        Operator::Ask([&] { strText = m_pPanel->GetVerdictStrip()->GetWindowText(); });
        return strText;
    }
    void ExpectSaid(const std::wstring& strText) {
        EXPECT_TRUE(Await([&] { return Said() == strText; }))
            << ToUtf8(strText) << " is not " << ToUtf8(Said());
    }
    void Tap(int nID) { EXPECT_TRUE(Operator::Tap(*m_pScreen, nID)) << nID; }
    void TapReset() {
        const CWnd* pButton = nullptr;
        Operator::Ask([&] { pButton = m_pPanel->GetVerdictStrip()->GetControl(0); });
        EXPECT_TRUE(Operator::Tap(*pButton, 2));
    }
    void Send(const Values& values) { m_pInstrument->Push(MakeSamples(1, values)); }
    void ReportIdle() { m_pInstrument->Push(MakeIdleReport()); }
    /// A capture that begins and ends by itself.
    void Capture(const Values& values) {
        Tap(IDC_START);
        Send(values);
        ReportIdle();
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
    }
    std::vector<std::string> ReadLog() {
        std::vector<std::string> lines;
        std::istringstream log(m_folder.Get("log"));
        for (std::string strLine; std::getline(log, strLine);) lines.push_back(strLine);
        return lines;
    }
    /// Pixels of a colour in the plot's place in the whole window.
    int CountOverPlot(COLORREF color) {
        CRect area, window;
        Operator::Ask([&] {
            area = m_pScreen->GetControl(IDC_PLOT_1)->GetWindowRect();
            m_pScreen->ScreenToClient(area);
        });
        const CBitmap picture = Operator::TakeWindowPicture(*m_pScreen);
        int nPixels = 0;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                nPixels += picture.GetPixel(x + 3, y + 33) == color;
        return nPixels;
    }

    CPreparedInstrument* m_pInstrument = nullptr;
};

TEST_F(Verdict, TenStrokesTwoOfThemBad) {
    const std::string strLog = m_folder.GetPath() / "log";
    m_folder.Put("log", "what a power failure has left");
    RunJudged({"--pass-output", "--verdict-log", strLog.c_str()}, [this] {
        ExpectSaid(L"\u2013\nSeat\nOK 0 NOK 0 ? 0");
        int nGood = 0;
        for (int n = 1; n <= 10; ++n) {
            const bool bBad = n == 3 || n == 10;
            Values values = bBad ? BAD : GOOD;
            values.insert(values.end(), 20, 9999);  // what has no room in the screen's curve
            Capture(values);
            nGood += !bBad;
            ExpectSaid((bBad ? L"NOK" : L"OK") + (L"\nSeat \u2013 Stroke " + std::to_wstring(n)) +
                       (bBad ? L": 2 failed" + std::wstring(BAD_FAULTS) : L"\n") + L"OK " +
                       std::to_wstring(nGood) + L" NOK " + std::to_wstring(n - nGood) + L" ? 0");
            EXPECT_EQ(m_pInstrument->CountPassOutputs(), nGood);
        }
        Operator::Ask([this] {
            const JudgedStroke* const pLast = m_pPanel->GetVerdictStrip()->GetLastStroke();
            ASSERT_TRUE(pLast);
            const std::int16_t* const pValues = pLast->m_spCurve->GetValues();
            EXPECT_EQ(Values(pValues, pValues + pLast->m_spCurve->GetCount()), BAD);
        });
        Tap(IDC_START);
        ReportIdle();  // of the capture before, late
        Send(Values(10000, 7));
        ExpectSaid(L"?\nSeat \u2013 Stroke 11\nconstant position\nOK 8 NOK 2 ? 1");
        EXPECT_EQ(m_pInstrument->CountPassOutputs(), 8u);
        TapReset();
        ExpectSaid(L"?\nSeat \u2013 Stroke 11\nconstant position\nOK 0 NOK 0 ? 0");
    });
    const auto lines = ReadLog();
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines[0], "what a power failure has left");
    for (std::size_t n = 1; n <= 11; ++n) {
        const std::string strVerdict = n == 11 ? "cannot" : n == 3 || n == 10 ? "fail" : "pass";
        std::string strLine = lines[n];
        for (char& ch : std::span(strLine).first(std::min<std::size_t>(strLine.size(), 32)))
            if (ch >= '0' && ch <= '9') ch = '9';
        EXPECT_TRUE(strLine.starts_with(
            R"({"at": "9999-99-99T99:99:99.999Z", "file": null, "channel": 1, "curve": )" +
            std::to_string(n) + R"(, "points": 5000, "turn": )" + (n == 11 ? "null" : "2499") +
            R"(, "verdict": ")" + strVerdict + "\", "))
            << lines[n];
    }
}

TEST_F(Verdict, InAContinuousCaptureEveryStrokeThatTheNextOneFollows) {
    const std::string strLog = m_folder.GetPath() / "log";
    RunJudged({"--pass-output", "--verdict-log", strLog.c_str()}, [this] {
        Tap(IDC_SAMPLE_TIME_MODE);
        Tap(IDC_START);
        m_pInstrument->Push(NEW_CURVE);  // at once: the first curve was no stroke
        for (const Values* pStroke : {&GOOD, &BAD, &GOOD}) {
            Send(*pStroke);
            m_pInstrument->Push(NEW_CURVE);
        }
        ExpectSaid(L"OK\nSeat \u2013 Stroke 3\nOK 2 NOK 1 ? 0");
        Send(BAD);
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 10000; }));
        EXPECT_EQ(Said(), L"OK\nSeat \u2013 Stroke 3\nOK 2 NOK 1 ? 0") << "it is not over";
        Tap(IDC_STOP);
        ReportIdle();
        ExpectSaid(L"\u2013\nSeat \u2013 Stopped, not judged\nOK 2 NOK 1 ? 0");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        // One that the instrument ends by itself is whole.
        Capture(Values(GOOD.begin(), GOOD.begin() + 6000));
        ExpectSaid(L"OK\nSeat \u2013 Stroke 4\nOK 3 NOK 1 ? 0");
        EXPECT_EQ(m_pInstrument->CountPassOutputs(), 3u);
        Tap(IDC_START);
        Send(GOOD);  // cut off when the screen closes
    });
    EXPECT_EQ(ReadLog().size(), 4u);
}

TEST_F(Verdict, WhatTheOperatorCutsOffIsNotJudged) {
    RunJudged({}, [this] {
        Tap(IDC_START);
        Send(Values(GOOD.begin(), GOOD.begin() + 6000));
        Tap(IDC_STOP);
        ReportIdle();
        ExpectSaid(L"\u2013\nSeat \u2013 Stopped, not judged\nOK 0 NOK 0 ? 0");
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        // A capture that the instrument begins leaves the controls alone: it can be cleared.
        m_pInstrument->Push(MakePacket(RTPACKET_CONTROL, {RTCMD_CAPTURE, 0, 0, 0, 0, 1}));
        m_pInstrument->Push(NEW_CURVE);
        Send(GOOD);
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 10000; }));
        Tap(IDC_CLEAR);
        Send(GOOD);
        m_pInstrument->Push(NEW_CURVE);
        Send(BAD);
        m_pInstrument->Push(NEW_CURVE);
        ExpectSaid(L"NOK\nSeat \u2013 Stroke 1: 2 failed" + std::wstring(BAD_FAULTS) +
                   L"OK 0 NOK 1 ? 0");
        // Faster than the screen's reader: each time what it has begun behind the Clear counts.
        for (int nRound = 2; nRound <= 6; ++nRound) {
            EXPECT_TRUE(Await([this] { return GetValues(0).empty(); }));
            Tap(IDC_CLEAR);
            for (const Values* pStroke : {&GOOD, &BAD}) {
                Send(*pStroke);
                m_pInstrument->Push(NEW_CURVE);
            }
            ExpectSaid(L"NOK\nSeat \u2013 Stroke " + std::to_wstring(nRound) + L": 2 failed" +
                       BAD_FAULTS + L"OK 0 NOK " + std::to_wstring(nRound) + L" ? 0");
        }
    });
}

TEST_F(Verdict, OfACaptureThatTheInstrumentBeginsLastsAsLongAsThat) {
    RunJudged({}, [this] {
        // Of 1000 ms, where the screen would take 3 s, at the rate that it has without a Start.
        m_pInstrument->Push(
            MakePacket(RTPACKET_CONTROL, {RTCMD_CAPTURE, 0, 0, 0, 0, 0, 0xE8, 0x03}));
        for (int n = 0; n < 4; ++n) Send(GOOD);
        ExpectSaid(L"OK\nSeat \u2013 Stroke 1\nOK 1 NOK 0 ? 0");
    });
}

TEST_F(Verdict, ALostConnectionCutsTheStrokeOff) {
    RunJudged({}, [this] {
        Tap(IDC_START);
        Send(Values(GOOD.begin(), GOOD.begin() + 6000));
        m_pInstrument->Push(MakeIdlePacket());
        ExpectSaid(L"\u2013\nSeat \u2013 Stopped, not judged\nOK 0 NOK 0 ? 0");
    });
}

TEST_F(Verdict, AFileThatIsLoadedCutsTheStrokeOff) {
    std::filesystem::create_directory(m_folder.GetPath() / "RealTimeFiles");
    m_folder.Put("RealTimeFiles/a.rt3", FileBytes{FileBytes::SmallCapture()}.Text());
    RunJudged({}, [this] {
        m_pInstrument->Push(MakePacket(RTPACKET_CONTROL, {RTCMD_CAPTURE, 0, 0, 0, 0, 1}));
        Send(BAD);
        EXPECT_TRUE(Await([this] { return GetValues(0).size() == 10000; }));
        Tap(IDC_LOAD);
        EXPECT_TRUE(Await([this] { return Operator::ModalWindow() != m_pScreen; }));
        const CWnd& list = *Operator::ModalWindow();
        const CWnd* pFiles = nullptr;
        Operator::Ask([&] { pFiles = list.GetControl(CDlgListFiles::ID_FILES); });
        EXPECT_TRUE(Operator::Select(*pFiles, L"a"));
        EXPECT_TRUE(Operator::Tap(list, IDOK));
        ExpectSaid(L"\u2013\nSeat \u2013 Stopped, not judged\nOK 0 NOK 0 ? 0");
        m_pInstrument->Push(NEW_CURVE);
        EXPECT_TRUE(Await([this] { return GetValues(0).empty(); }));
        EXPECT_EQ(Said(), L"\u2013\nSeat \u2013 Stopped, not judged\nOK 0 NOK 0 ? 0");
    });
}

TEST(VerdictTexts, AreInTheOperatorsLanguage) {
    const std::map<std::int32_t, std::wstring> german{
        {3250, L"tritt %1 ein"}, {3246, L"links"}, {3244, L"Abstand %1"}, {3266, L"zu wenig"}};
    const CTextSource source([&](std::int32_t nString) {
        const auto found = german.find(nString);
        return found == german.end() ? nullptr : &found->second;
    });
    Limits limits;
    limits.m_objects = {{"seat", WindowLimit()}, {"good", BlockLimit()}};
    StrokeVerdict verdict;
    verdict.m_outcome = Outcome::Fail;
    verdict.m_objects.resize(2);
    ObjectResult& seat = verdict.m_objects[0];
    seat.m_outcome = Outcome::Fail;
    seat.m_strReason = "enters by left";
    seat.m_strMarginUnit = "mm";
    for (const auto& [dMargin, pText] :
         {std::pair{-0.123456, L"-0.1235 mm"}, {-123456.7, L"-123457 mm"}, {-1e12, L"-1e+12 mm"}}) {
        seat.m_margin = dMargin;
        EXPECT_EQ(DescribeFaults(verdict, limits),
                  std::vector{L"seat: tritt links ein, Abstand " + std::wstring(pText)});
    }
    verdict.m_strReason = "too few points";
    EXPECT_EQ(DescribeFaults(verdict, limits), std::vector<std::wstring>{L"zu wenig"});
}

TEST_F(Verdict, IsOnTheChannelThatIsAskedFor) {
    RunJudged({"--mode", "20", "--limits-channel", "2"}, [this] {
        Values both;
        for (std::size_t n = 0; n < GOOD.size(); n += 2)
            both.insert(both.end(), {BAD[n], BAD[n + 1], GOOD[n], GOOD[n + 1]});
        Capture(both);
        ExpectSaid(L"OK\nSeat \u2013 Stroke 1\nOK 1 NOK 0 ? 0");
    });
}

TEST_F(Verdict, ALogThatCannotBeWrittenIsToldOnce) {
    const std::string strLog = m_folder.GetPath() / "log";
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    RunJudged({"--verdict-log", strLog.c_str()}, [&] {
        const rlimit small{5, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        Capture(GOOD);
        ExpectSaid(L"OK\nVerdict log: File too large.\nOK 1 NOK 0 ? 0");
        Capture(GOOD);
        ExpectSaid(L"OK\nVerdict log: File too large.\nOK 2 NOK 0 ? 0");
        TapReset();
        Capture(GOOD);
        ExpectSaid(L"OK\nSeat \u2013 Stroke 3\nOK 1 NOK 0 ? 0");
        setrlimit(RLIMIT_FSIZE, &before);
        Capture(GOOD);
        ExpectSaid(L"OK\nSeat \u2013 Stroke 4\nOK 2 NOK 0 ? 0");
    });
    const auto lines = ReadLog();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "{\"at\"");
    EXPECT_NE(lines[1].find("\"curve\": 4,"), std::string::npos);
}

TEST_F(Verdict, ATapOpensTheStrokeAndClosesItAgain) {
    constexpr COLORREF FORWARD = RGB(20, 60, 150);
    constexpr COLORREF FAILED = RGB(205, 0, 0);
    RunJudged({}, [&] {
        const CVerdictStrip& strip = *m_pPanel->GetVerdictStrip();
        Tap(IDC_START);
        Send(GOOD);
        ExpectSaid(L"OK\nSeat \u2013 Stroke 1\nOK 1 NOK 0 ? 0");
        EXPECT_EQ(CountOverPlot(FORWARD), 0);
        EXPECT_TRUE(Operator::Tap(strip));
        EXPECT_GT(CountOverPlot(FORWARD), 100);
        EXPECT_EQ(CountOverPlot(FAILED), 0);
        ReportIdle();
        EXPECT_TRUE(Await([this] { return IsEnabled(IDC_START); }));
        Tap(IDC_START);  // beside the window
        Send(BAD);
        EXPECT_TRUE(Await([&] { return CountOverPlot(FAILED) > 100; })) << "it follows";
        EXPECT_TRUE(Operator::Tap(strip.GetStrokeView()));
        EXPECT_FALSE(strip.GetStrokeView().IsOpen());
        EXPECT_EQ(CountOverPlot(FAILED), 0);
        EXPECT_TRUE(Operator::Tap(strip));
        EXPECT_TRUE(strip.GetStrokeView().IsOpen());
        EXPECT_TRUE(Operator::Tap(strip));
        EXPECT_FALSE(strip.GetStrokeView().IsOpen());
    });
}

TEST_F(Verdict, BadLimitsAreAnErrorAtTheStart) {
    const auto refusal = [this](std::vector<std::string> arguments) {
        std::vector<const char*> pointers{"--limits"};
        for (const std::string& str : arguments) pointers.push_back(str.c_str());
        const Options options = ReadOptions(pointers);
        return ErrorOf<CUsageError>([&] { PrepareJudgement(options); });
    };
    m_folder.Put("seat.json", LIMITS);
    const std::string strFolder = m_folder.GetPath().native() + "/";
    const std::string strSeat = strFolder + "seat.json";
    EXPECT_EQ(refusal({strFolder + "none.json"}),
              strFolder + "none.json: No such file or directory.");
    m_folder.Put("none.json", R"({"format": "rt3-limits", "version": 1, "objects": []})");
    EXPECT_EQ(refusal({strFolder + "none.json"}),
              strFolder + "none.json: objects: there are none to judge by");
    m_folder.Put("none.json", R"({"format": "rt3-limits", "version": 2, "objects": []})");
    EXPECT_EQ(refusal({strFolder + "none.json"}),
              strFolder + "none.json: version: 2 is not supported, 1 is");
    for (const char* pMode : {"2", "3", "12", "22"})
        EXPECT_EQ(refusal({strSeat, "--mode", pMode}),
                  std::string("--limits: mode ") + pMode +
                      " has no pairs of force and position; 1, 10 and 20 have, and 2 with "
                      "--second-input analogue");
    EXPECT_EQ(refusal({strSeat, "--limits-channel", "2"}),
              "--limits-channel: mode 1 has no channel 2");
    for (const char* pMode : {"2", "20"})
        EXPECT_EQ(
            refusal({strSeat, "--limits-channel=2", "--second-input=analogue", "--mode", pMode}),
            "no error");
    EXPECT_EQ(refusal({strSeat, "--verdict-log", strFolder + "nowhere/log"}),
              "--verdict-log: " + strFolder + "nowhere/log: No such file or directory.");
    m_folder.PutPipe("pipe");
    EXPECT_NE(refusal({strSeat, "--verdict-log", strFolder + "pipe"}), "no error");
}

TEST(VerdictPainter, MarksAreReadFromAfar) {
    constexpr CSize SIZE{795, VERDICT_HEIGHT};
    struct Look {
        std::optional<Outcome> m_outcome;
        COLORREF m_crGround, m_crText;
    };
    for (const Look& look : {Look{Outcome::Pass, RGB(0, 122, 61), RGB(255, 255, 255)},
                             Look{Outcome::Fail, RGB(192, 28, 28), RGB(255, 255, 255)},
                             Look{Outcome::Cannot, RGB(255, 193, 7), RGB(0, 0, 0)}}) {
        CBitmap bitmap;
        bitmap.CreateBitmap(SIZE.cx, SIZE.cy);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        dc.SelectBitmap(&bitmap);
        VerdictContents contents;
        contents.m_outcome = look.m_outcome;
        contents.m_strHead = std::wstring(5000, L'x');
        contents.m_arrFaults.assign(3, std::wstring(5000, L'x'));
        contents.m_anCounts = {1, 999999, 1};
        PaintVerdict(dc, {0, 0, SIZE.cx, SIZE.cy}, contents);
        dc.SelectBitmap(nullptr);
        EXPECT_EQ(bitmap.GetPixel(4, 40), look.m_crGround);
        CRect mark{SIZE.cx, SIZE.cy, 0, 0};
        for (int y = 1; y < SIZE.cy; ++y)
            for (int x = 0; x < 184; ++x)
                if (bitmap.GetPixel(x, y) == look.m_crText)
                    mark = {std::min(mark.left, x), std::min(mark.top, y),
                            std::max(mark.right, x + 1), std::max(mark.bottom, y + 1)};
        EXPECT_GE(mark.Height(), 48);
        EXPECT_TRUE(mark.left >= 8 && mark.right <= 176) << mark.left << " to " << mark.right;
        EXPECT_NEAR(mark.top + mark.bottom, SIZE.cy, 6);
        int nUnderButton = 0;
        for (int y = 1; y < SIZE.cy; ++y)
            for (int x = SIZE.cx - 104; x < SIZE.cx; ++x)
                nUnderButton += bitmap.GetPixel(x, y) != RGB(246, 249, 254);
        EXPECT_EQ(nUnderButton, 0);
    }
}

}  // namespace
