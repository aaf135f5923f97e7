// A press as the instrument that is served on the link.
#pragma once

#include <memory>
#include <optional>

#include "acquisition/ValueLayout.h"
#include "host/Press.h"
#include "instrument/PressInstrument.h"
#include "link/ServedInstrument.h"

/// Samples at the value rate and no other. A capture that begins on a command is announced to those
/// who view.
class CServedPress : public IServedInstrument {
  public:
    CServedPress(const InstrumentOptions& options, Press press);

    void Begin(std::function<void()> onPackets) override;
    void End() override;
    void HandOver(const SendPacket& send) override;
    AckResult Execute(PayloadView image, const SendPacket& send) override;
    void StopCapture(const SendPacket& send) override;
    void OnFirstJoined() override;

  private:
    enum class Mark : std::uint8_t { Before, After };
    void CarryOut(const InstrumentCommand& command, Mark mark, const SendPacket& send);

    const ValueLayout m_layout;
    const std::uint16_t m_nValueRate;
    const bool m_bLocked;
    Press m_press;
    RTPacketQueue m_queue;
    std::shared_ptr<RTPacket> m_spAnnouncement;  ///< to go in front of what is in the queue
    std::unique_ptr<CPressInstrument> m_pInstrument;
};
