// An instrument that is killed in the midst of its captures, and started again.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <random>

#include "soak/ExpectedPress.h"
#include "soak/LeftBehind.h"
#include "soak/LinkedScreen.h"
#include "soak/ServedProgram.h"
#include "soak/Soak.h"
#include "soak/Watch.h"

namespace {

constexpr std::uint16_t RATE = 40000;
constexpr unsigned SECONDS = 2;  ///< sample time
constexpr std::size_t WHOLE = std::size_t{SECONDS} * RATE;
/// In which a capture begins and its last values come, with the machine at work.
constexpr std::uint64_t SLACK_MS = 500;
/// Within which a screen is connected with an instrument that is back.
constexpr std::uint64_t RECONNECTION_MS = 1000;
/// Shorter runs, which are tests on whatever machine, are held to their values only.
constexpr unsigned LEAST_MEASURED = 10;

using Values = std::vector<std::int16_t>;

class CRestarts {
  public:
    CRestarts(const SoakOptions& options, CSoakRecord& record)
        : m_options(options), m_record(record), m_random(options.m_nSeed) {}

    void Run(unsigned nTimes) {
        m_bMeasured = !IsSanitized() && nTimes >= LEAST_MEASURED;
        StartInstrument(0);
        m_pScreen = std::make_unique<CLinkedScreen>(m_pInstrument->GetAddress());
        m_pScreen->m_panel.Run([&] {
            const CWatch watch(Panel(), m_options.m_nPatience, m_options.m_nSeed, m_record);
            CWnd& screen = *Panel().m_pDialog;
            Operator::Ask(
                [&] { screen.SetControlText(IDC_SAMPLE_TIME, std::to_wstring(SECONDS)); });
            for (unsigned n = 0; n < nTimes && !m_record.HasFaults(); ++n) {
                if (Pick(3) == 0) CaptureWhole();
                KillInCapture(Pick(3) == 0);
                SleepMilliseconds(Pick(2500));
                Reconnect();
            }
            CaptureWhole();
        });
        m_pScreen.reset();
        PrintReconnections();
    }

  private:
    TestPanel& Panel() { return m_pScreen->m_panel; }
    unsigned Pick(unsigned nBelow) { return static_cast<unsigned>(m_random() % nBelow); }

    bool IsIdle() { return Panel().IsEnabled(IDC_START) && !m_pScreen->GetStatus().m_bRunning; }

    template <class Condition>
    static bool Await(std::uint64_t nMilliseconds, Condition condition) {
        for (const std::uint64_t nEnd = TickMilliseconds() + nMilliseconds; !condition();
             SleepMilliseconds(1))
            if (TickMilliseconds() >= nEnd) return false;
        return true;
    }

    void StartInstrument(std::uint16_t nPort) {
        m_pInstrument.reset();
        m_pInstrument = std::make_unique<CServedProgram>(
            std::vector{"--seed=" + std::to_string(m_options.m_nSeed)}, nPort);
        m_expected.emplace(std::uint8_t{1}, SecondInput::Position, m_options.m_nSeed);
    }

