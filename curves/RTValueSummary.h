// Smallest and largest values of blocks of a curve, so that a question about a long stretch reads a
// few blocks instead of every value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

struct RTMinMax {
    std::int16_t m_nMin = INT16_MAX;
    std::int16_t m_nMax = INT16_MIN;

    void Include(std::int16_t nValue) {
        if (nValue < m_nMin) m_nMin = nValue;
        if (nValue > m_nMax) m_nMax = nValue;
    }
    void Include(const RTMinMax& other) {
        if (other.m_nMin < m_nMin) m_nMin = other.m_nMin;
        if (other.m_nMax > m_nMax) m_nMax = other.m_nMax;
    }
    friend bool operator==(const RTMinMax&, const RTMinMax&) = default;
};

class RTValueSummary {};
