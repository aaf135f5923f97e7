// What the packet reader may do to its screen.
#pragma once

#include <cstddef>

/// Called on the reader thread, without the session lock, also before the screen has a window and
/// after it has lost it. An implementer queues what touches controls to the user-interface thread
/// and returns at once. While a flood of packets comes in, the same call may come for each of them:
/// calls that wait to be carried out are to be merged.
class IReaderScreen {
  public:
    /// A capture has ended: put the controls into their idle state. The capture's data is complete.
    virtual void ReturnToIdle() = 0;

    /// Repaint a plot; 0 to 2. It was the one on show when the packet was handled.
    virtual void RepaintPlot(std::size_t nPlot) = 0;

  protected:
    ~IReaderScreen() = default;
};
