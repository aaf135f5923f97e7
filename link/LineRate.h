// Whether a serial line can carry an instrument's values.
#pragma once

#include <string>

#include "link/LinkAddress.h"
#include "link/Payloads.h"

/// What a line carries, in bytes a second.
std::uint32_t GetLineRate(const LinkAddress& address);

/// That a line's rate is below what the instrument's values need, in words; empty when it is not,
/// or the address is no line's.
std::string DescribeShortage(const LinkAddress& address, const Hello& hello);
