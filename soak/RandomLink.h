// An instrument link that sends packets at random, good ones and such as no instrument should send.
#pragma once

#include <atomic>
#include <cstdint>
#include <random>
#include <vector>

#include "acquisition/ValueLayout.h"
#include "platform/system/Threads.h"
#include "plugin/RealTimeData.h"
#include "soak/Counts.h"

/// What distinguishes the values of a channel: those of channel k + 1 are k * CHANNEL_STEP or more
/// and below (k + 1) * CHANNEL_STEP, in every packet that the reader may store.
constexpr int CHANNEL_STEP = 10000;

/// Sends from its making to Stop, on a thread of its own. Its queue never holds more than some
/// megabytes, and the link waits while it is that full, as one with flow control does.
class CRandomLink {
  public:
    /// @param session of the screen that reads the queue; its host fields are written meanwhile
    CRandomLink(CRealTimeData& session, RTPacketQueue& queue, std::uint32_t nSeed,
                CSoakRecord& record);
    ~CRandomLink() { Stop(); }

    void Stop();

    /// Frees what is left in the queue, once nobody reads it any more.
    /// @return whether every packet has been freed
    bool Drain();

  private:
    struct Phase;
    static const Phase PHASES[];

    void Run();
    void Silence() { Pause(20 + Pick(200)); }
    void Steady();
    void Flood();
    void Malformed();
    void NewCurves();
    void Started();
    void Reports();
    void Unknown();
    void Empty();
    void Long();
    void QueueAway();
    void Rates();

    unsigned Pick(unsigned nBelow) { return static_cast<unsigned>(m_random() % nBelow); }
    std::uint8_t PickByte() { return static_cast<std::uint8_t>(Pick(256)); }
    void Pause(unsigned nMilliseconds) {
        if (!m_bStop) SleepMilliseconds(nMilliseconds);
    }
    void Push(RTPacketType type, std::vector<std::uint8_t> payload);
    void PushShared(std::shared_ptr<RTPacket> spPacket, std::size_t nBytes);
    void AddBlock(std::vector<std::uint8_t>& payload, unsigned nValues);

    CRealTimeData& m_session;
    RTPacketQueue& m_queue;
    RTPacketQueue* const m_pSessionQueue;  ///< what the screen is to read; null: nothing
    std::mt19937 m_random;
    CSoakRecord& m_record;
    const ValueLayout m_layout;
    std::atomic<std::int64_t> m_nQueuedBytes{0};
    std::atomic<bool> m_bStop{false};
    CThreadHandle m_thread;
};
