#include <gtest/gtest.h>

#include <cstring>

#include "acquisition/ObjRTGeneric.h"
#include "acquisition/TriggerLevel.h"

namespace {

using namespace std::string_literals;

std::string Image(const CObjConfig& message) {
    std::string image = "left over";
    message.ToBytes(image);
    return image;
}

/// A message's image: the bytes it begins with, and zeros.
std::string Padded(std::string image) {
    image.resize(44);
    return image;
}

TEST(Message, CommandImages) {
    // 3 s, sample time, 40000 values a second, trigger 12.5 %, display 0.
    EXPECT_EQ(Image(*MakeCaptureCommand({3000, 0, 40000, 125, 0})),
              Padded("\x27\x01\x29\x02\xB8\x0B\x00\x40\x9C\x7D"s));
    EXPECT_EQ(Image(*MakeCaptureCommand({0x1234, 1, 0x5678, 0x9ABC, 2})),
              Padded("\x27\x01\x29\x02\x34\x12\x01\x78\x56\xBC\x9A\x02"s));
    EXPECT_EQ(Image(*MakeStopCommand()), Padded("\x27\x01\x29\x02"s));
    EXPECT_EQ(Image(*MakePassOutputCommand()), Padded("\x27\x01\x29\x03"s));
}

TEST(Message, TakesOverAPayloadOnly) {
    const auto pMessage = MakeCaptureCommand({0xFFFF, 1, 0xFFFF, 0xFFFF, 2});
    pMessage->m_nIndex = 4;
    const std::uint8_t source[64] = {7, 8, 9};
    std::uint32_t nLength = 2;
    pMessage->FromBytes(source, &nLength);
    EXPECT_EQ(Image(*pMessage), Padded("\x27\x05\x29\x07\x08"s));
    nLength = 64;  // more than a payload holds
    pMessage->FromBytes(source, &nLength);
    pMessage->CopyFrom(nullptr);
    EXPECT_EQ(Image(*pMessage), Padded("\x27\x05\x29\x07\x08\x09"s));
    pMessage->CopyFrom(MakeCaptureCommand({0x0102, 0, 0, 0, 0}).get());
    EXPECT_EQ(Image(*pMessage), Padded("\x27\x05\x29\x02\x02\x01"s));
}

/// A message that is only type and index.
struct PlainMessage : CObjConfig {
    void CopyFrom(const CObjConfig*) override {}
};

TEST(Message, OfTheBaseIsTypeAndIndex) {
    PlainMessage message;
    message.m_nType = 0x127;
    message.m_nIndex = 0xFF;
    EXPECT_EQ(Image(message), "\x27\x00"s);
}

/// The place of an operation in the virtual table. Two entries of the destructor come first, so the
/// second operation is at 2.
template <class Operation>
std::size_t Slot(Operation operation) {
    std::ptrdiff_t nOffset;
    std::memcpy(&nOffset, &operation, sizeof nOffset);
    return static_cast<std::size_t>(nOffset - 1) / sizeof(void*);
}

TEST(Message, VirtualTableOrder) {
    using C = CObjConfig;
    const std::size_t slots[] = {
        Slot(&C::HostHook2),  Slot(&C::ToBytes),    Slot(&C::FromBytes),  Slot(&C::HostHook5),
        Slot(&C::HostHook6),  Slot(&C::HostHook7),  Slot(&C::HostHook8),  Slot(&C::HostHook9),
        Slot(&C::HostHook10), Slot(&C::HostHook11), Slot(&C::HostHook12), Slot(&C::HostHook13),
        Slot(&C::HostHook14), Slot(&C::HostHook15), Slot(&C::HostHook16), Slot(&C::HostHook17),
        Slot(&C::CopyFrom),   Slot(&C::HostHook19), Slot(&C::HostHook20), Slot(&C::HostHook21),
        Slot(&C::HostHook22), Slot(&C::HostHook23)};
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(slots[i], i + 2);
}

TEST(TriggerLevel, IsReadInTenthsOfAPercent) {
    const std::pair<const wchar_t*, int> cases[] = {
        {L"12.5", 125}, {L"99.9", 999}, {L"0.19", 1}, {L"  +7 %", 70}, {L"-1", 65526},
        {L"6553.7", 1}, {L"", 0},       {L" ", 0},    {L"abc", 0},     {L".", 0},
        {L"+-3", 0},    {L"\x0661", 0}, {L"nan", 0},  {L"inf", 0},     {L"1e300", 0},
        {L"-1e300", 0}, {L"1e99999", 0}};
    for (const auto& [pText, nTenths] : cases)
        EXPECT_EQ(ReadTriggerTenths(pText), nTenths) << pText;
}

}  // namespace
