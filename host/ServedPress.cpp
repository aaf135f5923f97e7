#include "host/ServedPress.h"

#include <future>
#include <utility>

namespace {

PacketView View(const RTPacket& packet) {
    return {packet.m_nType,
            PayloadView(packet.m_pData, static_cast<std::size_t>(packet.m_nLength))};
}

}  // namespace

CServedPress::CServedPress(const InstrumentOptions& options, Press press)
    : m_layout(FindValueLayout(options.m_nMode, options.m_secondInput)),
      m_nValueRate(options.m_nValueRate), m_bLocked(options.m_bCaptureLocked),
      m_press(std::move(press)) {}

void CServedPress::Begin(std::function<void()> onPackets) {
    CPacketSink sink([this, onPackets = std::move(onPackets)](std::shared_ptr<RTPacket> spPacket) {
        m_queue.push(std::move(spPacket));
        onPackets();
    });
    m_pInstrument = std::make_unique<CPressInstrument>(
        std::move(sink), m_layout, std::move(m_press.m_pSignal), m_press.m_selfStart);
}

void CServedPress::End() { m_pInstrument.reset(); }

void CServedPress::HandOver(const SendPacket& send) {
    if (const auto spAnnouncement = std::exchange(m_spAnnouncement, nullptr))
        send(View(*spAnnouncement), FRAMEFLAG_FOR_VIEWERS);
    for (std::shared_ptr<RTPacket> spPacket; m_queue.try_pop(spPacket);) send(View(*spPacket), 0);
}

/// Has a command carried out and sends the packets up to a place: that of the command itself, or
/// the end of what comes of it at once. An empty packet in the queue tells where that is.
void CServedPress::CarryOut(const InstrumentCommand& command, Mark mark, const SendPacket& send) {
    HandOver(send);
    const auto spMark = std::make_shared<RTPacket>();
    const auto spMarked = std::make_shared<std::promise<void>>();
    const auto setMark = [this, spMark, spMarked] {
        m_queue.push(spMark);
        spMarked->set_value();
    };
    if (mark == Mark::Before)
        m_pInstrument->CarryOut(command, setMark, {});
    else
        m_pInstrument->CarryOut(command, {}, setMark);
    spMarked->get_future().wait();
    std::shared_ptr<RTPacket> spPacket;
    while (m_queue.try_pop(spPacket) && spPacket != spMark) send(View(*spPacket), 0);
}

AckResult CServedPress::Execute(PayloadView image, const SendPacket& send) {
    const auto command = ReadCommand({reinterpret_cast<const char*>(image.data()), image.size()});
    if (!command) return AckResult::NotUnderstood;
    const auto* const pCapture = std::get_if<CaptureRequest>(&*command);
    if (m_bLocked && !std::holds_alternative<PassOutputRequest>(*command)) return AckResult::Locked;
    if (pCapture != nullptr && pCapture->m_nValueRate != m_nValueRate) return AckResult::Impossible;

    CarryOut(*command, Mark::Before, send);
    if (pCapture != nullptr) m_spAnnouncement = MakeStartedReport(*pCapture);
    return AckResult::Taken;
}

void CServedPress::StopCapture(const SendPacket& send) {
    CarryOut(StopRequest{}, Mark::After, send);
}

void CServedPress::OnFirstJoined() { m_pInstrument->OnScreenShown(); }
