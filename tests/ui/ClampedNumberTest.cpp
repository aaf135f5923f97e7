#include <gtest/gtest.h>

#include <limits>

#include "ui/ClampedNumber.h"

TEST(ClampedNumber, IsRoundedWithinItsLimits) {
    using Limits = std::numeric_limits<double>;
    const std::pair<double, const wchar_t*> seconds[] = {{75, L"60"},
                                                         {0.4, L"1"},
                                                         {12.6, L"13"},
                                                         {-1e300, L"1"},
                                                         {Limits::infinity(), L"60"},
                                                         {Limits::quiet_NaN(), L"1"}};
    for (const auto& [dNumber, pText] : seconds)
        EXPECT_EQ(FormatClamped(dNumber, 1.0, 60.0, false), pText);
    const std::pair<double, const wchar_t*> triggers[] = {
        {99.95, L"99.9"}, {12.34, L"12.3"}, {5, L"5.0"}, {-3, L"0.0"}, {-0.0, L"0.0"}};
    for (const auto& [dNumber, pText] : triggers)
        EXPECT_EQ(FormatClamped(dNumber, 0.0, 99.9, true), pText);
    EXPECT_EQ(FormatClamped(-Limits::max(), -Limits::max(), Limits::max(), true).size(), 312u);
}
