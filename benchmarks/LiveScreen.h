// The real screen during a capture, and how much its threads compute.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "benchmarks/ThreadTimes.h"
#include "platform/operator/PaintWatch.h"
#include "tests/support/Panel.h"

/// What has been computed up to a moment, in seconds, and the repaints of the plot until then.
struct LiveTimes {
    double m_dInterface = 0;
    double m_dReader = 0;
    std::size_t m_nRepaints = 0;

    LiveTimes operator-(const LiveTimes& before) const {
        return {m_dInterface - before.m_dInterface, m_dReader - before.m_dReader,
                m_nRepaints - before.m_nRepaints};
    }
};

/// A panel with the real screen on an instrument of three channels. Made on the user-interface
/// thread; everything else is for the script.
class CLiveScreen {
  public:
    /// Values per second and channel.
    static constexpr std::uint16_t RATE = 40000;

    CLiveScreen();

    /// Runs the screen with a script beside it. The plot's repaints are counted meanwhile.
    /// @throws what the script throws
    void Run(const std::function<void()>& script);

    /// @throws std::runtime_error when it cannot be started
    void StartCapture(unsigned nSeconds);

    /// The curve that the first channel is filling.
    std::shared_ptr<const RTCurveData> GetCurve();

    LiveTimes ReadTimes() const;

    /// Called with the count of the first channel's curve when the plot has been repainted: the
    /// picture shows at least so many values. User-interface thread.
    std::function<void(std::uint32_t nCount)> m_onRepaint;

    TestPanel m_panel;

  private:
    const ThreadId m_interface;
    std::set<ThreadId> m_reader;  ///< the packet reader, and what the screen may have started else
    std::shared_ptr<const RTCurveData> m_spCurve;  ///< user-interface thread
    std::atomic<std::size_t> m_nRepaints{0};
};
