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

TEST(Message, CaptureCommandImage) {
    // 3 s, sample time, 40000 values a second, trigger 12.5 %, display 0.
    const auto pMessage = MakeCaptureCommand({3000, 0, 40000, 125, 0});
    EXPECT_EQ(Image(*pMessage),
              "\x27\x01\x29\x02\xB8\x0B\x00\x40\x9C\x7D\x00\x00"s + std::string(32, '\0'));
    EXPECT_EQ(Image(*MakeCaptureCommand({0x1234, 1, 0x5678, 0x9ABC, 2})),
              "\x27\x01\x29\x02\x34\x12\x01\x78\x56\xBC\x9A\x02"s + std::string(32, '\0'));
}

TEST(Message, CommandsWithoutParameters) {
    EXPECT_EQ(Image(*MakeStopCommand()), "\x27\x01\x29\x02"s + std::string(40, '\0'));
    EXPECT_EQ(Image(*MakePassOutputCommand()), "\x27\x01\x29\x03"s + std::string(40, '\0'));
    EXPECT_EQ(MakeStopCommand()->m_bFlag, 0);
}

TEST(Message, FromBytesClearsTheRest) {
    const auto pMessage = MakeCaptureCommand({0xFFFF, 1, 0xFFFF, 0xFFFF, 2});
    const std::uint8_t source[64] = {7, 8, 9};
    std::uint32_t nLength = 2;
    pMessage->FromBytes(source, &nLength);
    EXPECT_EQ(Image(*pMessage), "\x27\x01\x29\x07\x08"s + std::string(39, '\0'));

    nLength = 64;  // more than a payload holds
    pMessage->FromBytes(source, &nLength);
    EXPECT_EQ(Image(*pMessage), "\x27\x01\x29\x07\x08\x09"s + std::string(38, '\0'));
}

TEST(Message, CopyFromTakesThePayloadOnly) {
    const auto pMessage = MakePassOutputCommand();
    pMessage->m_nIndex = 4;
    pMessage->CopyFrom(nullptr);
    EXPECT_EQ(Image(*pMessage), "\x27\x05\x29\x03"s + std::string(40, '\0'));
    pMessage->CopyFrom(MakeCaptureCommand({0x0102, 0, 0, 0, 0}).get());
    EXPECT_EQ(Image(*pMessage), "\x27\x05\x29\x02\x02\x01"s + std::string(38, '\0'));
}

/// A message that is only type and index.
struct PlainMessage : CObjConfig {
    void CopyFrom(const CObjConfig*) override {}
};

TEST(Message, BaseImageAndNeutralHooks) {
    PlainMessage message;
    message.m_nType = 0x127;
    message.m_nIndex = 0xFF;
    EXPECT_EQ(Image(message), "\x27\x00"s);

    CObjConfig& base = message;
    EXPECT_FALSE(base.HostHook5(1, 2) || base.HostHook6(1) || base.HostHook20(1, 2));
    EXPECT_EQ(base.HostHook7(1) + base.HostHook9(1) + base.HostHook22(1), 0u);
    EXPECT_EQ(base.HostHook8(1), 0.0);
    EXPECT_EQ(base.HostHook10(1), L"");
    EXPECT_EQ(base.HostHook11(1), "");
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

TEST(TriggerLevel, TenthsOfAPercent) {
    EXPECT_EQ(ReadTriggerTenths(L"12.5"), 125);
    EXPECT_EQ(ReadTriggerTenths(L"99.9"), 999);
    EXPECT_EQ(ReadTriggerTenths(L""), 0);
    EXPECT_EQ(ReadTriggerTenths(L"0.19"), 1);
    EXPECT_EQ(ReadTriggerTenths(L"  +7 %"), 70);
    EXPECT_EQ(ReadTriggerTenths(L"-1"), 65526);
    EXPECT_EQ(ReadTriggerTenths(L"6553.7"), 1);
}

TEST(TriggerLevel, TextThatIsNoNumber) {
    for (const wchar_t* pText :
         {L"abc", L".", L"+-3", L" ", L"\x0661", L"nan", L"inf", L"1e300", L"-1e300", L"1e99999"})
        EXPECT_EQ(ReadTriggerTenths(pText), 0) << pText;
}

}  // namespace
