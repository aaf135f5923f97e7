// A screen on a linked instrument, put together as the panel application does it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/LinkInstrument.h"
#include "host/PanelView.h"
#include "tests/support/Panel.h"

/// User-interface thread, but for what the operations say.
class CLinkedScreen {
  public:
    /// Joins the instrument and waits until it has said what it is.
    /// @param onPacket gets every packet before the screen does, on the link's thread
    /// @throws std::runtime_error when it cannot be reached
    explicit CLinkedScreen(const std::string& strAddress, const TlsFiles& tlsFiles = {},
                           std::function<void(const std::shared_ptr<RTPacket>&)> onPacket = {});
    ~CLinkedScreen();

    /// Any thread.
    LinkStatus GetStatus() const { return m_pLink->GetStatus(); }
    /// In English. Any thread.
    std::string DescribeNow() const { return DescribeStatus(GetStatus(), m_pLink->GetAddress()); }

    /// Ends the link, as the panel application does when its screen has closed.
    void EndLink();

    TestPanel m_panel;

  private:
    std::unique_ptr<CLinkInstrument> m_pLink;
    std::unique_ptr<CPanelView> m_pView;
};
