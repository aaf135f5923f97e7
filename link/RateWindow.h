// A bound on how much may come in a time.
#pragma once

#include <cstdint>

#include "link/LinkTime.h"

/// Counts in windows of time that follow one another.
class CRateWindow {
  public:
    /// @param nMost what one window may hold
    CRateWindow(LinkTime length, std::uint64_t nMost) : m_length(length), m_nMost(nMost) {}

    /// The first window begins.
    void Restart(LinkTime now) {
        m_begin = now;
        m_nCount = 0;
    }
    void Restart(LinkTime now, std::uint64_t nMost) {
        m_nMost = nMost;
        Restart(now);
    }

    /// @return whether it still is within the bound
    bool Add(std::uint64_t n, LinkTime now) {
        if (const auto nWindows = (now - m_begin) / m_length; nWindows > 0) {
            m_begin += nWindows * m_length;
            m_nCount = 0;
        }
        m_nCount += n;
        return m_nCount <= m_nMost;
    }

  private:
    LinkTime m_length;
    std::uint64_t m_nMost;
    LinkTime m_begin{0};
    std::uint64_t m_nCount = 0;
};
