// Where a link leads to.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

enum class LinkScheme : std::uint8_t {
    Tcp,
    Tls,
    Serial,
    Broker,     ///< mqtt://
    BrokerTls,  ///< mqtts://
};

/// What an address is for: only to listen may a port be 0, any free one.
enum class LinkUse : std::uint8_t { Connect, Listen };

/// An address that is none. The text says what is wrong with it.
class CAddressError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct LinkAddress {
    LinkScheme m_scheme = LinkScheme::Tcp;
    std::string m_strText;    ///< as it was given
    std::string m_strHost;    ///< a name, or an IPv4 or IPv6 address, without brackets
    std::uint16_t m_nPort{};  ///< of the host

    std::string m_strTopic;  ///< of a broker: 1 to 200 bytes of UTF-8

    std::string m_strDevice;         ///< of a serial line
    std::uint32_t m_nBaud = 115200;  ///< 1200 to 4,000,000
    bool m_bHardwareFlow = false;    ///< RTS and CTS

    bool IsBroker() const {
        return m_scheme == LinkScheme::Broker || m_scheme == LinkScheme::BrokerTls;
    }
    bool IsEncrypted() const {
        return m_scheme == LinkScheme::Tls || m_scheme == LinkScheme::BrokerTls;
    }
};

/// Reads tcp://HOST[:PORT], tls://HOST[:PORT], serial:DEVICE[?baud=N][&flow=KIND],
/// mqtt://BROKER[:PORT]/TOPIC or mqtts://BROKER[:PORT]/TOPIC.
/// @throws CAddressError
LinkAddress ReadLinkAddress(const std::string& strText, LinkUse use);

/// The address in full, with its port or its line's settings.
std::string FormatLinkAddress(const LinkAddress& address);
