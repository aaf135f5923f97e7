#include "link/LineRate.h"

#include "curves/InstrumentMode.h"

namespace {

constexpr std::uint32_t BITS_PER_BYTE = 10;  ///< with start and stop bit

}  // namespace

std::uint32_t GetLineRate(const LinkAddress& address) { return address.m_nBaud / BITS_PER_BYTE; }

std::string DescribeShortage(const LinkAddress& address, const Hello& hello) {
    const std::uint32_t nNeeded = CountChannels(hello.m_nMode) * hello.m_nValueRate * 2u;
    if (address.m_scheme != LinkScheme::Serial || GetLineRate(address) >= nNeeded) return {};
    return address.m_strDevice + ": the values need " + std::to_string(nNeeded) +
           " bytes a second, the line carries " + std::to_string(GetLineRate(address));
}
