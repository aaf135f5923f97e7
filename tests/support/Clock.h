// The clock of the test programs that work windows, in the place of the platform's.
#pragma once

#include <functional>

/// While it lives, so much time goes by between any two looks that the user-interface thread takes
/// at the clock: work of a moment is then work that takes long. `atLook` is called at each of them,
/// except for those that it causes. Made on any thread.
class CHastyClock {
  public:
    CHastyClock(unsigned nMilliseconds, std::function<void()> atLook);
    ~CHastyClock();
    CHastyClock(const CHastyClock&) = delete;
    CHastyClock& operator=(const CHastyClock&) = delete;
};
