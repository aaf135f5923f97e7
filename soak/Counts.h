// What a soak has done, by kind, and what it has found wrong.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

/// Any thread may call every operation.
class CSoakRecord {
  public:
    void Count(const std::string& strKind, std::uint64_t nTimes = 1);
    /// Keeps the largest of what is given for a kind.
    void Largest(const std::string& strKind, std::uint64_t nValue);

    /// Writes what is wrong to standard output, unless there has been much of that.
    void Fault(const std::string& strWhat);
    bool HasFaults() const;

    /// Which screen the faults to come belong to.
    void SetScreen(const std::string& strScreen);

    /// Writes everything to standard output.
    void Print() const;

  private:
    mutable std::mutex m_mutex;
    std::map<std::string, std::uint64_t> m_counts;
    std::uint64_t m_nFaults = 0;
    std::string m_strScreen;
};
