// Smallest and largest values of blocks of a fixed length.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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

constexpr std::size_t RT_BLOCK_VALUES = 128;

/// Of one block: by parity of the index.
using RTBlockSummary = std::array<RTMinMax, 2>;

/// Summarises nBlocks blocks in a row.
void SummariseBlocks(const std::int16_t* pValues, std::size_t nBlocks, RTBlockSummary* pSummaries);
