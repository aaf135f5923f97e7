#include "host/Demo.h"

#include <cstdio>
#include <mutex>
#include <stdexcept>

#include "curves/FileStore.h"
#include "evaluation/XyPicture.h"
#include "host/Judgement.h"
#include "host/LinkInstrument.h"
#include "host/VerdictStrip.h"
#include "platform/commandline/CommandLine.h"
#include "platform/operator/Operator.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "platform/windows/Controls.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"
#include "ui/DlgBarMainMenu.h"

namespace {

/// How much longer than its sample time a capture may take, in milliseconds: the wait for a trigger
/// and a loaded machine.
constexpr unsigned CAPTURE_PATIENCE = 30000;
/// How long others may take to begin a capture, and then the longest capture itself.
constexpr unsigned OTHERS_PATIENCE = 60000;
/// How much later than the screen the instrument may be at its end of a capture.
constexpr unsigned REPORT_PATIENCE = 2000;
/// How much later than the screen the judge may be, in milliseconds.
constexpr unsigned VERDICT_PATIENCE = 1000;
/// How long a window may take to come or go.
constexpr unsigned WINDOW_PATIENCE = 10000;
/// How many windows can stand in front of the screen.
constexpr int MAX_WINDOWS = 4;

class CDemoError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

bool IsEnabled(const CWnd& screen, int nID) {
    const CWnd* const pControl = screen.GetControl(nID);
    return pControl && pControl->IsWindowEnabled();
}

unsigned ReadSampleMilliseconds(const CWnd& screen) {
    std::wstring strSeconds;
    Operator::Ask([&] {
        if (const CWnd* const pEdit = screen.GetControl(IDC_SAMPLE_TIME))
            strSeconds = pEdit->GetWindowText();
    });
    return 1000 * static_cast<unsigned>(std::wcstoul(strSeconds.c_str(), nullptr, 10));
}

void PrintExtremes(const char* pWhat, const RTMinMax& extremes) {
    if (extremes.m_nMin <= extremes.m_nMax)
        std::printf(", %s %d to %d", pWhat, extremes.m_nMin, extremes.m_nMax);
}

std::filesystem::path ToPath(const std::wstring& strPath) { return ToUtf8(strPath); }

/// A name that no capture in the store has; the store takes names of another case for the same.
std::wstring FindFreeName() {
    std::wstring strName = L"demo";
    for (int n = 2; std::filesystem::exists(ToPath(GetSavePath(strName))); ++n)
        strName = L"demo" + std::to_wstring(n);
    return strName;
}

}  // namespace

CDemo::CDemo(CDlgBase& screen, CRealTimeData& session, const Options& options,
             const Judgement* pJudgement, const CVerdictStrip* pVerdictStrip,
             const CLinkInstrument* pLink)
    : m_screen(screen), m_session(session), m_options(options), m_pJudgement(pJudgement),
      m_pVerdictStrip(pVerdictStrip), m_folder(std::filesystem::absolute(options.m_strDemo)),
      m_pLink(pLink) {}

bool CDemo::Run() {
    bool bSucceeded = false;
    try {
        std::filesystem::create_directories(m_folder);
        AwaitScreen("to be shown");
        EnterNumber(IDC_SAMPLE_TIME, m_options.m_strSampleTime);
        EnterNumber(IDC_TRIGGER, m_options.m_strTrigger);
        m_options.m_bCaptureLocked ? TakeCaptureOfOthers() : TakeCapture();
        if (m_pLink && m_strIncomplete.empty()) m_strIncomplete = m_pLink->FindTrouble();
        PrintCurves();
        if (m_pJudgement) SaveVerdict();
        SavePictures();
        SaveCapture();
        ExportCurve();
        if (!m_strIncomplete.empty()) throw CDemoError(m_strIncomplete);
        bSucceeded = true;
    } catch (const std::exception& error) {
        PrintError("rtpanel", DescribeError(error));
    }
    std::fflush(stdout);
    CloseScreen();
    return bSucceeded;
}

void CDemo::TakeCapture() {
    const unsigned nSampleTime = ReadSampleMilliseconds(m_screen);
    const std::uint64_t nBegin = TickMilliseconds();
    if (!Operator::Tap(m_screen, IDC_START)) throw CDemoError("Start cannot be pressed");
    Operator::WaitFor(
        "the end of the capture", [this] { return IsEnabled(m_screen, IDC_START); },
        nSampleTime + CAPTURE_PATIENCE);
    // A curve that is full ends it on the screen before the link has told what was lost.
    if (m_pLink)
        Operator::WaitUntil([this] { return !m_pLink->GetStatus().m_bRunning; }, REPORT_PATIENCE);
    std::printf("capture      %.1f s, done after %.1f s\n", nSampleTime / 1000.0,
                static_cast<double>(TickMilliseconds() - nBegin) / 1000.0);
}

