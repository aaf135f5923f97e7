// What a soak has done, by kind, and what it has found wrong.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>

/// Any thread may call every operation.
class CSoakRecord {
  public:
    void Count(const std::string& strKind, std::uint64_t nTimes = 1) {
        const std::lock_guard lock(m_mutex);
        m_counts[strKind] += nTimes;
    }
    /// Keeps the largest of what is given for a kind.
    void Largest(const std::string& strKind, std::uint64_t nValue) {
        const std::lock_guard lock(m_mutex);
        std::uint64_t& nLargest = m_counts[strKind];
        nLargest = std::max(nLargest, nValue);
    }

    /// Writes what is wrong to standard output, unless there has been much of that.
    void Fault(const std::string& strWhat) {
        const std::lock_guard lock(m_mutex);
        constexpr std::uint64_t MOST_PRINTED = 10;
        if (++m_nFaults > MOST_PRINTED) return;
        std::printf("FAULT %s: %s\n", m_strScreen.c_str(), strWhat.c_str());
        std::fflush(stdout);
    }
    bool HasFaults() const {
        const std::lock_guard lock(m_mutex);
        return m_nFaults > 0;
    }

    /// Which screen the faults to come belong to.
    void SetScreen(const std::string& strScreen) {
        const std::lock_guard lock(m_mutex);
        m_strScreen = strScreen;
    }

    /// Writes everything to standard output.
    void Print() const {
        const std::lock_guard lock(m_mutex);
        for (const auto& [strKind, nTimes] : m_counts)
            std::printf("%-40s %12ju\n", strKind.c_str(), static_cast<std::uintmax_t>(nTimes));
        std::printf("%-40s %12ju\n", "faults", static_cast<std::uintmax_t>(m_nFaults));
    }

  private:
    mutable std::mutex m_mutex;
    std::map<std::string, std::uint64_t> m_counts;
    std::uint64_t m_nFaults = 0;
    std::string m_strScreen;
};
