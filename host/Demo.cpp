#include "host/Demo.h"

#include <cstdio>
#include <mutex>

#include "platform/Exceptions.h"
#include "platform/Operator.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"

namespace {

// Controls of the screen.
constexpr int ID_START = 1004;
constexpr int ID_SAMPLE_TIME = 1005;

/// How much longer than its sample time a capture may take, in milliseconds: the wait for a trigger
/// and a loaded machine.
constexpr unsigned PATIENCE = 30000;

class CDemoError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The controls as the user-interface thread sees them.
bool IsEnabled(const CWnd& screen, int nID) {
    bool bEnabled = false;
    Operator::Ask([&] {
        const CWnd* const pControl = screen.GetDlgItem(nID);
        bEnabled = pControl && pControl->IsWindowEnabled();
    });
    return bEnabled;
}

unsigned ReadSampleMilliseconds(const CWnd& screen) {
    std::wstring strSeconds;
    Operator::Ask([&] {
        if (const CWnd* const pEdit = screen.GetDlgItem(ID_SAMPLE_TIME))
            strSeconds = pEdit->GetWindowText();
    });
    return 1000 * static_cast<unsigned>(std::wcstoul(strSeconds.c_str(), nullptr, 10));
}

void PrintExtremes(const char* pWhat, const RTMinMax& extremes) {
    std::printf(", %s %d to %d", pWhat, extremes.m_nMin, extremes.m_nMax);
}

}  // namespace

CDemo::CDemo(CDlgBase& screen, CRealTimeData& session, const std::string& strFolder)
    : m_screen(screen), m_session(session), m_folder(std::filesystem::absolute(strFolder)) {}

bool CDemo::Run() {
    bool bSucceeded = false;
    try {
        std::filesystem::create_directories(m_folder);
        TakeCapture();
        PrintCurves();
        SavePicture();
        bSucceeded = true;
    } catch (const CException& error) {
        std::fprintf(stderr, "rtpanel: %s\n",
                     std::filesystem::path(error.GetErrorMessage()).c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rtpanel: %s\n", error.what());
    }
    std::fflush(stdout);
    CloseScreen();
    return bSucceeded;
}

void CDemo::TakeCapture() {
    const unsigned nSampleTime = ReadSampleMilliseconds(m_screen);
    const std::uint64_t nBegin = TickMilliseconds();
    if (!Operator::Tap(m_screen, ID_START)) throw CDemoError("Start cannot be pressed");
    // The instrument's report brings the screen back to idle, not the press of Start.
    if (IsEnabled(m_screen, ID_START)) throw CDemoError("the capture did not start");
    while (!IsEnabled(m_screen, ID_START)) {
        if (TickMilliseconds() - nBegin > nSampleTime + PATIENCE)
            throw CDemoError("the capture did not end");
        SleepMilliseconds(20);
    }
    std::printf("capture      %.1f s, done after %.1f s\n", nSampleTime / 1000.0,
                static_cast<double>(TickMilliseconds() - nBegin) / 1000.0);
}

void CDemo::PrintCurves() const {
    std::array<RTCurveList, CRTCurves::CHANNEL_COUNT> channels;
    {
        const std::lock_guard lock(m_session.m_lock);
        channels = m_session.m_spCurves->m_lstCurves;
    }
    for (std::size_t k = 0; k < m_session.m_nChannels; ++k) {
        if (channels[k].empty())
            throw CDemoError("channel " + std::to_string(k + 1) + " has no curve");
        const RTCurveData& curve = *channels[k].back();
        const std::uint32_t nCount = curve.GetCount();
        std::printf("channel %zu    %u of %u values, %zu line records", k + 1, nCount,
                    curve.GetCapacity(), curve.GetPulses().GetCount());
        std::array<RTMinMax, 2> extremes;  // even indices, odd indices
        for (std::uint32_t n = 0; n < nCount; ++n) extremes[n % 2].Include(curve.GetValues()[n]);
        PrintExtremes("first values", extremes[0]);
        PrintExtremes("second", extremes[1]);
        std::printf("\n");
        if (nCount != curve.GetCapacity()) throw CDemoError("the curve is not full");
    }
}

void CDemo::SavePicture() {
    const std::filesystem::path path = m_folder / "screen.png";
    Operator::TakePicture(m_screen).SavePng(path.wstring());
    std::printf("picture      %s\n", path.c_str());
}

void CDemo::CloseScreen() { m_screen.PostMessage(WM_CLOSE); }
