// An instrument on a press signal, in real time.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "instrument/CaptureEngine.h"
#include "instrument/Instrument.h"

/// Runs a capture engine on a thread of its own, against the steady clock. While a capture runs a
/// block of values leaves every 10 ms, as a link delivers them; a command is carried out at once.
///
/// Threads: as IInstrument says. The engine belongs to the instrument's thread.
class CPressInstrument : public IInstrument {
  public:
    /// @param selfStart a capture that begins by itself once the screen is shown
    CPressInstrument(CPacketSink sink, const ValueLayout& layout,
                     std::unique_ptr<IPressSignal> pPress,
                     std::optional<CaptureRequest> selfStart = {});

    void Send(std::string_view image) override;
    /// As Send, with calls on the instrument's thread, either of which may be empty: `before`
    /// behind all packets of what was before the command, `after` behind those that are pushed at
    /// once because of it. They must not wait.
    void CarryOut(const InstrumentCommand& command, const std::function<void()>& before,
                  const std::function<void()>& after);
    void OnScreenShown() override;
    InstrumentState GetState() const override;

  private:
    using Order = std::function<void(CCaptureEngine::Time)>;  ///< what to do with the engine

    void Post(Order order);
    void Run(const std::stop_token& stop);

    CCaptureEngine m_engine;
    const std::optional<CaptureRequest> m_selfStart;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::vector<Order> m_orders;  ///< guarded by m_mutex
    InstrumentState m_state;      ///< of the engine, when it was last used; guarded by m_mutex
    std::jthread m_thread;        ///< last: it ends before what it uses
};