    void Reconnect() {
        StartInstrument(m_pInstrument->GetPort());
        const std::uint64_t nListens = TickMilliseconds();
        const auto isConnected = [this] {
            return m_pScreen->GetStatus().m_state == PanelState::Connected;
        };
        if (!Await(10'000, isConnected)) return m_record.Fault("no connection again");
        m_reconnections.push_back(TickMilliseconds() - nListens);
        if (m_bMeasured && m_reconnections.back() > RECONNECTION_MS)
            m_record.Fault("connected again after " + std::to_string(m_reconnections.back()) +
                           " ms");
        const std::string strStatus = m_pScreen->DescribeNow();
        if (strStatus.find("connected again after") == std::string::npos)
            m_record.Fault("back, the status says: " + strStatus);
        m_record.Count("restarts");
    }

    void Start(bool bContinuous) {
        Panel().Tap(IDC_CLEAR);
        m_nStarted = TickMilliseconds();
        if (!Panel().Tap(IDC_START)) m_record.Fault("no capture can be started");
        m_expected->Start({static_cast<std::uint16_t>(SECONDS * 1000), bContinuous, RATE, 0});
    }

    /// A capture that nobody disturbs.
    void CaptureWhole() {
        Start(false);
        if (!Await(SECONDS * 1000 + 3000, [this] { return IsIdle(); }))
            m_record.Fault("a capture does not end");
        Panel().Settle();
        if (FindPlace(WHOLE + 1) != WHOLE) m_record.Fault("a capture is not the whole press's");
        m_record.Count("whole captures");
    }

    void KillInCapture(bool bContinuous) {
        if (bContinuous) Panel().Tap(IDC_SAMPLE_TIME_MODE);
        Start(bContinuous);
        SleepMilliseconds(20 + Pick(bContinuous ? 4000 : SECONDS * 1000 - 100));
        const std::size_t nBefore = Panel().ValuesOf(0).size();
        m_pInstrument->Kill();
        const std::uint64_t nKilled = TickMilliseconds();
        const bool bOver = Await(m_options.m_nPatience,
                                 [this] { return m_pScreen->GetStatus().m_bLost && IsIdle(); });
        m_record.Largest("longest from kill to idle, ms", TickMilliseconds() - nKilled);
        if (!bOver) m_record.Fault("the screen goes on without its instrument");
        const std::string strStatus = m_pScreen->DescribeNow();
        for (const char* pText : {"Connection lost", "capture cut short"})
            if (strStatus.find(pText) == std::string::npos)
                m_record.Fault("cut short, the status says: " + strStatus);

        Panel().Settle();
        const std::uint64_t nTime = nKilled - m_nStarted;
        const std::size_t nMost = nTime * RATE / 1000;
        const std::size_t nPlace = FindPlace(nMost);
        const std::uint64_t nLeast = nTime < SLACK_MS ? 0 : (nTime - SLACK_MS) * RATE / 1000;
        if (m_bMeasured && nPlace < nLeast)
            m_record.Fault("the last value stands at " + std::to_string(nPlace) + " of " +
                           std::to_string(nMost));
        if (!bContinuous && Panel().ValuesOf(0).size() < nBefore)
            m_record.Fault("values have gone with the instrument");
        if (bContinuous) Panel().Tap(IDC_SAMPLE_TIME_MODE);
    }

    /// Holds the screen's curve to what the press sends, from the beginning of a stroke on.
    /// @return which of the press's values is behind the last one
    std::size_t FindPlace(std::size_t nMostSent) {
        std::vector<std::uint32_t> sent;
        for (std::size_t nValues = 0; nValues < nMostSent;) {
            sent.push_back(m_expected->Next());
            if (sent.back() == TOKEN_END) break;
            if (sent.back() != TOKEN_NEW_CURVE) ++nValues;
        }
        const Values values = Panel().ValuesOf(0);
        if (Panel().CurveCount(0) != 1) m_record.Fault("not one curve of one capture");
        m_record.Count("values held to the press's", values.size());
        std::size_t nPlace = 0;
        for (auto itStroke = sent.begin();;) {
            const auto itEnd = std::ranges::find_if(
                itStroke, sent.end(), [](std::uint32_t nToken) { return nToken >= TOKEN_END; });
            const auto nLength = static_cast<std::size_t>(itEnd - itStroke);
            const auto isSame = [](std::int16_t nValue, std::uint32_t nToken) {
                return nValue == static_cast<std::int16_t>(nToken);
            };
            if (values.size() <= nLength &&
                std::ranges::equal(values.begin(), values.end(), itStroke,
                                   itStroke + static_cast<std::ptrdiff_t>(values.size()), isSame))
                return nPlace + values.size();
            if (itEnd == sent.end()) break;
            nPlace += nLength;
            itStroke = itEnd + 1;
        }
        m_record.Fault("the screen's " + std::to_string(values.size()) +
                       " values are not the press's");
        return 0;
    }

    void PrintReconnections() {
        if (m_reconnections.empty()) return;
        std::ranges::sort(m_reconnections);
        std::printf("connected after the instrument listens, ms: least %ju, median %ju, most %ju\n",
                    static_cast<std::uintmax_t>(m_reconnections.front()),
                    static_cast<std::uintmax_t>(m_reconnections[m_reconnections.size() / 2]),
                    static_cast<std::uintmax_t>(m_reconnections.back()));
    }

    const SoakOptions& m_options;
    CSoakRecord& m_record;
    std::mt19937 m_random;
    std::unique_ptr<CServedProgram> m_pInstrument;
    std::optional<CExpectedPress> m_expected;  ///< the one that runs
    std::unique_ptr<CLinkedScreen> m_pScreen;
    bool m_bMeasured = false;  ///< whether times count
    std::uint64_t m_nStarted = 0;
    std::vector<std::uint64_t> m_reconnections;  ///< milliseconds from listening to connected
};

}  // namespace

void RunRestarts(const SoakOptions& options, unsigned nTimes, CSoakRecord& record) {
    CRestarts(options, record).Run(nTimes);
}
