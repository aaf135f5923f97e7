// Where an instrument's packets go.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "acquisition/RTPacket.h"

/// Takes each packet in turn, on the instrument's own thread, and does not keep it waiting. Copies
/// lead to the same place.
class CPacketSink {
  public:
    using Push = std::function<void(std::shared_ptr<RTPacket>)>;

    /// @param queue must outlive the instrument
    CPacketSink(RTPacketQueue& queue)
        : m_push(
              [&queue](std::shared_ptr<RTPacket> spPacket) { queue.push(std::move(spPacket)); }) {}
    explicit CPacketSink(Push push) : m_push(std::move(push)) {}

    void operator()(std::shared_ptr<RTPacket> spPacket) const { m_push(std::move(spPacket)); }

  private:
    Push m_push;
};
