// What an instrument's end of the link asks of its surroundings.
#pragma once

#include <string>
#include <vector>

#include "link/Frame.h"
#include "link/Payloads.h"

/// Names one connection, for as long as it is there. Never used twice.
using PanelId = std::uint64_t;

/// The calls come from within the hub's own operations, on the thread that called those.
class IInstrumentPort {
  public:
    virtual ~IInstrumentPort() = default;

    /// Carries a message image out. Packets taken before belong to what was before: Execute
    /// broadcasts them first, all of them, and only what is broadcast after its return is a result
    /// of this message.
    /// @return Taken, or why not; an instrument whose captures are controlled elsewhere answers a
    ///         capture command with Locked
    virtual AckResult Execute(PayloadView image) = 0;
    /// Nobody is left who could stop the capture: ends it as a stop command does.
    virtual void StopCapture() = 0;
    /// The first panel of all has joined.
    virtual void OnFirstJoined() = 0;

    /// Lets the transport take what it has been given and these frames, for at most a second, and
    /// closes it. The hub hears no more of it.
    virtual void CloseConnection(PanelId id, std::vector<OutFrame> lastFrames) = 0;

    /// A panel came, went or was refused, in words.
    virtual void OnNews(const std::string& strLine) = 0;
};