void CDemo::TakeCaptureOfOthers() {
    std::printf("capture      begins elsewhere\n");
    std::fflush(stdout);
    using enum CLinkInstrument::Progress;
    Operator::WaitFor(
        "a capture that somebody else begins", [this] { return m_pLink->GetProgress() != None; },
        OTHERS_PATIENCE);
    if (!Operator::WaitUntil([this] { return m_pLink->GetProgress() == Over; },
                             OTHERS_PATIENCE + CAPTURE_PATIENCE))
        m_strIncomplete = "the capture goes on";
    AwaitPackets();
}

/// Waits until the screen has taken all packets that it has been sent: it keeps the last one until
/// it has the next.
void CDemo::AwaitPackets() {
    std::weak_ptr<RTPacket> wpLast;
    for (int n = 0; n < 2; ++n) {
        auto spPacket = std::make_shared<RTPacket>();
        if (n == 0) wpLast = spPacket;
        m_session.m_pPacketQueue->push(std::move(spPacket));
    }
    Operator::WaitFor(
        "the screen's packets", [&] { return wpLast.expired(); }, WINDOW_PATIENCE);
}

void CDemo::PrintCurves() {
    std::array<RTCurveList, CRTCurves::CHANNEL_COUNT> channels;
    {
        const std::lock_guard lock(m_session.m_lock);
        channels = m_session.m_spCurves->m_lstCurves;
    }
    const bool bPairs = HasValuePairs(m_session.m_nMode, SecondInput{m_session.m_nPositionInput});
    for (std::size_t k = 0; k < m_session.m_nChannels; ++k) {
        if (channels[k].empty())
            throw CDemoError("channel " + std::to_string(k + 1) + " has no curve");
        const RTCurveData& curve = *channels[k].back();
        const std::uint32_t nCount = curve.GetCount();
        std::printf("channel %zu    %u of %u values, %zu line records", k + 1, nCount,
                    curve.GetCapacity(), curve.GetPulses().GetCount());
        // Of a pair the first value stands at the even index.
        std::array<RTMinMax, 2> extremes;
        for (std::uint32_t n = 0; n < nCount; ++n)
            extremes[bPairs ? n % 2 : 0].Include(curve.GetValues()[n]);
        PrintExtremes("force", extremes[0]);
        PrintExtremes("second input", extremes[1]);
        std::printf("\n");
        // Others choose the sample time, in milliseconds, and may stop.
        if (nCount != curve.GetCapacity() && m_strIncomplete.empty() && !m_options.m_bCaptureLocked)
            m_strIncomplete = "values are missing";
    }
}

void CDemo::SaveVerdict() {
    // What was cut short is not judged, and others may cut short what they please.
    const bool bSure = m_strIncomplete.empty() && !m_options.m_bCaptureLocked;
    JudgedStroke stroke;
    Operator::WaitUntil(
        [&] {
            if (const JudgedStroke* const pLast = m_pVerdictStrip->GetLastStroke()) stroke = *pLast;
            return stroke.m_verdict.has_value();
        },
        bSure ? WINDOW_PATIENCE : VERDICT_PATIENCE);
    if (!stroke.m_verdict) {
        std::printf("verdict      none\n");
        if (bSure) m_strIncomplete = "there is no verdict";
        return;
    }
    const Limits& limits = m_pJudgement->m_limits;
    std::printf("verdict      %s\n", ToUtf8(GetMark(stroke.m_verdict->m_outcome)).c_str());
    for (const std::wstring& strFault : DescribeFaults(*stroke.m_verdict, limits))
        std::printf("             %s\n", MakePrintable(ToUtf8(strFault)).c_str());

    const std::filesystem::path line = m_folder / "verdict.json";
    const std::string strLine = stroke.Write(limits) + '\n';
    CFile file(FromUtf8(line.native()), CFile::modeWrite | CFile::modeCreate);
    file.Write(strLine.data(), strLine.size());
    file.Close();
    const std::filesystem::path path = m_folder / "xy.png";
    Operator::Ask([&] {
        CBitmap bitmap;
        bitmap.CreateBitmap(XY_PICTURE_SIZE.cx, XY_PICTURE_SIZE.cy);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        dc.SelectBitmap(&bitmap);
        DrawStroke(dc, XY_PICTURE_SIZE, stroke, limits, m_options.m_secondInput);
        bitmap.SavePng(FromUtf8(path.native()));
    });
    std::printf("picture      %s\n", path.c_str());
}

