// The way between a panel and its instrument: bytes are held up, damaged and lost on it.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/system/Threads.h"
#include "soak/Counts.h"

enum class WayKind : std::uint8_t { Tcp, Tls, Line };

/// Passes on what comes, on a thread of its own, in a weather that changes at random from Begin to
/// Calm and is fair before and after. It is either a line, which loses bytes, or TCP, on which
/// connections end: when the weather cuts them, or one of the two sides does.
class CRoughWay {
  public:
    /// The instrument ends or begins. @return the port that it listens on
    using Restart = std::function<std::uint16_t(bool bThere)>;

    /// @throws std::runtime_error when the system does not give what it takes
    CRoughWay(WayKind kind, std::uint32_t nSeed, CSoakRecord& record);
    ~CRoughWay();
    CRoughWay(const CRoughWay&) = delete;
    CRoughWay& operator=(const CRoughWay&) = delete;

    bool IsLine() const { return m_bLine; }
    /// Where the instrument waits for the panel, and where the panel finds it.
    const std::string& GetInstrumentAddress() const { return m_strInstrumentAddress; }
    const std::string& GetPanelAddress() const { return m_strPanelAddress; }

    /// Opens the way, once.
    /// @param nPort of the instrument
    /// @param restart called on the way's thread; not on a line
    void Open(std::uint16_t nPort, Restart restart);

    /// Ends the way, and with it the calls to what Open was given.
    void Close();

    // Any thread.
    void Begin() { m_bRough = true; }
    void Calm() { m_bRough = false; }
    /// When the last bytes went to a panel, of a steady clock.
    std::uint64_t GetLastToPanel() const { return m_nLastToPanel; }
    /// Since when the weather has been fair, with nothing held up; none: it is not.
    std::optional<std::uint64_t> GetFairSince() const {
        const std::uint64_t nSince = m_nFairSince;
        return nSince != 0 ? std::optional(nSince) : std::nullopt;
    }

  private:
    enum Side : std::size_t { PANEL, INSTRUMENT };
    struct Connection;
    struct Weather;
    static const Weather WEATHERS[];

    void MakeListener(const std::string& strScheme);
    void MakeLine();
    void Run();
    void ChangeWeather();
    void Accept();
    void Pass(Connection& connection, Side from);
    void Damage(std::vector<std::uint8_t>& bytes);
    void CheckDamaged(const Connection& connection);
    unsigned Pick(std::size_t nBelow) { return static_cast<unsigned>(m_random() % nBelow); }

    const bool m_bLine;
    std::mt19937 m_random;
    CSoakRecord& m_record;
    Restart m_restart;
    std::string m_strInstrumentAddress;
    std::string m_strPanelAddress;
    int m_hListener = -1;  ///< of TCP
    std::uint16_t m_nInstrumentPort = 0;

    std::vector<std::unique_ptr<Connection>> m_connections;  ///< a line: one, for ever
    const Weather* m_pWeather;
    std::uint64_t m_nNow = 0;
    std::uint64_t m_nWeatherEnd = 0;
    bool m_bDamages = false;  ///< of what passes next

    std::atomic<bool> m_bRough{false};
    std::atomic<std::uint64_t> m_nLastToPanel{0};
    std::atomic<std::uint64_t> m_nFairSince{0};  ///< 0: it is not
    std::atomic<bool> m_bStop{false};
    CThreadHandle m_thread;
};
