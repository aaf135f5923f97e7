#include <gtest/gtest.h>

#include <tuple>
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
        ASSERT_EQ(pulse.m_nPosition, i * 3);
        ASSERT_EQ(pulse.m_byState, i & 0xFF);
    }
}

TEST(PulseList, KeepsEveryOneOfEqualRecords) {
    RTPulseList list;
    std::vector<std::pair<int, int>> expected;
    for (const auto& [nPosition, nState, nTimes] :
         {std::tuple{5, 1, 1}, {9, 1, 3}, {9, 2, 1}, {12, 2, 4}, {15, 0, 1}, {20, 7, 5000}})
        for (int i = 0; i < nTimes; ++i) {
            list.Append({nPosition, static_cast<std::uint8_t>(nState)});
            expected.emplace_back(nPosition, nState);
        }
    ASSERT_EQ(list.GetCount(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(list.At(i).m_nPosition, expected[i].first) << i;
        ASSERT_EQ(list.At(i).m_byState, expected[i].second) << i;
    }
    EXPECT_EQ(list.FindPosition(list.GetCount(), 10), 5u);
    EXPECT_EQ(list.FindPosition(list.GetCount(), 20), 10u);
}

TEST(PulseList, FindsTheFirstRecordAtOrBehindAPosition) {
    RTPulseList list;
    for (const int nPosition : {10, 20, 20, 20, 35}) list.Append({nPosition, 0});

    EXPECT_EQ(list.FindPosition(5, -4000000000), 0u);
    EXPECT_EQ(list.FindPosition(5, 10), 0u);
    EXPECT_EQ(list.FindPosition(5, 11), 1u);
    EXPECT_EQ(list.FindPosition(5, 20), 1u);
    EXPECT_EQ(list.FindPosition(5, 21), 4u);
    EXPECT_EQ(list.FindPosition(5, 36), 5u);
    EXPECT_EQ(list.FindPosition(3, 36), 3u) << "looks only below the count given";
    EXPECT_EQ(list.FindPosition(0, 10), 0u);
}

}  // namespace
