#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "platform/operator/PaintWatch.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Panel.h"

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::uint8_t THREE_CHANNELS = 3;  ///< an instrument mode
constexpr std::uint16_t VALUE_RATE = 65535;
constexpr std::size_t PACKETS = 1000;
constexpr auto PACKET_TIME = std::chrono::milliseconds(10);
constexpr unsigned PATIENCE_MS = 5000;
constexpr int STARTS = 7;

double SecondsBetween(SteadyClock::time_point begin, SteadyClock::time_point end) {
    return std::chrono::duration<double>(end - begin).count();
}

/// The packets as a link delivers them, and when each is first seen in a picture.
class PacketTimes {
  public:
    PacketTimes() : m_spans(PACKETS) {
        std::uint32_t nCount = 0;
        for (std::size_t i = 0; i < PACKETS; ++i) {
            const std::uint64_t nDue = (i + 1) * VALUE_RATE * PACKET_TIME.count() / 1000;
            std::vector<std::int16_t> values(3 * (nDue - nCount));
            for (std::size_t k = 0; k < values.size(); ++k)
                values[k] = static_cast<std::int16_t>((nCount + k) % 4001);
            nCount = static_cast<std::uint32_t>(nDue);
            m_packets.push_back(MakeSamples(static_cast<std::uint8_t>(i), values));
            m_counts.push_back(nCount);
        }
    }

    /// Pushes each packet at its time.
    void PushAll(RTPacketQueue& queue) {
        const auto begin = SteadyClock::now();
        for (std::size_t i = 0; i < PACKETS; ++i) {
            std::this_thread::sleep_until(begin + PACKET_TIME * i);
            m_spans[i].m_pushed = SteadyClock::now();
            queue.push(m_packets[i]);
        }
    }

    /// The picture shows nCount values of a channel.
    void NotePicture(std::uint32_t nCount) {
        const auto now = SteadyClock::now();
        while (m_nSeen < PACKETS && m_counts[m_nSeen] <= nCount) m_spans[m_nSeen++].m_seen = now;
    }
    bool AreAllSeen() const { return m_nSeen == PACKETS; }

    std::vector<double> GetSeconds() const {
        std::vector<double> seconds;
        for (const Span& span : m_spans)
            seconds.push_back(SecondsBetween(span.m_pushed, span.m_seen));
        return seconds;
    }

  private:
    struct Span {
        SteadyClock::time_point m_pushed;
        SteadyClock::time_point m_seen;
    };
    std::vector<std::shared_ptr<RTPacket>> m_packets;
    std::vector<std::uint32_t> m_counts;  ///< values of a channel, up to and with the packet
    std::vector<Span> m_spans;
    std::size_t m_nSeen = 0;
};

/// The time from a packet's push to the end of the first paint of the plot that began when the
/// curve held its values.
void MeasurePackets(CTable& table) {
    PacketTimes times;
    TestPanel panel(THREE_CHANNELS);
    panel.m_pSession->m_nHostValueRate = VALUE_RATE;
    panel.Run([&] {
        Operator::Ask([&] { panel.m_pDialog->SetControlText(IDC_SAMPLE_TIME, L"15"); });
        if (!panel.Tap(IDC_START)) throw std::runtime_error("the capture cannot be started");
        std::shared_ptr<const RTCurveData> spCurve;
        {
            const std::lock_guard lock(panel.m_pSession->m_lock);
            spCurve = panel.m_pSession->m_spCurves->FirstCurve(0);
        }
        std::unique_ptr<CPaintWatch> pWatch;
        std::uint32_t nCount = 0;
        Operator::Ask([&] {
            pWatch = std::make_unique<CPaintWatch>(
                *panel.m_pDialog->GetControl(IDC_PLOT_1), [&] { nCount = spCurve->GetCount(); },
                [&] { times.NotePicture(nCount); });
        });
        times.PushAll(panel.m_queue);
        const bool bSeen = Operator::WaitUntil([&] { return times.AreAllSeen(); }, PATIENCE_MS);
        Operator::Ask([&] { pWatch.reset(); });
        if (!bSeen) throw std::runtime_error("packets have not been painted");
    });

    const std::vector<double> seconds = times.GetSeconds();
    table.AddTime("packet to picture, median of 1,000", FindMedian(seconds), 0.025);
    table.AddTime("packet to picture, worst of 1,000", *std::ranges::max_element(seconds));
}

/// From before the library is loaded until its plot has been painted.
double TimeStart() {
    const auto begin = SteadyClock::now();
    SteadyClock::time_point shown;
    TestPanel panel(THREE_CHANNELS);
    panel.Run([&] {
        std::unique_ptr<CPaintWatch> pWatch;
        Operator::Ask([&] {
            CWnd* pPlot = panel.m_pDialog->GetControl(IDC_PLOT_1);
            pWatch = std::make_unique<CPaintWatch>(
                *pPlot, [] {}, [&] { shown = SteadyClock::now(); });
            pPlot->Invalidate();
        });
        const bool bShown =
            Operator::WaitUntil([&] { return shown != SteadyClock::time_point(); }, PATIENCE_MS);
        Operator::Ask([&] { pWatch.reset(); });
        if (!bShown) throw std::runtime_error("the screen does not show");
    });
    return SecondsBetween(begin, shown);
}

}  // namespace

void MeasureScreen(CTable& table) {
    std::vector<double> starts;
    for (int i = 0; i < STARTS; ++i) starts.push_back(TimeStart());
    table.AddTime("start to painted screen, first", starts.front(), 0.25);
    table.AddTime("start to painted screen, median of 7", FindMedian(starts), 0.25);
    MeasurePackets(table);
}
