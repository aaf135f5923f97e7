// Tells when a control's picture is drawn anew: for measurements and tests that wait for what they
// have caused to be seen.
#pragma once

#include <functional>
#include <memory>

#include "platform/windows/Wnd.h"

/// Watches one control as long as it lives. What only shows the kept picture again is no drawing.
/// Thread: made, called and destroyed on the user-interface thread.
class PLATFORM_API CPaintWatch {
  public:
    /// @param begun called just before the picture is drawn; what is true then is in the picture
    /// @param done called when it has been drawn
    CPaintWatch(const CWnd& wnd, std::function<void()> begun, std::function<void()> done);
    ~CPaintWatch();
    CPaintWatch(const CPaintWatch&) = delete;
    CPaintWatch& operator=(const CPaintWatch&) = delete;

  private:
    class Filter;
    std::unique_ptr<Filter> m_pFilter;
};
