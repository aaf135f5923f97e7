// From the packet to the picture: packets as a link delivers them, and many at once.
#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "LiveScreen.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "plugin/ScreenTemplate.h"

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto PACKET_TIME = std::chrono::milliseconds(10);
constexpr std::uint32_t PACKET_VALUES = CLiveScreen::RATE / 100;  ///< of a channel
constexpr unsigned PATIENCE_MS = 10000;

std::vector<std::shared_ptr<RTPacket>> MakePackets(std::size_t nPackets) {
    std::vector<std::shared_ptr<RTPacket>> packets;
    std::vector<std::int16_t> values(std::size_t{3} * PACKET_VALUES);
    for (std::size_t i = 0; i < nPackets; ++i) {
        for (std::size_t k = 0; k < values.size(); ++k)
            values[k] = static_cast<std::int16_t>((i * PACKET_VALUES + k) % 4001);
        packets.push_back(MakeSamples(static_cast<std::uint8_t>(i), values));
    }
    return packets;
}

double SecondsBetween(SteadyClock::time_point begin, SteadyClock::time_point end) {
    return std::chrono::duration<double>(end - begin).count();
}

/// The time from a packet's push to the end of the first paint of the plot that began when the
/// curve held its values.
void MeasureWay(CTable& table) {
    constexpr std::size_t PACKETS = 1000;
    const auto packets = MakePackets(PACKETS);
    std::vector<SteadyClock::time_point> pushed(PACKETS);
    std::vector<SteadyClock::time_point> seen(PACKETS);
    std::size_t nSeen = 0;
    CLiveScreen screen;
    screen.m_onRepaint = [&](std::uint32_t nCount) {
        const auto now = SteadyClock::now();
        while (nSeen < nCount / PACKET_VALUES) seen[nSeen++] = now;
    };
    screen.Run([&] {
        screen.StartCapture(PACKETS / 100);
        const auto begin = SteadyClock::now();
        for (std::size_t i = 0; i < PACKETS; ++i) {
            std::this_thread::sleep_until(begin + PACKET_TIME * i);
            pushed[i] = SteadyClock::now();
            screen.m_panel.m_queue.push(packets[i]);
        }
        Operator::WaitFor(
            "the last picture", [&] { return nSeen == PACKETS; }, PATIENCE_MS);
    });

    std::vector<double> seconds;
    for (std::size_t i = 0; i < PACKETS; ++i) seconds.push_back(SecondsBetween(pushed[i], seen[i]));
    table.AddTime("packet to picture, of 1,000", FindFigures(seconds, Figures::Median), 0.020);
    table.AddTime("packet to picture, 99 % of 1,000 within", FindQuantile(seconds, 0.99), 0.050);
}

/// Packets that have waited for the reader, as after a stall.
void MeasureBacklog(CTable& table, const std::string& strCores) {
    constexpr std::size_t PACKETS = 2000;
    constexpr std::uint32_t VALUES = PACKETS * PACKET_VALUES;
    constexpr int TIMES = 5;
    const auto packets = MakePackets(PACKETS);
    std::vector<double> interface, reader, waits, repaints;
    CLiveScreen screen;
    screen.Run([&] {
        for (int i = 0; i < TIMES; ++i) {
            screen.StartCapture(VALUES / CLiveScreen::RATE);
            SteadyClock::time_point shown;
            Operator::Ask([&] {
                screen.m_onRepaint = [&](std::uint32_t nCount) {
                    if (nCount == VALUES) shown = SteadyClock::now();
                };
            });
            const LiveTimes before = screen.ReadTimes();
            const auto begin = SteadyClock::now();
            for (const auto& spPacket : packets) screen.m_panel.m_queue.push(spPacket);
            const auto isShown = [&] { return shown != SteadyClock::time_point(); };
            Operator::WaitFor("the last picture", isShown, PATIENCE_MS);
            Operator::Wait(100);  // for repaints that come after it
            const LiveTimes taken = screen.ReadTimes() - before;
            interface.push_back(taken.m_dInterface);
            reader.push_back(taken.m_dReader);
            repaints.push_back(static_cast<double>(taken.m_nRepaints));
            waits.push_back(SecondsBetween(begin, shown));
            Operator::Ask([&] { screen.m_onRepaint = nullptr; });
            if (!screen.m_panel.Tap(IDC_CLEAR))
                throw std::runtime_error("the capture has not ended");
        }
    });
    const std::string strWhat = "2,000 packets at once, " + strCores;
    table.AddTime(strWhat + ": user interface", FindFigures(interface, Figures::Median), 0.010);
    table.AddTime(strWhat + ": packet reader", FindFigures(reader, Figures::Median));
    table.AddTime(strWhat + ": until shown", FindFigures(waits, Figures::Median));
    table.AddNumber(strWhat + ": most repaints", *std::ranges::max_element(repaints), "repaints",
                    5);
}

}  // namespace

void MeasurePackets(CTable& table) {
    MeasureWay(table);
    MeasureBacklog(table, "all cores");
    const OneCore oneCore;
    MeasureBacklog(table, "one core");
}
