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
    /// Looks at the values of a curve, of which so many are there; reports itself what is wrong.
    using ValueCheck = std::function<void(const std::shared_ptr<RTCurveData>& spCurve,
                                          std::size_t nChannel, std::uint32_t nCount)>;

    /// @param nPatience how long the user-interface thread may take to answer, in milliseconds
    /// @param checkValues called on the watch's thread, for every curve in every round
    CWatch(TestPanel& panel, unsigned nPatience, std::uint32_t nSeed, CSoakRecord& record,
           ValueCheck checkValues = {});
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
    const ValueCheck m_checkValues;
    std::atomic<bool> m_bStop{false};
    CThreadHandle m_thread;
};

/// How long a user-interface thread may take to answer in this kind of build, in milliseconds.
unsigned GetDefaultPatience();
