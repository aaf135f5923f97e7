// Screens worked at random over a link on which anything happens.
#include <cstdlib>
#include <random>
#include <stdexcept>

#include "link/InstrumentServer.h"
#include "platform/system/Paths.h"
#include "plugin/ScreenTemplate.h"
#include "soak/CountingInstrument.h"
#include "soak/LinkCheck.h"
#include "soak/LinkedScreen.h"
#include "soak/RandomOperator.h"
#include "soak/RoughWay.h"
#include "soak/ScreenByScreen.h"
#include "soak/Soak.h"
#include "soak/Watch.h"

namespace {

/// The longest that leave is taken.
constexpr std::uint64_t LEAVE_MS = 1000;

constexpr std::uint8_t MODES[] = {1, 2, 3, 10, 12, 20, 21, 22, 99};
constexpr std::uint16_t RATES[] = {500, 8000, 40000, 65535};
constexpr std::size_t LINE_RATES = 2;  ///< that a line carries

/// A certificate of this machine, which is its own authority.
TlsFiles MakeCertificate(const TemporaryFolder& folder) {
    const std::string strPath = folder.GetPath() / "press";
    const std::string strCommand =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj "
        "/CN=press -addext subjectAltName=IP:127.0.0.1 -keyout " +
        strPath + ".key -out " + strPath + ".crt 2>/dev/null";
    if (std::system(strCommand.c_str()) != 0) throw std::runtime_error("no certificate");
    return {"", strPath + ".crt", strPath + ".key"};
}

/// An instrument that comes and goes, with another value rate each time if its captures may have
/// one, and its sets numbered anew.
class CInstrument {
  public:
    /// @param strAddress where it waits for panels
    CInstrument(const InstrumentOptions& options, const std::string& strAddress,
                const TlsFiles& tlsFiles, CSentCurves& sent)
        : m_options(options), m_address(ReadLinkAddress(strAddress, LinkUse::Listen)),
          m_tlsFiles(tlsFiles), m_sent(sent) {}

    /// @return where it waits
    LinkAddress Begin() {
        constexpr unsigned FIRST_STEP = 20021;
        ++m_nToken;
        if (!m_options.m_bCaptureLocked && m_nToken > 1)
            m_options.m_nValueRate = RATES[m_nToken % std::size(RATES)];
        m_pPress = std::make_unique<CCountingInstrument>(m_options, FIRST_STEP * m_nToken, m_sent);
        ServerSettings settings;
        Hello& hello = settings.m_hub.m_hello;
        hello.m_nMode = m_options.m_nMode;
        hello.m_nSecondInput = static_cast<std::uint8_t>(m_options.m_secondInput);
        hello.m_nValueRate = m_options.m_nValueRate;
        hello.m_bLocked = m_options.m_bCaptureLocked;
        hello.m_nToken = m_nToken;
        settings.m_addresses = {m_address};
        settings.m_tls = m_tlsFiles;
        settings.m_onNews = [](const std::string&) {};
        m_pServer = std::make_unique<CInstrumentServer>(std::move(settings), *m_pPress);
        const std::string strAddress = m_pServer->GetAddresses().at(0);
        m_pServer->Start();
        return ReadLinkAddress(strAddress, LinkUse::Connect);
    }
    void End() {
        m_pServer.reset();
        m_pPress.reset();
    }

