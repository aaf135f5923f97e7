#include <gtest/gtest.h>

#include <set>

#include "platform/drawing/Graphics.h"
#include "platform/system/DynamicLibrary.h"

namespace {

TEST(BitmapRes, HasAPictureOfItsOwnForEveryButtonAndNoOther) {
    const CDynamicLibrary library(L"BitmapRes.dll");
    auto* pFind = library.GetFunction<FindPictureFunction>("FindPicture");
    ASSERT_TRUE(pFind);
    std::set<std::string> distinct;
    const unsigned numbers[] = {154, 366, 368, 375, 5059, 5052, 5053, 6001, 6002, 6003, 6004};
    for (const unsigned nID : numbers) {
        std::size_t nSize = 0;
        const unsigned char* pBytes = pFind(nID, &nSize);
        ASSERT_TRUE(pBytes) << nID;
        EXPECT_EQ(pFind(nID, nullptr), pBytes);
        distinct.insert(std::string(pBytes, pBytes + nSize));
        CBitmap bitmap;
        EXPECT_TRUE(bitmap.LoadBitmap(library, nID)) << nID;
        EXPECT_GE(bitmap.GetSize().cx, 44) << nID;
    }
    EXPECT_EQ(distinct.size(), std::size(numbers));
    for (const unsigned nID : {0u, 153u, 5054u, 0xFFFFFFFFu}) {
        std::size_t nSize = 17;
        EXPECT_FALSE(pFind(nID, &nSize));
        EXPECT_EQ(nSize, 0u);
        EXPECT_FALSE(CBitmap().LoadBitmap(library, nID));
    }
}

}  // namespace
