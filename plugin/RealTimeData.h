// The session record that the host fills between GetDialog and Run. A binary contract: the host is
// compiled against this declaration and writes the fields directly.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "acquisition/RTPacket.h"
#include "curves/InstrumentMode.h"
#include "curves/RTCurves.h"
#include "platform/system/Threads.h"
#include "plot/RTGraphSettings.h"
#include "plot/RTPlot.h"

/// The host's device object, as far as the screen asks it.
class IRTDevice {
  public:
    /// A device parameter. Number 50: bit n set means that the position input of channel n + 1 is
    /// 0-24 V, clear that it is 0-10 V. User-interface thread.
    virtual std::uint32_t ReadParameter(std::uint32_t nNumber) = 0;

  protected:
    ~IRTDevice() = default;
};

constexpr std::size_t RT_MAX_CHANNELS = CRTCurves::CHANNEL_COUNT;

/// Thread safety: the host writes its fields before Run. While the screen runs it may change three
/// of them, m_pPacketQueue, m_nHostValueRate and m_nHostAuxRate, each by an atomic write
/// (std::atomic_ref(session.m_nHostValueRate).store(nRate)): both threads of the screen read them
/// in that way. m_lock guards which curve set is in hand, the rates of the curves and the plots'
/// view fields; a host that reads those while the screen runs takes it to copy them. It is held for
/// one packet by the reader and for a few assignments by the user-interface thread, never while
/// painting, saving, loading, allocating values, sending a message or showing a window.
struct CRealTimeData {
    RTPacketQueue* m_pPacketQueue = nullptr;  ///< host, at any time; null: no packets
    std::uint8_t m_nMode = 0;                 ///< host; instrument mode code
    std::uint8_t m_bDesktopMode = 0;          ///< host; 1: a desktop without an instrument
    std::uint8_t m_nPositionInput;            ///< host, always; a SecondInput
    IRTDevice* m_pDevice = nullptr;           ///< host, when m_nPositionInput is 2
    std::uint8_t m_bCaptureLocked = 0;        ///< host; 1: capture is controlled elsewhere
    std::uint16_t m_nValueRate = 40000;     ///< values per second and channel of the curves in hand
    std::uint16_t m_nHostValueRate = 0;     ///< host, at any time; the instrument's value rate
    std::uint16_t m_nAuxRate = 20000;       ///< second rate carried with the curves
    std::uint16_t m_nHostAuxRate = 0;       ///< host, at any time; the instrument's second rate
    std::shared_ptr<CRTCurves> m_spCurves;  ///< the curve set in hand
    std::uint8_t m_nChannels = 1;           ///< 1 to 3, from the mode
    RTGraphSettings m_graph;
    std::array<RTPlot, RT_MAX_CHANNELS> m_aPlots;
    CThreadHandle m_hReaderThread;
    std::atomic<std::uint8_t> m_bStopReader{0};  ///< 1: the reader ends when its queue is empty

    // Behind the part whose places are pinned: the screen's own, which hosts take as said above.
    CFairLock m_lock;
};

// As in RTPlot.h.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(CRealTimeData, m_pPacketQueue) == 0 &&
              offsetof(CRealTimeData, m_nMode) == 8 &&
              offsetof(CRealTimeData, m_bDesktopMode) == 9 &&
              offsetof(CRealTimeData, m_nPositionInput) == 10 &&
              offsetof(CRealTimeData, m_pDevice) == 16 &&
              offsetof(CRealTimeData, m_bCaptureLocked) == 24);
static_assert(offsetof(CRealTimeData, m_nValueRate) == 26 &&
              offsetof(CRealTimeData, m_nHostValueRate) == 28 &&
              offsetof(CRealTimeData, m_nAuxRate) == 30 &&
              offsetof(CRealTimeData, m_nHostAuxRate) == 32);
static_assert(offsetof(CRealTimeData, m_spCurves) == 40 &&
              offsetof(CRealTimeData, m_nChannels) == 56 &&
              offsetof(CRealTimeData, m_graph) == 57 && offsetof(CRealTimeData, m_aPlots) == 72 &&
              offsetof(CRealTimeData, m_hReaderThread) == 576 &&
              offsetof(CRealTimeData, m_bStopReader) == 584);
#pragma GCC diagnostic pop
