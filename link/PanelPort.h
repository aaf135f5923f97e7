// What a panel's end of the link asks of its surroundings. The calls come from within the session's
// own operations, on the thread that called those; none may call the session back at once.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "acquisition/RTPacket.h"
#include "link/Frame.h"
#include "link/LinkStatus.h"

class IPanelTransport {
  public:
    virtual ~IPanelTransport() = default;

    /// Opens the transport. The session's OnOpened or OnTransportLost is called later.
    virtual void OpenTransport() = 0;
    /// Lets the transport take what it has been given and these frames, for at most a second, and
    /// closes it, opened or not. The session hears no more of it. Not called twice.
    virtual void CloseTransport(std::vector<OutFrame> lastFrames) = 0;
};

/// The screen that shows the instrument, and who is to know how the link stands.
class IPanelScreen {
  public:
    virtual ~IPanelScreen() = default;

    /// Puts a packet into the screen's queue.
    virtual void PushPacket(std::shared_ptr<RTPacket> spPacket) = 0;
    /// The same from a call on the user-interface thread, later: the screen answers a hand-over
    /// before it is told that nothing came of it.
    virtual void PushPacketBehindScreen(std::shared_ptr<RTPacket> spPacket) = 0;

    /// The first HELLO: the screen can be made.
    virtual void OnInstrumentKnown(const Hello& hello) = 0;
    /// A commanded instrument has other rates than before: the session record is to hold them.
    virtual void SetRates(std::uint16_t nValueRate, std::uint16_t nAuxRate) = 0;
    /// The screen, which views, is to show so many seconds (1 to 60) of each curve. The session's
    /// OnSampleTimeSet is called when it does.
    virtual void SetSampleTime(unsigned nSeconds) = 0;

    virtual void OnStatus(const LinkStatus& status) = 0;
};