void CDemo::SavePictures() {
    const auto* const pList = static_cast<const CComboBox*>(m_screen.GetControl(IDC_DISPLAY_LIST));
    std::vector<std::wstring> arrDisplays;
    Operator::Ask([&] {
        for (int n = 0; n < pList->GetCount(); ++n) arrDisplays.push_back(pList->GetItemText(n));
    });
    // From the last to the first, which is the one that the screen began with.
    for (std::size_t n = arrDisplays.size(); n > 0; --n) {
        if (arrDisplays.size() > 1 && !Operator::Select(*pList, arrDisplays[n - 1]))
            throw CDemoError("the display cannot be selected");
        std::string strName = "screen";
        if (n > 1) strName.append("-").append(std::to_string(n));
        const std::filesystem::path path = m_folder / strName.append(".png");
        Operator::TakePicture(m_screen).SavePng(FromUtf8(path.native()));
        std::printf("picture      %s (%s)\n", path.c_str(), ToUtf8(arrDisplays[n - 1]).c_str());
    }
}

void CDemo::SaveCapture() {
    const std::wstring strName = FindFreeName();
    if (!Operator::Tap(m_screen, IDC_SAVE)) throw CDemoError("Save cannot be pressed");
    PressKeys(strName);
    AwaitScreen("after the capture was saved");

    // The store is the operator's; the demonstration takes its capture out of it again.
    const std::filesystem::path path = m_folder / "capture.rt3";
    const std::filesystem::path stored = ToPath(GetSavePath(strName));
    if (!std::filesystem::exists(stored)) throw CDemoError(stored.string() + " was not saved");
    std::filesystem::copy_file(stored, path, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(stored);
    std::printf("capture file %s, %ju bytes\n", path.c_str(), std::filesystem::file_size(path));
}

void CDemo::ExportCurve() {
    const std::filesystem::path path = m_folder / "capture.csv";
    std::filesystem::remove(path);
    TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
    Operator::AnswerFileDialog(FromUtf8(path.native()));
    AwaitScreen("after the export");
    if (!std::filesystem::exists(path)) throw CDemoError(path.string() + " was not written");
    std::printf("export       %s, %ju bytes\n", path.c_str(), std::filesystem::file_size(path));
}

void CDemo::CloseScreen() {
    // Windows that a failure has left in front of the screen.
    for (int n = 0; n < MAX_WINDOWS && Operator::ModalWindow() != &m_screen; ++n)
        Operator::PressKey(Operator::Key::Escape);
    try {
        TapBar(CDlgBarMainMenu::ID_CLOSE_SCREEN);
    } catch (const CDemoError&) {
        m_screen.PostMessage(WM_CLOSE);
    }
}

void CDemo::EnterNumber(int nID, const std::wstring& strNumber) {
    if (strNumber.empty()) return;
    if (!Operator::Tap(m_screen, nID)) throw CDemoError("a number cannot be entered");
    PressKeys(strNumber);
    AwaitScreen("after a number was entered");
}

void CDemo::PressKeys(const std::wstring& strText) {
    Operator::WaitFor(
        "the on-screen keyboard", [this] { return Operator::ModalWindow() != &m_screen; },
        WINDOW_PATIENCE);
    for (const wchar_t ch : strText)
        if (!Operator::PressModalButton(std::wstring(1, ch)))
            throw CDemoError("the on-screen keyboard has no key " + ToUtf8({&ch, 1}));
    const CWnd* const pKeyboard = Operator::ModalWindow();
    if (!pKeyboard || !Operator::Tap(*pKeyboard, IDOK))
        throw CDemoError("what was entered on the keyboard cannot be confirmed");
}

void CDemo::TapBar(int nID) {
    const CWnd* pBar = nullptr;
    Operator::Ask([&] { pBar = m_screen.GetControl(IDC_BAR); });
    if (!pBar || !Operator::Tap(*pBar, nID))
        throw CDemoError("button " + std::to_string(nID) + " of the bar cannot be pressed");
}

void CDemo::AwaitScreen(const char* pWhat) {
    Operator::WaitFor(
        std::string("the screen ") + pWhat, [this] { return Operator::ModalWindow() == &m_screen; },
        WINDOW_PATIENCE);
}
