#include <gtest/gtest.h>

#include <numeric>

#include "platform/system/Archive.h"
#include "platform/system/MemFile.h"

namespace {

CArchiveException::Cause FindCause(const std::function<void()>& action) {
    try {
        action();
    } catch (const CArchiveException& error) {
        EXPECT_EQ(error.m_strFileName, L"a.rt3");
        return error.m_cause;
    }
    ADD_FAILURE() << "nothing was thrown";
    return CArchiveException::badContents;
}

TEST(Archive, KeepsTheOrderOfNumbersAndBlocksOfAnySize) {
    std::vector<std::uint8_t> block(1000);
    std::iota(block.begin(), block.end(), std::uint8_t{0});
    const std::size_t anLengths[] = {1, 15, 16, 17, 0, 31, 1000, 3, 8, 16};

    CMemFile file(L"a.rt3");
    CArchive out(&file, CArchive::store, 16);
    for (const std::size_t nLength : anLengths) {
        out << static_cast<WORD>(nLength);
        out.Write(block.data(), nLength);
    }
    out.Close();

    CMemFile stored(L"a.rt3", file.GetContents());
    CArchive in(&stored, CArchive::load, 16);
    std::size_t nLeft = stored.GetLength();
    EXPECT_EQ(nLeft, 1107u + 2 * std::size(anLengths));
    for (const std::size_t nLength : anLengths) {
        WORD wLength = 0;
        in >> wLength;
        ASSERT_EQ(wLength, nLength);
        std::vector<std::uint8_t> read(nLength);
        in.EnsureRead(read.data(), nLength);
        ASSERT_TRUE(std::equal(read.begin(), read.end(), block.begin()));
        EXPECT_EQ(in.GetBytesLeft(), nLeft -= 2 + nLength);
    }
}

TEST(Archive, RefusesTheWrongDirectionAndAShortEnd) {
    CMemFile file(L"a.rt3", {1, 2, 3});
    CArchive in(&file, CArchive::load);
    EXPECT_EQ(FindCause([&] { in << BYTE{1}; }), CArchiveException::readOnly);
    DWORD dw;
    EXPECT_EQ(FindCause([&] { in >> dw; }), CArchiveException::endOfFile);
    {
        CArchive out(&file, CArchive::store);
        out << BYTE{1};
        EXPECT_EQ(FindCause([&] { out >> dw; }), CArchiveException::writeOnly);
    }
    EXPECT_EQ(file.GetLength(), 3u) << "without Close nothing is written";
}

}  // namespace