  private:
    InstrumentOptions m_options;
    const LinkAddress m_address;
    const TlsFiles m_tlsFiles;
    CSentCurves& m_sent;
    std::uint32_t m_nToken = 0;
    std::unique_ptr<CCountingInstrument> m_pPress;
    std::unique_ptr<CInstrumentServer> m_pServer;
};

/// A capture goes through as if nothing had been.
void CaptureWhole(CLinkedScreen& screen, const CSentCurves& sent, CSoakRecord& record) {
    TestPanel& panel = screen.m_panel;
    const auto isIdle = [&] {
        return panel.IsEnabled(IDC_START) && !screen.GetStatus().m_bRunning;
    };
    panel.Tap(IDC_STOP);
    Operator::WaitFor("idle controls", isIdle, 5000);
    Operator::Wait(300);  // what else was asked of the instrument is answered by then
    Operator::Ask([&] {
        panel.m_pDialog->SetControlText(IDC_SAMPLE_TIME, L"1");
        panel.m_pDialog->SetControlText(IDC_TRIGGER, L"0");
    });
    panel.Tap(IDC_CLEAR);
    panel.Tap(IDC_START);
    Operator::Wait(500);
    panel.Tap(IDC_STOP);
    Operator::WaitFor("the end of a capture", isIdle, 5000);
    panel.Settle();
    const auto last = sent.GetLast().value_or(CSentCurves::Curve{});
    const auto values = panel.ValuesOf(0);
    if (values.empty() || static_cast<std::uint16_t>(values[0]) != last.m_nFirst ||
        values.size() != std::size_t{last.m_nSets} * sent.GetLayout().m_nPerChannel)
        record.Fault("in fair weather a capture has " + std::to_string(values.size()) +
                     " values, of " + std::to_string(last.m_nSets) +
                     " sets; the status says: " + screen.DescribeNow());
    record.Count("whole captures in fair weather");
}

/// What the instrument captures by itself is shown.
void AwaitNextCurve(CLinkedScreen& screen, const CSentCurves& sent, CSoakRecord& record) {
    const auto isShown = [&] {
        const auto last = sent.GetLast();
        const std::size_t nCurves = screen.m_panel.CurveCount(0);
        const auto values = screen.m_panel.ValuesOf(0, nCurves - 1);
        return last && !values.empty() && static_cast<std::uint16_t>(values[0]) == last->m_nFirst;
    };
    Operator::WaitFor("the curve that the instrument sends", isShown, 5000);
    record.Count("next curves in fair weather");
}

InstrumentOptions PickInstrument(const SoakOptions& options, bool bLine, std::mt19937& random) {
    InstrumentOptions instrument;
    instrument.m_nMode = options.m_nMode.value_or(MODES[random() % std::size(MODES)]);
    instrument.m_secondInput = SecondInput{static_cast<std::uint8_t>(random() % 3)};
    instrument.m_nValueRate = RATES[random() % (bLine ? LINE_RATES : std::size(RATES))];
    instrument.m_bCaptureLocked = random() % 5 == 0;
    return instrument;
}

void RunLinkedScreen(const SoakOptions& options, unsigned nScreen, unsigned nMilliseconds,
                     CSoakRecord& record) {
    std::seed_seq seeds{options.m_nSeed, nScreen};
    std::mt19937 random(seeds);
    const WayKind kind = WayKind{static_cast<std::uint8_t>(random() % 3)};
    const bool bLine = kind == WayKind::Line;
    constexpr const char* NAMES[] = {"TCP", "TLS", "line"};
    const std::string strName = NAMES[static_cast<std::size_t>(kind)];
    const InstrumentOptions instrumentOptions = PickInstrument(options, bLine, random);
    record.SetScreen("seed " + std::to_string(options.m_nSeed) + ", screen " +
                     std::to_string(nScreen) + ", mode " +
                     std::to_string(instrumentOptions.m_nMode) + ", " + strName +
                     (instrumentOptions.m_bCaptureLocked ? ", locked" : ""));
    const TemporaryFolder folder;  // a file's values are those of its own instrument
    SetProgramFolder(folder.Path(""));

    CSentCurves sent(FindValueLayout(instrumentOptions.m_nMode, instrumentOptions.m_secondInput));
    const TlsFiles tlsFiles = kind == WayKind::Tls ? MakeCertificate(folder) : TlsFiles{};
    CRoughWay way(kind, static_cast<std::uint32_t>(random()), record);
    CInstrument instrument(instrumentOptions, way.GetInstrumentAddress(), tlsFiles, sent);
    way.Open(instrument.Begin().m_nPort, [&](bool bThere) {
        if (bThere) return instrument.Begin().m_nPort;
        instrument.End();
        return std::uint16_t{0};
    });
    CLinkedScreen screen(way.GetPanelAddress(), {tlsFiles.m_strCertificate, "", ""});
    TestPanel& panel = screen.m_panel;
    CRandomOperator hand(panel, folder.Path(""), static_cast<std::uint32_t>(random()), record,
                         {random() % 4 == 0, 100, 4000});
    CLinkCheck check(screen, sent, way, options.m_nPatience, record);
    const auto nWatchSeed = static_cast<std::uint32_t>(random());
    const bool bEndsFair = random() % 3 != 0;  // else nothing comes through at the end
    panel.RunUntilClosed([&] {
        const CWatch watch(panel, options.m_nPatience, nWatchSeed, record,
                           {[&](const auto& spCurve, std::size_t nChannel, std::uint32_t nCount) {
                                check.CheckValues(spCurve, nChannel, nCount);
                            },
                            [&] { check.CheckState(); }});
        way.Begin();
        hand.Work(nMilliseconds);
        if (bEndsFair) way.Calm();
        const bool bOpen = hand.ReturnToScreen();
        if (!bEndsFair) way.HoldUp();
        if (bOpen && !bEndsFair) panel.Tap(IDC_START);  // so that there is something to leave
        if (bOpen && bEndsFair) {
            // Until then what happened before may still cost the connection.
            const std::uint64_t nFairTime = SILENCE_MS + options.m_nPatience / 4;
            const auto isWell = [&] {
                const auto fairSince = way.GetFairSince();
                return screen.GetStatus().m_state == PanelState::Connected && fairSince &&
                       TickMilliseconds() > *fairSince + nFairTime;
            };
            Operator::WaitFor("the connection", isWell, 30'000);
            if (instrumentOptions.m_bCaptureLocked)
                AwaitNextCurve(screen, sent, record);
            else
                CaptureWhole(screen, sent, record);
        }
        hand.CloseScreen();
    });
    const std::uint64_t nBegin = TickMilliseconds();
    screen.EndLink();
    const std::uint64_t nLeave = TickMilliseconds() - nBegin;
    record.Largest("longest leave, ms", nLeave);
    if (nLeave > LEAVE_MS + options.m_nPatience / 4)
        record.Fault("leave takes " + std::to_string(nLeave) + " ms");
    record.Count("screens, " + strName);
    way.Close();
}

}  // namespace

void RunLinkedScreens(const SoakOptions& options, CSoakRecord& record) {
    RunScreenByScreen(options, {1000, 3000, 40'000}, record,
                      [&](unsigned nScreen, unsigned nMilliseconds) {
                          RunLinkedScreen(options, nScreen, nMilliseconds, record);
                      });
    SetProgramFolder(L"");
}
