#include "instrument/PressInstrument.h"

#include <chrono>

namespace {

constexpr std::chrono::milliseconds BLOCK_TIME(10);

}  // namespace

CPressInstrument::CPressInstrument(CPacketSink sink, const ValueLayout& layout,
                                   std::unique_ptr<IPressSignal> pPress,
                                   std::optional<CaptureRequest> selfStart)
    : m_engine(std::move(sink), layout, std::move(pPress)), m_selfStart(selfStart),
      m_thread([this](const std::stop_token& stop) { Run(stop); }) {}

void CPressInstrument::Send(std::string_view image) {
    if (const auto command = ReadCommand(image)) CarryOut(*command, {}, {});
}

void CPressInstrument::CarryOut(const InstrumentCommand& command,
                                const std::function<void()>& before,
                                const std::function<void()>& after) {
    Post([=, this](CCaptureEngine::Time now) {
        if (before) before();
        m_engine.Execute(command, now);
        if (after) after();
    });
}

void CPressInstrument::OnScreenShown() {
    if (m_selfStart)
        Post([this](CCaptureEngine::Time now) { m_engine.BeginBySelf(*m_selfStart, now); });
}

InstrumentState CPressInstrument::GetState() const {
    const std::lock_guard lock(m_mutex);
    return m_state;
}

void CPressInstrument::Post(Order order) {
    {
        const std::lock_guard lock(m_mutex);
        m_orders.push_back(std::move(order));
    }
    m_wake.notify_one();
}

void CPressInstrument::Run(const std::stop_token& stop) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point nextBlock = Clock::now();
    const auto hasOrders = [this] { return !m_orders.empty(); };

    while (!stop.stop_requested()) {
        std::vector<Order> orders;
        {
            std::unique_lock lock(m_mutex);
            if (m_engine.IsRunning())
                m_wake.wait_until(lock, stop, nextBlock, hasOrders);
            else
                m_wake.wait(lock, stop, hasOrders);
            orders.swap(m_orders);
        }
        const Clock::time_point now = Clock::now();
        for (const Order& order : orders) order(now.time_since_epoch());
        if (now >= nextBlock) {
            m_engine.Advance(now.time_since_epoch());
            nextBlock = now + BLOCK_TIME;
        }
        const std::lock_guard lock(m_mutex);
        m_state = m_engine.GetState();
    }
}
