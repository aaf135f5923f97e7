// What a panel's link tells its screen.
#pragma once

#include <mutex>
#include <thread>

#include "tests/link/PanelBench.h"

/// Remembers what the link tells.
class CScreenBench : public IPanelScreen {
  public:
    void PushPacket(std::shared_ptr<RTPacket> spPacket) override {
        const std::lock_guard lock(m_mutex);
        m_strPushed += GetLetter(*spPacket);
        m_packets.push_back(std::move(spPacket));
    }
    void PushPacketBehindScreen(std::shared_ptr<RTPacket> spPacket) override {
        const std::lock_guard lock(m_mutex);
        m_strPushed += static_cast<char>(std::toupper(GetLetter(*spPacket)));
    }
    void OnInstrumentKnown(const Hello&) override {}
    void SetRates(std::uint16_t, std::uint16_t) override {}
    void SetSampleTime(unsigned) override {}
    void OnStatus(const LinkStatus& status) override {
        const std::lock_guard lock(m_mutex);
        m_status = status;
    }

    template <class Condition>
    bool Await(Condition condition, std::chrono::milliseconds time = 20s) {
        for (; time > 0ms; time -= 10ms) {
            {
                const std::lock_guard lock(m_mutex);
                if (condition()) return true;
            }
            std::this_thread::sleep_for(10ms);
        }
        return false;
    }
    bool AwaitPushed(const std::string& strPackets) {
        const bool bThere = Await([&] { return m_strPushed == strPackets; });
        const std::lock_guard lock(m_mutex);
        EXPECT_EQ(m_strPushed, strPackets);
        return bThere;
    }
    bool AwaitState(PanelState state, std::chrono::milliseconds time = 20s) {
        return Await([&] { return m_status.m_state == state; }, time);
    }

    LinkStatus GetStatus() {
        const std::lock_guard lock(m_mutex);
        return m_status;
    }

    std::mutex m_mutex;
    LinkStatus m_status;
    std::string m_strPushed;
    std::vector<std::shared_ptr<RTPacket>> m_packets;
};
