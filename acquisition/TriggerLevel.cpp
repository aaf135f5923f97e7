#include "acquisition/TriggerLevel.h"

#include <charconv>
#include <cmath>
#include <string>

std::uint16_t ReadTriggerTenths(std::wstring_view strPercent) {
    const std::size_t nStart = strPercent.find_first_not_of(L" \t\r\n\v\f");
    if (nStart == std::wstring_view::npos) return 0;
    strPercent.remove_prefix(nStart);
    if (strPercent.starts_with(L'+')) {
        strPercent.remove_prefix(1);
        if (strPercent.starts_with(L'-')) return 0;
    }

    std::string strAscii;
    for (const wchar_t ch : strPercent) {
        if (ch < 1 || ch > 127) break;
        strAscii.push_back(static_cast<char>(ch));
    }
    // Not wcstod, whose decimal sign is the locale's.
    double dPercent = 0;
    std::from_chars(strAscii.data(), strAscii.data() + strAscii.size(), dPercent);

    const double dTenths = std::trunc(dPercent * 10.0);
    constexpr double BEYOND_64_BITS = 0x1p63;
    if (!(std::abs(dTenths) < BEYOND_64_BITS)) return 0;
    return static_cast<std::uint16_t>(static_cast<std::int64_t>(dTenths));
}
