#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "curves/RTPulse.h"

namespace {

TEST(PulseList, KeepsOrderAndAddressesWhileItGrows) {
    RTPulseList list;
    std::vector<const RTPulse*> addresses;
    for (int i = 0; i < 100000; ++i) {
        list.Append({i * 3, static_cast<std::uint8_t>(i)});
        addresses.push_back(&list.At(static_cast<std::size_t>(i)));
    }
    ASSERT_EQ(list.GetCount(), 100000u);
    for (int i = 0; i < 100000; ++i) {
        const RTPulse& pulse = list.At(static_cast<std::size_t>(i));
        ASSERT_EQ(&pulse, addresses[static_cast<std::size_t>(i)]);
        ASSERT_EQ(pulse, (RTPulse{i * 3, static_cast<std::uint8_t>(i)}));
    }
}

TEST(PulseList, KeepsEveryOneOfEqualRecords) {
    RTPulseList list;
    std::vector<RTPulse> expected;
    for (const auto& [pulse, nTimes] :
         {std::pair{RTPulse{5, 1}, 1u}, {{9, 1}, 3}, {{9, 2}, 1}, {{12, 2}, 4}, {{20, 7}, 5000}})
        expected.insert(expected.end(), nTimes, pulse);
    for (const RTPulse& pulse : expected) list.Append(pulse);
    ASSERT_EQ(list.GetCount(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(list.At(i), expected[i]) << i;
    EXPECT_EQ(list.FindPosition(list.GetCount(), 10), 5u);
    EXPECT_EQ(list.FindPosition(list.GetCount(), 20), 9u);
}

TEST(PulseList, FindsTheFirstRecordAtOrBehindAPosition) {
    RTPulseList list;
    for (const int nPosition : {10, 20, 20, 20, 35}) list.Append({nPosition, 0});
    for (const auto& [nPosition, nFound] :
         {std::pair{-4000000000, 0u}, {10, 0u}, {11, 1u}, {20, 1u}, {21, 4u}, {36, 5u}})
        EXPECT_EQ(list.FindPosition(5, nPosition), nFound) << nPosition;
    EXPECT_EQ(list.FindPosition(3, 36), 3u) << "looks only below the count given";
    EXPECT_EQ(list.FindPosition(0, 10), 0u);
}

}  // namespace
