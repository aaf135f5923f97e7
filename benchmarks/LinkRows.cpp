// The link over TCP on this machine: what it takes a packet and a message, and what it costs.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "ThreadTimes.h"
#include "acquisition/RTPacket.h"
#include "link/InstrumentServer.h"
#include "link/PanelLink.h"

namespace {

using SteadyClock = std::chrono::steady_clock;
using Moment = SteadyClock::time_point;

constexpr auto PACKET_TIME = std::chrono::milliseconds(10);
constexpr std::size_t PACKETS = 1000;
constexpr std::size_t MESSAGE_EVERY = 25;  ///< packets
constexpr std::uint16_t RATE = 65535;
constexpr std::size_t PACKET_BYTES = 3 * 2 * std::size_t{RATE} / 100;
constexpr std::int32_t RESULT = 77;  ///< type of the packet that comes of a message

double SecondsBetween(Moment begin, Moment end) {
    return std::chrono::duration<double>(end - begin).count();
}

/// Hands over what it is given; of each message comes a packet.
class CBenchInstrument : public IServedInstrument {
  public:
    void Push(std::int32_t nType, std::vector<std::uint8_t> payload) {
        {
            const std::lock_guard lock(m_mutex);
            m_packets.emplace_back(nType, std::move(payload));
        }
        m_onPackets();
    }

    void Begin(std::function<void()> onPackets) override { m_onPackets = std::move(onPackets); }
    void End() override {}
    void HandOver(const SendPacket& send) override {
        std::vector<std::pair<std::int32_t, std::vector<std::uint8_t>>> packets;
        {
            const std::lock_guard lock(m_mutex);
            packets.swap(m_packets);
        }
        for (const auto& [nType, payload] : packets) send({nType, payload}, 0);
    }
    AckResult Execute(PayloadView, const SendPacket& send) override {
        HandOver(send);
        Push(RESULT, {});
        return AckResult::Taken;
    }
    void StopCapture(const SendPacket&) override {}
    void OnFirstJoined() override {}

  private:
    std::mutex m_mutex;
    std::vector<std::pair<std::int32_t, std::vector<std::uint8_t>>> m_packets;
    std::function<void()> m_onPackets;
};

/// Notes when packets come.
class CBenchScreen : public IPanelScreen {
  public:
    void PushPacket(std::shared_ptr<RTPacket> spPacket) override {
        const std::lock_guard lock(m_mutex);
        (spPacket->m_nType == RESULT ? m_results : m_samples).push_back(SteadyClock::now());
    }
    void PushPacketBehindScreen(std::shared_ptr<RTPacket>) override {}
    void OnInstrumentKnown(const Hello&) override { m_bKnown = true; }
    void SetRates(std::uint16_t, std::uint16_t) override {}
    void SetSampleTime(unsigned) override {}
    void OnStatus(const LinkStatus&) override {}

    std::vector<Moment> GetSamples() {
        const std::lock_guard lock(m_mutex);
        return m_samples;
    }
    std::vector<Moment> GetResults() {
        const std::lock_guard lock(m_mutex);
        return m_results;
    }

    std::atomic<bool> m_bKnown = false;

  private:
    std::mutex m_mutex;
    std::vector<Moment> m_samples;
    std::vector<Moment> m_results;
};

template <class Condition>
void Await(const char* pWhat, Condition condition) {
    for (const Moment end = SteadyClock::now() + std::chrono::seconds(10); !condition();
         std::this_thread::sleep_for(std::chrono::milliseconds(1)))
        if (SteadyClock::now() > end) throw std::runtime_error(std::string("no ") + pWhat);
}

/// The thread that there is more of than before.
ThreadId FindNew(const std::set<ThreadId>& before) {
    for (const ThreadId thread : ListThreads())
        if (!before.contains(thread)) return thread;
    throw std::runtime_error("no thread of the link");
}

}  // namespace

void MeasureLink(CTable& table) {
    ServerSettings settings;
    settings.m_hub.m_hello.m_nMode = 3;
    settings.m_hub.m_hello.m_nValueRate = RATE;
    settings.m_hub.m_hello.m_nToken = 1;
    settings.m_addresses = {ReadLinkAddress("tcp://127.0.0.1:0", LinkUse::Listen)};
    settings.m_onNews = [](const std::string&) {};
    CBenchInstrument instrument;
    CInstrumentServer server(std::move(settings), instrument);
    auto before = ListThreads();
    server.Start();
    const ThreadId serverThread = FindNew(before);

    CBenchScreen screen;
    PanelLinkSettings panel;
    panel.m_address = ReadLinkAddress(server.GetAddresses().at(0), LinkUse::Connect);
    before = ListThreads();
    CPanelLink link(panel, screen);
    const ThreadId panelThread = FindNew(before);
    Await("connection", [&] { return screen.m_bKnown.load(); });
    // A start opens the way for values.
    link.Send(std::string(44, 'x'), ImageKind::Start);
    Await("answer", [&] { return screen.GetResults().size() == 1; });

    const double dServer = ReadThreadSeconds(serverThread);
    const double dPanel = ReadThreadSeconds(panelThread);
    std::vector<Moment> pushed;
    std::vector<Moment> sent;
    const Moment begin = SteadyClock::now();
    for (std::size_t n = 0; n < PACKETS; ++n) {
        std::this_thread::sleep_until(begin + PACKET_TIME * n);
        if (n % MESSAGE_EVERY == 0) {
            sent.push_back(SteadyClock::now());
            link.Send(std::string(44, 'x'), ImageKind::Other);
        }
        pushed.push_back(SteadyClock::now());
        instrument.Push(RTPACKET_SAMPLES, std::vector<std::uint8_t>(PACKET_BYTES));
    }
    Await("last packet", [&] {
        return screen.GetSamples().size() == PACKETS &&
               screen.GetResults().size() == sent.size() + 1;
    });
    const double dPassed = SecondsBetween(begin, SteadyClock::now());

    std::vector<double> ways;
    const auto seen = screen.GetSamples();
    for (std::size_t n = 0; n < PACKETS; ++n) ways.push_back(SecondsBetween(pushed[n], seen[n]));
    table.AddTime("packet to the screen's queue, of 1,000", FindFigures(ways, Figures::Median),
                  0.002);
    table.AddTime("packet to the screen's queue, 99 % within", FindQuantile(ways, 0.99), 0.005);
    std::vector<double> turns;
    const auto results = screen.GetResults();
    for (std::size_t n = 0; n < sent.size(); ++n)
        turns.push_back(SecondsBetween(sent[n], results[n + 1]));
    table.AddTime("message, and back what comes of it", FindFigures(turns, Figures::Median), 0.002);
    table.AddNumber("thread of the instrument, of a core",
                    100 * (ReadThreadSeconds(serverThread) - dServer) / dPassed, "%", 2);
    table.AddNumber("thread of the panel, of a core",
                    100 * (ReadThreadSeconds(panelThread) - dPanel) / dPassed, "%", 2);
}
