#include <gtest/gtest.h>

#include <numeric>

#include "platform/Archive.h"
#include "platform/MemFile.h"

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

TEST(Archive, StoresNumbersLittleEndianWithoutPadding) {
    CMemFile file(L"a.rt3");
    CArchive ar(&file, CArchive::store);
    ar << BYTE{1} << WORD{0x0203} << DWORD{0x04050607} << std::int16_t{-2} << std::int32_t{-3};
    EXPECT_TRUE(file.GetContents().empty()) << "waits in the buffer";
    ar.Close();
    EXPECT_EQ(file.GetContents(),
              (std::vector<std::uint8_t>{1, 3, 2, 7, 6, 5, 4, 0xFE, 0xFF, 0xFD, 0xFF, 0xFF, 0xFF}));

    file.Seek(0, CFile::begin);
    CArchive in(&file, CArchive::load);
    BYTE by;
    WORD w;
    DWORD dw;
    std::int16_t n16;
    std::int32_t n32;
    in >> by >> w >> dw >> n16;
    EXPECT_EQ(in.GetBytesLeft(), 4u);
    in >> n32;
    EXPECT_EQ(std::tuple(by, w, dw, n16, n32), std::tuple(1, 0x0203, 0x04050607u, -2, -3));
    EXPECT_EQ(FindCause([&] { in >> by; }), CArchiveException::endOfFile);
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

    file.Seek(0, CFile::begin);
    CArchive in(&file, CArchive::load, 16);
    for (const std::size_t nLength : anLengths) {
        WORD wLength = 0;
        in >> wLength;
        ASSERT_EQ(wLength, nLength);
        std::vector<std::uint8_t> read(nLength);
        in.EnsureRead(read.data(), nLength);
        ASSERT_TRUE(std::equal(read.begin(), read.end(), block.begin()));
    }
    EXPECT_EQ(in.GetBytesLeft(), 0u);
}

TEST(Archive, RefusesTheWrongDirectionAndAShortEnd) {
    CMemFile file(L"a.rt3", {1, 2, 3});
    CArchive in(&file, CArchive::load);
    EXPECT_EQ(FindCause([&] { in << BYTE{1}; }), CArchiveException::readOnly);
    DWORD dw;
    EXPECT_EQ(FindCause([&] { in >> dw; }), CArchiveException::endOfFile);

    CMemFile target(L"a.rt3");
    {
        CArchive out(&target, CArchive::store);
        out << BYTE{1};
        EXPECT_EQ(FindCause([&] { out >> dw; }), CArchiveException::writeOnly);
    }
    EXPECT_TRUE(target.GetContents().empty()) << "without Close nothing is written";
}

}  // namespace
