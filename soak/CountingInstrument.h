// A linked instrument whose values tell what they are, and who knows what it has sent.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "acquisition/ValueLayout.h"
#include "host/ServedPress.h"

/// The sample sets of an instrument are numbered, modulo 65,536, one after the other within a
/// capture. The first value of channel k + 1 is its set's number and 2 k of these, the second one
/// more.
constexpr unsigned PLACE_STEP = 9973;

/// What the instruments of one screen have sent, over all of their lives. Any thread.
class CSentCurves {
  public:
    explicit CSentCurves(const ValueLayout& layout) : m_layout(layout) {}

    const ValueLayout& GetLayout() const { return m_layout; }

    /// A packet is on its way, or the instrument ends.
    void OnSent(const PacketView& packet);
    void OnEnd();

    /// How many sets the curves have that begin with a number, the longest of them; 0: there are
    /// none.
    std::uint32_t FindSets(std::uint16_t nFirst) const;
    struct Curve {
        std::uint16_t m_nFirst;  ///< number of its first set
        std::uint32_t m_nSets;
        friend bool operator==(const Curve&, const Curve&) = default;
    };
    /// The curve that began last; none: it has no values yet.
    std::optional<Curve> GetLast() const;
    /// Since when no capture has been running, of a steady clock; none: one is.
    std::optional<std::uint64_t> GetIdleSince() const;

  private:
    void Idle();

    const ValueLayout m_layout;
    mutable std::mutex m_mutex;
    std::map<std::uint16_t, std::uint32_t> m_sets;  ///< by the number of the first one
    std::optional<Curve> m_last;
    std::optional<std::uint64_t> m_idleSince{0};
};

/// Serves a press of such values. With captures that are controlled elsewhere it begins one itself.
class CCountingInstrument : public IServedInstrument {
  public:
    /// @param nFirst number of the first set of all, or nearly
    CCountingInstrument(const InstrumentOptions& options, unsigned nFirst, CSentCurves& sent);
    ~CCountingInstrument() override { m_sent.OnEnd(); }

    void Begin(std::function<void()> onPackets) override { m_press.Begin(std::move(onPackets)); }
    void End() override { m_press.End(); }
    void HandOver(const SendPacket& send) override { m_press.HandOver(Note(send)); }
    AckResult Execute(PayloadView image, const SendPacket& send) override {
        return m_press.Execute(image, Note(send));
    }
    void StopCapture(const SendPacket& send) override { m_press.StopCapture(Note(send)); }
    void OnFirstJoined() override { m_press.OnFirstJoined(); }

  private:
    SendPacket Note(const SendPacket& send);

    CSentCurves& m_sent;
    CServedPress m_press;
};
