#include "tests/support/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/system/Threads.h"

namespace {

const std::thread::id g_mainThread = std::this_thread::get_id();
std::atomic<std::uint64_t> g_nAhead{0};  ///< milliseconds
std::atomic<bool> g_bHasty{false};
unsigned g_nPerLook;      ///< milliseconds
bool g_bLooking = false;  ///< of the main thread
std::function<void()> g_atLook;

}  // namespace

CHastyClock::CHastyClock(unsigned nMilliseconds, std::function<void()> atLook) {
    g_nPerLook = nMilliseconds;
    g_atLook = std::move(atLook);
    g_bHasty = true;
}

CHastyClock::~CHastyClock() { g_bHasty = false; }

// A program's own function comes before that of a library which is loaded with it.
std::uint64_t TickMilliseconds() {
    if (g_bHasty && std::this_thread::get_id() == g_mainThread && !g_bLooking) {
        g_bLooking = true;
        g_nAhead += g_nPerLook;
        g_atLook();
        g_bLooking = false;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return g_nAhead + static_cast<std::uint64_t>(
                          std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}
