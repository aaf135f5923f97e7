// The check that frames carry: CRC-32C.
#pragma once

#include <cstdint>
#include <span>

/// CRC-32C (Castagnoli) of all bytes added so far. It can be asked for at any place and continued.
class CChecksum {
  public:
    void Add(std::span<const std::uint8_t> bytes);
    std::uint32_t Get() const { return ~m_nRegister; }

  private:
    std::uint32_t m_nRegister = 0xFFFFFFFF;
};
