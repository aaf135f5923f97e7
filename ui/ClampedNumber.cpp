#include "ui/ClampedNumber.h"

#include <charconv>
#include <limits>

std::wstring FormatClamped(double dNumber, double dMin, double dMax, bool bOneDecimal) {
    if (dNumber > dMax)
        dNumber = dMax;
    else if (!(dNumber >= dMin))
        dNumber = dMin;
    if (dNumber == 0) dNumber = 0;  // no minus sign before zero

    // Unlike the printf family, independent of the locale.
    char text[std::numeric_limits<double>::max_exponent10 + 8];
    const auto [pEnd, error] = std::to_chars(std::begin(text), std::end(text), dNumber,
                                             std::chars_format::fixed, bOneDecimal ? 1 : 0);
    return {std::begin(text), pEnd};
}
