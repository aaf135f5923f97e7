// How long after a stroke the real panel shows what became of it.
#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "PressStroke.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "host/Panel.h"
#include "host/VerdictStrip.h"
#include "platform/operator/Operator.h"
#include "platform/operator/PaintWatch.h"
#include "tests/support/Panel.h"

namespace {

using SteadyClock = std::chrono::steady_clock;
using Moment = SteadyClock::time_point;

constexpr unsigned STROKES = 20;
constexpr unsigned SECONDS = 3;  ///< of a capture
constexpr std::size_t VALUES = std::size_t{SECONDS} * PRESS_STROKE_RATE;
constexpr auto PACKET_TIME = std::chrono::milliseconds(10);
constexpr std::size_t PACKET_VALUES = PRESS_STROKE_RATE / 100;
constexpr std::size_t PACED_PACKETS = 50;  ///< those before come at once
constexpr unsigned PATIENCE_MS = 10000;

/// Does nothing by itself.
class CStillInstrument final : public IInstrument {
  public:
    void Send(std::string_view) override {}
    InstrumentState GetState() const override { return {}; }
};

/// A panel that judges the strokes it is sent.
class CJudgingPanel {
  public:
    CJudgingPanel() {
        RTCurveData curve(VALUES);
        FillPressStroke(curve);
        for (std::size_t n = 0; n < VALUES; n += PACKET_VALUES)
            m_packets.push_back(
                MakeSamples(0, {curve.GetValues() + n, curve.GetValues() + n + PACKET_VALUES}));
        m_folder.Put("limits.json", MakePressLimits(curve).GetText());
    }

    /// @return the seconds from each stroke's last value to the picture that shows its verdict
    std::vector<double> Run() {
        const std::string strFolder = m_folder.GetPath().native();
        const std::string strSettings = strFolder + "/settings.ini";
        const std::string strLimits = strFolder + "/limits.json";
        const std::string strSeconds = std::to_string(SECONDS);
        const std::string strRate = std::to_string(PRESS_STROKE_RATE);
        const char* const apArguments[] = {
            "--data-folder", strFolder.c_str(), "--settings",   strSettings.c_str(),
            "--limits",      strLimits.c_str(), "--value-rate", strRate.c_str(),
            "--sample-time", strSeconds.c_str()};
        const Options options = ReadOptions(apArguments);
        std::optional<CPacketSink> sink;
        CPanel panel(options, PrepareJudgement(options), [&](CPacketSink packets) {
            sink = std::move(packets);
            return std::make_unique<CStillInstrument>();
        });
        std::vector<double> seconds;
        Operator::CScript script([&] { seconds = Work(panel, *sink); });
        panel.Run();
        script.Join();
        return seconds;
    }

  private:
    std::vector<double> Work(const CPanel& panel, const CPacketSink& sink) {
        CDlgBase* pScreen = nullptr;
        Operator::WaitFor("the screen", [&] {
            return (pScreen = dynamic_cast<CDlgBase*>(Operator::ModalWindow())) != nullptr &&
                   !panel.GetStatusText().empty();
        });
        std::unique_ptr<CPaintWatch> pWatch;
        std::optional<Moment> shown;
        std::uint64_t nAwaited = 0;
        bool bAwaited = false;
        const CVerdictStrip& strip = *panel.GetVerdictStrip();
        Operator::Ask([&] {
            pWatch = std::make_unique<CPaintWatch>(
                strip,
                [&] {
                    const JudgedStroke* const pLast = strip.GetLastStroke();
                    bAwaited = pLast && pLast->m_nNumber == nAwaited;
                },
                [&] {
                    if (bAwaited && !shown) shown = SteadyClock::now();
                });
        });
        std::vector<double> seconds;
        for (unsigned n = 1; n <= STROKES; ++n) {
            Operator::Ask([&] {
                nAwaited = n;
                shown.reset();
            });
            if (!Operator::Tap(*pScreen, IDC_START))
                throw std::runtime_error("the capture cannot be started");
            const Moment pushed = SendStroke(sink);
            Operator::WaitFor(
                "the verdict", [&] { return shown.has_value(); }, PATIENCE_MS);
            seconds.push_back(std::chrono::duration<double>(*shown - pushed).count());
            Operator::WaitFor("the end of the capture",
                              [&] { return IsEnabled(*pScreen, IDC_START); });
        }
        Operator::Ask([&] { pWatch.reset(); });
        pScreen->PostMessage(WM_CLOSE);
        return seconds;
    }

    /// @return when its last value was sent
    Moment SendStroke(const CPacketSink& sink) const {
        const std::size_t nPaced = m_packets.size() - PACED_PACKETS;
        for (std::size_t n = 0; n < nPaced; ++n) sink(m_packets[n]);
        const Moment begin = SteadyClock::now();
        Moment pushed;
        for (std::size_t n = nPaced; n < m_packets.size(); ++n) {
            std::this_thread::sleep_until(begin + PACKET_TIME * (n - nPaced));
            pushed = SteadyClock::now();
            sink(m_packets[n]);
        }
        return pushed;
    }

    const TemporaryFolder m_folder;
    std::vector<std::shared_ptr<RTPacket>> m_packets;
};

}  // namespace

void MeasureVerdict(CTable& table) {
    const std::vector<double> seconds = CJudgingPanel().Run();
    table.AddTime("last value to verdict on the screen, of 20",
                  FindFigures(seconds, Figures::Median));
    table.AddTime("the slowest of them", FindQuantile(seconds, 1), 0.100);
}
