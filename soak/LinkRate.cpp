// The most that an instrument sends, over a link, for long.
#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <unistd.h>

#include "soak/ExpectedPress.h"
#include "soak/LeftBehind.h"
#include "soak/LinkedScreen.h"
#include "soak/ProcessTimes.h"
#include "soak/ServedProgram.h"
#include "soak/Soak.h"
#include "soak/Watch.h"

namespace {

constexpr std::uint8_t MODE = 3;
constexpr unsigned CHANNELS = 3;
constexpr std::uint16_t RATE = 65535;
/// Of a core, for the link's threads of a process.
constexpr double PROCESSOR_LIMIT = 0.02;
/// By which the most memory of a minute may differ from that of the second one.
constexpr double GROWTH_LIMIT = 1;
/// Shorter runs are held to their values only.
constexpr double SHORTEST_MEASURED = 120;

/// Holds all values that come to what the press sends, on a thread of its own: computing those
/// costs more than the link.
class CValueCheck {
  public:
    CValueCheck(std::uint32_t nSeed, CSoakRecord& record)
        : m_record(record), m_expected(MODE, SecondInput::Position, nSeed) {
        m_expected.Start({0, true, RATE, 0});
        m_thread = StartThread([this] { Run(); });
    }
    ~CValueCheck() { Finish(); }

    /// Any thread.
    void Take(const std::shared_ptr<RTPacket>& spPacket) { m_queue.push(spPacket); }
    std::uint64_t GetCount() const { return m_nChecked; }

    void Finish() {
        m_bStop = true;
        m_thread.Close();
    }

    /// After Finish: the values of the stroke that came last, of all channels in turn.
    const std::vector<std::int16_t>& GetLastStroke() const { return m_stroke; }

  private:
    void Run() {
        PressTokens tokens;
        std::shared_ptr<RTPacket> spPacket;
        for (;;) {
            const bool bStop = m_bStop;
            while (m_queue.try_pop(spPacket)) {
                tokens.clear();
                AppendTokens(tokens, *spPacket);
                for (const std::uint32_t nToken : tokens) Compare(nToken);
            }
            if (bStop) return;
            SleepMilliseconds(5);
        }
    }

    void Compare(std::uint32_t nToken) {
        if (m_bWrong) return;
        if (nToken != m_expected.Next()) {
            m_record.Fault("not what the press sends, behind " + std::to_string(m_nChecked) +
                           " values");
            m_bWrong = true;
        }
        if (nToken == TOKEN_NEW_CURVE) return m_stroke.clear();
        m_stroke.push_back(static_cast<std::int16_t>(nToken));
        ++m_nChecked;
    }

    CSoakRecord& m_record;
    CExpectedPress m_expected;
    RTPacketQueue m_queue;
    std::vector<std::int16_t> m_stroke;
    bool m_bWrong = false;
    std::atomic<std::uint64_t> m_nChecked{0};
    std::atomic<bool> m_bStop{false};
    CThreadHandle m_thread;
};

/// One of the two ends of the link: what it costs.
struct End {
    const char* m_pName;
    pid_t m_nProcess;
    double m_dSeconds = 0;            ///< of its link threads, when the measuring began
    std::vector<double> m_minutes{};  ///< the most memory of each minute, in megabytes

    void Look(std::size_t nMinute) {
        m_minutes.resize(nMinute + 1);
        m_minutes.back() = std::max(m_minutes.back(), MeasureResidentMegabytes(m_nProcess));
    }
    double GetShare(double dPassed) const {
        return (MeasureThreadSeconds(m_nProcess, "link") - m_dSeconds) / dPassed;
    }
};

void HoldToLimits(const End& end, double dPassed, CSoakRecord& record) {
    const std::string strName = end.m_pName;
    if (end.GetShare(dPassed) >= PROCESSOR_LIMIT)
        record.Fault(strName + "'s link takes too much of a core");
    // The last minute is mostly not a whole one, which makes no difference here.
    const double dMost = *std::max_element(end.m_minutes.begin() + 1, end.m_minutes.end());
    if (dMost > end.m_minutes[1] + GROWTH_LIMIT) record.Fault(strName + "'s memory grows");
}

}  // namespace

void RunLinkRate(const SoakOptions& options, double dMinutes, CSoakRecord& record) {
    CServedProgram instrument({"--mode=" + std::to_string(MODE),
                               "--value-rate=" + std::to_string(RATE),
                               "--seed=" + std::to_string(options.m_nSeed)});
    CValueCheck check(options.m_nSeed, record);
    CLinkedScreen screen(instrument.GetAddress(), {},
                         [&](const auto& spPacket) { check.Take(spPacket); });
    TestPanel& panel = screen.m_panel;
    panel.Run([&] {
        const CWatch watch(panel, options.m_nPatience, options.m_nSeed, record);
        panel.Tap(IDC_SAMPLE_TIME_MODE);
        std::array ends{End{"instrument", instrument.GetProcess()}, End{"panel", ::getpid()}};
        for (End& end : ends) end.m_dSeconds = MeasureThreadSeconds(end.m_nProcess, "link");
        panel.Tap(IDC_START);
        const std::uint64_t nBegin = TickMilliseconds();
        double dPassed = 0;
        while (dPassed < dMinutes * 60 && !record.HasFaults()) {
            SleepMilliseconds(500);
            const std::size_t nMinute = static_cast<std::size_t>(dPassed / 60);
            dPassed = static_cast<double>(TickMilliseconds() - nBegin) / 1000;
            const LinkStatus status = screen.GetStatus();
            if (status.m_state != PanelState::Connected || status.m_nLostInCapture > 0 ||
                (dPassed > 1 && !status.m_bRunning))
                record.Fault("the status says: " + screen.DescribeNow());
            for (End& end : ends) end.Look(static_cast<std::size_t>(dPassed / 60));
            if (static_cast<std::size_t>(dPassed / 60) == nMinute) continue;
            std::printf("%3zu min: %12ju values right", nMinute + 1,
                        static_cast<std::uintmax_t>(check.GetCount()));
            for (const End& end : ends)
                std::printf("; %s %.1f MB, link %.2f %% of a core", end.m_pName,
                            end.m_minutes[nMinute], 100 * end.GetShare(dPassed));
            std::printf("\n");
            std::fflush(stdout);
        }
        if (!IsSanitized() && dPassed >= SHORTEST_MEASURED)
            for (const End& end : ends) HoldToLimits(end, dPassed, record);
        panel.Tap(IDC_STOP);
        Operator::WaitFor("the end of the capture", [&] { return panel.IsEnabled(IDC_START); });
        panel.Settle();
        check.Finish();

        record.Count("values held to the press's", check.GetCount());
        const double dLeast = (dPassed - 1) * RATE * CHANNELS;
        if (static_cast<double>(check.GetCount()) < dLeast) record.Fault("values are missing");
        for (std::size_t k = 0; k < CHANNELS; ++k) {
            std::vector<std::int16_t> values;
            for (std::size_t n = k; n < check.GetLastStroke().size(); n += CHANNELS)
                values.push_back(check.GetLastStroke()[n]);
            if (panel.ValuesOf(k) != values) record.Fault("the screen has other values");
        }
    });
}
