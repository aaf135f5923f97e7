// The instrument as the panel application sees it.
#pragma once

#include <string_view>

#include "instrument/InstrumentState.h"

/// An instrument on a link: commands go in as byte images, packets come out through the sink that
/// the concrete instrument was made with.
///
/// Owner: the panel application, which keeps it from before the screen runs until after it closed.
/// Threads: Send is called on the user-interface thread and must not wait for the link; packets are
/// pushed by the instrument's own thread; GetState may be called on any and does not wait either.
/// After the destructor has returned nothing is pushed any more.
class IInstrument {
  public:
    virtual ~IInstrument() = default;

    /// Sends one message image: type, index + 1, payload length, payload. An image that the
    /// instrument does not know is ignored.
    virtual void Send(std::string_view image) = 0;

    /// The session is shown. An instrument whose captures are controlled elsewhere may begin one by
    /// itself from now on.
    virtual void OnScreenShown() {}

    /// What it is doing. Whoever shows it asks several times a second.
    virtual InstrumentState GetState() const = 0;
};
