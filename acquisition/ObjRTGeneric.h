// The message objects that the screen hands to its host, for the instrument.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "acquisition/RTPacket.h"
#include "platform/system/Types.h"

/// Sent to the window of the main frame's active view: wParam is the address of a CObjConfig,
/// lParam is 0, and the result is not read. The receiver owns the object and deletes it.
constexpr UINT WM_RT_SENDOBJECT = 1325;

/// The host's message base. A host calls any of these operations on an object that it received, by
/// position in the virtual table: their order is part of the contract between host and screen.
///
/// The hooks belong to the host's message interface. A message of the screen's gives them no
/// behaviour: they do nothing and return the neutral value.
class CObjConfig {
  public:
    virtual ~CObjConfig() = default;
    virtual void HostHook2() {}

    /// Replaces `out` with the message's byte image; of the base, two bytes: the low byte of
    /// m_nType, then the low byte of m_nIndex + 1.
    virtual void ToBytes(std::string& out) const {
        out.assign({static_cast<char>(m_nType & 0xFF), static_cast<char>((m_nIndex + 1) & 0xFF)});
    }
    /// Takes the message's contents from so many bytes.
    virtual void FromBytes(const std::uint8_t* /*pSource*/, const std::uint32_t* /*pLength*/) {}

    virtual bool HostHook5(std::uint32_t, std::uint32_t) { return false; }
    virtual bool HostHook6(std::uint32_t) { return false; }
    virtual std::uint32_t HostHook7(std::uint32_t) { return 0; }
    virtual double HostHook8(std::uint32_t) { return 0.0; }
    virtual std::uint32_t HostHook9(std::uint32_t) { return 0; }
    virtual std::wstring HostHook10(std::uint32_t) { return {}; }
    virtual std::string HostHook11(std::uint32_t) { return {}; }
    virtual void HostHook12(std::uint32_t, std::uint32_t) {}
    virtual void HostHook13(std::uint32_t, std::uint32_t) {}
    // The host passes its texts by value. NOLINTNEXTLINE(performance-unnecessary-value-param)
    virtual void HostHook14(std::uint32_t, std::string) {}
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    virtual void HostHook15(std::uint32_t, std::wstring) {}
    virtual void HostHook16(std::uint32_t, std::uint32_t, std::uint32_t) {}
    virtual void HostHook17(std::uint32_t, std::uint32_t) {}

    /// Takes over another message's contents; its type, index and flag stay its own. Null: nothing.
    virtual void CopyFrom(const CObjConfig* pOther) = 0;

    virtual void HostHook19() {}
    virtual bool HostHook20(std::uint32_t, std::uint32_t) { return false; }
    virtual void HostHook21(std::uint32_t, std::uint32_t, std::uint32_t) {}
    virtual std::uint32_t HostHook22(std::uint32_t) { return 0; }
    virtual void HostHook23(std::uint32_t, std::uint32_t) {}

    std::uint32_t m_nIndex = 0;  ///< message index
    std::uint32_t m_nType = 0;   ///< message type, an RTPacketType
    std::uint8_t m_bFlag = 0;    ///< the host's own; not part of the image
};

/// A message of 41 payload bytes. Its image: type, index + 1, the payload's length, the payload.
class CObjRTGeneric : public CObjConfig {
  public:
    static constexpr std::size_t PAYLOAD_SIZE = 41;

    void ToBytes(std::string& out) const override {
        CObjConfig::ToBytes(out);
        out.push_back(static_cast<char>(PAYLOAD_SIZE));
        out.append(m_abyPayload.begin(), m_abyPayload.end());
    }

    /// Bytes beyond the payload's 41 are not taken; payload bytes that the source has not are 0.
    void FromBytes(const std::uint8_t* pSource, const std::uint32_t* pLength) override {
        m_abyPayload.fill(0);
        if (pSource == nullptr || pLength == nullptr) return;
        std::copy_n(pSource, std::min<std::size_t>(*pLength, PAYLOAD_SIZE), m_abyPayload.begin());
    }

    /// Nor does a message of another kind change anything.
    void CopyFrom(const CObjConfig* pOther) override {
        if (const auto* pMessage = dynamic_cast<const CObjRTGeneric*>(pOther))
            m_abyPayload = pMessage->m_abyPayload;
    }

    /// Byte 0 is the RTCommand, bytes 1 to 40 are its parameters.
    std::array<std::uint8_t, PAYLOAD_SIZE> m_abyPayload{};
};

// The classes have a virtual table, for which the language leaves offsetof to the compiler.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(CObjConfig, m_nIndex) == sizeof(void*));
static_assert(offsetof(CObjConfig, m_nType) == sizeof(void*) + 4);
static_assert(offsetof(CObjConfig, m_bFlag) == sizeof(void*) + 8);
static_assert(offsetof(CObjRTGeneric, m_abyPayload) == sizeof(void*) + 9);
static_assert(sizeof(CObjRTGeneric) == 64);
#pragma GCC diagnostic pop

/// What the instrument is told when a capture starts. This and the operations below belong to the
/// screen, which forms the messages; they are not for hosts.
struct RTCaptureParameters {
    std::uint16_t m_nSampleMilliseconds = 0;  ///< sample time
    std::uint8_t m_bContinuous = 0;           ///< 1: until stopped, whatever the sample time
    std::uint16_t m_nValueRate = 0;           ///< values per second and channel
    std::uint16_t m_nTriggerTenths = 0;       ///< trigger level, tenths of a percent
    std::uint8_t m_nDisplay =
        0;  ///< of channel 1's pairs: 0 the first values, 1 the second, 2 both
    friend bool operator==(const RTCaptureParameters&, const RTCaptureParameters&) = default;
};

/// The screen's three commands, each a new object of type RTPACKET_CONTROL.
/// @throws CMemoryException
std::unique_ptr<CObjRTGeneric> MakeCaptureCommand(const RTCaptureParameters& parameters);
std::unique_ptr<CObjRTGeneric> MakeStopCommand();
std::unique_ptr<CObjRTGeneric> MakePassOutputCommand();
