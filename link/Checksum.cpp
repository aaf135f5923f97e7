#include "link/Checksum.h"

#include <array>

namespace {

/// What a byte that leaves the register does to it; least significant bit first.
constexpr std::array<std::uint32_t, 256> MakeTable() {
    constexpr std::uint32_t POLYNOMIAL = 0x82F63B78;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t n = i;
        for (int k = 0; k < 8; ++k) n = (n & 1) != 0 ? n >> 1 ^ POLYNOMIAL : n >> 1;
        table[i] = n;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> TABLE = MakeTable();

}  // namespace

void CChecksum::Add(std::span<const std::uint8_t> bytes) {
    std::uint32_t n = m_nRegister;
    for (const std::uint8_t by : bytes) n = n >> 8 ^ TABLE[(n ^ by) & 0xFF];
    m_nRegister = n;
}
