// The trigger level as the operator enters it and as the instrument takes it.
#pragma once

#include <cstdint>
#include <string_view>

/// Tenths of a percent from a text in percent: times 10, cut toward zero, low 16 bits. The text is
/// read as a decimal number with a point, after white space, as far as it is one; text that does
/// not begin with a number gives 0.
std::uint16_t ReadTriggerTenths(std::wstring_view strPercent);
