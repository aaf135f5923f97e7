// Tells the strokes apart in what goes to and comes from the instrument.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "acquisition/PacketMeaning.h"
#include "acquisition/SampleDecoder.h"

/// What a screen makes its curves by.
struct CurveRoom {
    std::uint32_t m_nCapacity = 0;  ///< values per channel
    unsigned m_nValueRate = 0;      ///< values per second
};

/// Keeps the values of one channel stroke by stroke, exactly those that the screen stores as one
/// curve, since a continuous capture takes a curve out of the screen's hands as soon as the next
/// one begins. A stroke is over when the curve of a sample-time capture is full, when the next
/// curve begins, and when the instrument reports by itself that it is idle. What
/// the operator stops, and what a lost connection ends, is cut off.
///
/// Threads: one at a time.
class CStrokeCollector {
  public:
    /// What became of a stroke that has at least one value.
    struct Stroke {
        std::shared_ptr<const RTCurveData> m_spCurve;
        unsigned m_nValueRate = 0;
        bool m_bCutOff = false;  ///< it was not let come to its end
    };

    /// @param nChannel from 0, one of the layout's
    /// @param onStroke is told of every stroke as soon as it is over
    CStrokeCollector(const ValueLayout& layout, std::size_t nChannel,
                     std::function<void(Stroke)> onStroke);

    // What happens, in its order.

    /// The screen has begun a capture and tells the instrument.
    /// @throws CMemoryException with no stroke begun
    void Start(bool bContinuous, const CurveRoom& room);
    /// The instrument is told to stop.
    void Stop() { m_bStopped = true; }
    /// The screen has let go of its curves.
    void Drop();
    /// The instrument has sent a packet.
    /// @param room by which the screen makes the curves that the packet may begin
    /// @throws CMemoryException with the stroke before it told of, and none begun
    void Take(const RTPacket& packet, const CurveRoom& room);

    /// Values are being collected.
    bool IsInStroke() const { return GetCurve() != nullptr; }

  private:
    const std::shared_ptr<RTCurveData>& GetCurve() const { return m_aspCurves[m_nChannel]; }
    void Begin(const CurveRoom& room);
    void End(bool bCutOff);

    const ValueLayout m_layout;
    const std::size_t m_nChannel;
    const std::function<void(Stroke)> m_onStroke;

    RTCurrentCurves m_aspCurves{};  ///< of the channels before the one wanted: without room
    unsigned m_nValueRate = 0;
    bool m_bContinuous = false;
    bool m_bStopped = false;  ///< since the capture began
};
