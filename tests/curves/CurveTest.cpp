#include <gtest/gtest.h>

#include "curves/RTCurves.h"
#include "platform/system/Exceptions.h"

namespace {

TEST(CurveSet, AppendsCurvesInOrderAndStaysWholeWhenMemoryIsRefused) {
    CRTCurves set;
    const auto pFirst = set.AddCurve(1, 10);
    const auto pSecond = set.AddCurve(1, 0);
    EXPECT_THROW(set.AddCurve(1, 0xFFFFFFFFu), CMemoryException);

    ASSERT_EQ(set.m_lstCurves[1].size(), 2u);
    EXPECT_EQ(set.FirstCurve(1), pFirst);
    EXPECT_EQ(set.m_lstCurves[1].back(), pSecond);
    EXPECT_EQ(set.FirstCurve(0), nullptr);
    EXPECT_TRUE(pSecond->GetFreeValues().empty());
}

}  // namespace
