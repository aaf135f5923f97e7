#include "soak/Counts.h"

#include <algorithm>
#include <cstdio>

void CSoakRecord::Count(const std::string& strKind, std::uint64_t nTimes) {
    const std::lock_guard lock(m_mutex);
    m_counts[strKind] += nTimes;
}

void CSoakRecord::Largest(const std::string& strKind, std::uint64_t nValue) {
    const std::lock_guard lock(m_mutex);
    std::uint64_t& nLargest = m_counts[strKind];
    nLargest = std::max(nLargest, nValue);
}

void CSoakRecord::Fault(const std::string& strWhat) {
    const std::lock_guard lock(m_mutex);
    constexpr std::uint64_t MOST_PRINTED = 10;
    if (++m_nFaults > MOST_PRINTED) return;
    std::printf("FAULT %s: %s\n", m_strScreen.c_str(), strWhat.c_str());
    std::fflush(stdout);
}

bool CSoakRecord::HasFaults() const {
    const std::lock_guard lock(m_mutex);
    return m_nFaults > 0;
}

void CSoakRecord::SetScreen(const std::string& strScreen) {
    const std::lock_guard lock(m_mutex);
    m_strScreen = strScreen;
}

void CSoakRecord::Print() const {
    const std::lock_guard lock(m_mutex);
    for (const auto& [strKind, nTimes] : m_counts)
        std::printf("%-40s %12ju\n", strKind.c_str(), static_cast<std::uintmax_t>(nTimes));
    std::printf("%-40s %12ju\n", "faults", static_cast<std::uintmax_t>(m_nFaults));
}
