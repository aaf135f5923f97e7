#include <gtest/gtest.h>

#include <limits>

#include "ui/ClampedNumber.h"

namespace {

std::wstring SampleTime(double dNumber) { return FormatClamped(dNumber, 1.0, 60.0, false); }
std::wstring Trigger(double dNumber) { return FormatClamped(dNumber, 0.0, 99.9, true); }

}  // namespace

TEST(ClampedNumber, RoundsTheSampleTimeToWholeSeconds) {
    EXPECT_EQ(SampleTime(75), L"60");
    EXPECT_EQ(SampleTime(0.4), L"1");
    EXPECT_EQ(SampleTime(12.6), L"13");
    EXPECT_EQ(SampleTime(-1e300), L"1");
    EXPECT_EQ(SampleTime(std::numeric_limits<double>::infinity()), L"60");
    EXPECT_EQ(SampleTime(std::numeric_limits<double>::quiet_NaN()), L"1");
}

TEST(ClampedNumber, GivesTheTriggerOneDecimal) {
    EXPECT_EQ(Trigger(99.95), L"99.9");
    EXPECT_EQ(Trigger(12.34), L"12.3");
    EXPECT_EQ(Trigger(5), L"5.0");
    EXPECT_EQ(Trigger(-3), L"0.0");
    EXPECT_EQ(Trigger(-0.0), L"0.0");
}

TEST(ClampedNumber, WritesOutTheLargestNumber) {
    constexpr double LARGEST = std::numeric_limits<double>::max();
    EXPECT_EQ(FormatClamped(LARGEST, -LARGEST, LARGEST, true).size(), 311u);
    EXPECT_EQ(FormatClamped(-LARGEST, -LARGEST, LARGEST, true).size(), 312u);
}
