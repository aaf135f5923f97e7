// Watches a screen while others work it: whether it answers, and whether what it shows and holds is
// in order.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <random>

#include "soak/Counts.h"
#include "tests/support/Panel.h"

/// Lives on a thread of its own, for as long as the screen's event loop runs.
class CWatch {
  public:
    /// What else is looked at, on the watch's thread; each reports itself what is wrong.
    struct Checks {
        /// In every round, for every curve: so many of its values are there.
        std::function<void(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel,
                           std::uint32_t nCount)>
            m_values;
        std::function<void()> m_round;
    };

    /// @param nPatience how long the user-interface thread may take to answer, in milliseconds
    CWatch(TestPanel& panel, unsigned nPatience, std::uint32_t nSeed, CSoakRecord& record,
           Checks checks = {});
    ~CWatch();
    CWatch(const CWatch&) = delete;
    CWatch& operator=(const CWatch&) = delete;

  private:
    void Run();
    void CheckControls();
    void CheckCurves();
    void CheckCurve(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel);

    TestPanel& m_panel;
    const unsigned m_nPatience;
    std::mt19937 m_random;
    CSoakRecord& m_record;
    const Checks m_checks;
    std::atomic<bool> m_bStop{false};
    CThreadHandle m_thread;
};

/// How long a user-interface thread may take to answer in this kind of build, in milliseconds.
unsigned GetDefaultPatience();
