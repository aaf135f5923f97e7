#include "link/LinkAddress.h"

#include <algorithm>
#include <asio/ip/address.hpp>
#include <charconv>
#include <optional>
#include <string_view>

#include "platform/system/Text.h"

namespace {

constexpr std::size_t MAX_HOST = 253;
constexpr std::size_t MAX_TOPIC = 200;
constexpr std::uint32_t MIN_BAUD = 1200;
constexpr std::uint32_t MAX_BAUD = 4'000'000;

struct SchemeForm {
    std::string_view m_strBegin;
    LinkScheme m_scheme;
    std::uint16_t m_nPort;
};

constexpr SchemeForm SCHEMES[] = {{"tcp://", LinkScheme::Tcp, 5039},
                                  {"tls://", LinkScheme::Tls, 5040},
                                  {"serial:", LinkScheme::Serial, 0},
                                  {"mqtt://", LinkScheme::Broker, 1883},
                                  {"mqtts://", LinkScheme::BrokerTls, 8883}};

std::optional<std::uint32_t> ReadWhole(std::string_view strDigits) {
    std::uint32_t n = 0;
    const auto [pEnd, error] =
        std::from_chars(strDigits.data(), strDigits.data() + strDigits.size(), n);
    if (error != std::errc() || pEnd != strDigits.data() + strDigits.size()) return std::nullopt;
    return n;
}

bool IsUnfit(wchar_t ch) {
    return ch < 0x20 || (ch >= 0x7F && ch <= 0x9F) || (ch >= 0xDC80 && ch <= 0xDCFF);
}

class CAddressReader {
  public:
    CAddressReader(const std::string& strText, LinkUse use) : m_use(use) {
        m_address.m_strText = strText;
    }

    LinkAddress Read() {
        const std::string_view strText = m_address.m_strText;
        const auto* const pForm = std::ranges::find_if(
            SCHEMES, [&](const SchemeForm& form) { return strText.starts_with(form.m_strBegin); });
        if (pForm == std::end(SCHEMES))
            Refuse("an address begins with tcp://, tls://, serial:, mqtt:// or mqtts://");
        m_address.m_scheme = pForm->m_scheme;
        m_address.m_nPort = pForm->m_nPort;
        std::string_view strRest = strText.substr(pForm->m_strBegin.size());
        if (m_address.m_scheme == LinkScheme::Serial) {
            ReadLine(strRest);
        } else {
            const std::size_t nHost = m_address.IsBroker() ? strRest.find('/') : strRest.npos;
            ReadHost(strRest.substr(0, nHost));
            if (m_address.IsBroker())
                ReadTopic(nHost == strRest.npos ? std::string_view() : strRest.substr(nHost + 1));
        }
        return std::move(m_address);
    }

  private:
    [[noreturn]] void Refuse(const std::string& strWhy) const {
        throw CAddressError("'" + m_address.m_strText + "': " + strWhy);
    }

    void ReadHost(std::string_view strText) {
        std::string_view strHost;
        std::string_view strPort;
        bool bPort = false;
        if (strText.starts_with('[')) {
            const std::size_t nEnd = strText.find(']');
            if (nEnd == strText.npos) Refuse("the bracket of the IPv6 address does not close");
            strHost = strText.substr(1, nEnd - 1);
            asio::error_code error;
            asio::ip::make_address_v6(std::string(strHost), error);
            if (error) Refuse("there is no IPv6 address in the brackets");
            strText.remove_prefix(nEnd + 1);
            bPort = strText.starts_with(':');
            if (!bPort && !strText.empty()) Refuse("what stands behind the bracket is no :PORT");
            if (bPort) strPort = strText.substr(1);
        } else {
            const std::size_t nColon = strText.find(':');
            bPort = nColon != strText.npos;
            strHost = strText.substr(0, nColon);
            if (bPort) strPort = strText.substr(nColon + 1);
            if (strPort.find(':') != strPort.npos)
                Refuse("an IPv6 address stands in brackets: [::1]");
            if (strHost.empty()) Refuse("the name of the host is missing");
            const auto isOfName = [](char ch) {
                return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                       (ch >= '0' && ch <= '9') || ch == '-' || ch == '.' || ch == '_';
            };
            if (strHost.size() > MAX_HOST || strHost.find_first_of("-.") == 0 ||
                !std::ranges::all_of(strHost, isOfName))
                Refuse("'" + std::string(strHost) + "' is not the name of a host");
        }
        m_address.m_strHost = strHost;
        if (!bPort) return;
        const auto port = ReadWhole(strPort);
        const std::uint32_t nLowest = m_use == LinkUse::Listen && !m_address.IsBroker() ? 0 : 1;
        if (!port || *port < nLowest || *port > 65535)
            Refuse("'" + std::string(strPort) + "' is not a port from " + std::to_string(nLowest) +
                   " to 65535");
        m_address.m_nPort = static_cast<std::uint16_t>(*port);
    }

    void ReadTopic(std::string_view strTopic) {
        if (strTopic.empty()) Refuse("the topic is missing: mqtt://BROKER/TOPIC");
        if (strTopic.size() > MAX_TOPIC) Refuse("the topic is longer than 200 bytes");
        if (std::ranges::any_of(FromUtf8(strTopic), IsUnfit))
            Refuse("the topic holds a control character, or bytes that are not UTF-8");
        if (strTopic.find_first_of("+#") != strTopic.npos) Refuse("the topic holds a + or a #");
        if (strTopic.front() == '/' || strTopic.back() == '/' ||
            strTopic.find("//") != strTopic.npos)
            Refuse("the topic has an empty level");
        m_address.m_strTopic = strTopic;
    }

    void ReadLine(std::string_view strText) {
        const std::size_t nQuery = strText.find('?');
        m_address.m_strDevice = strText.substr(0, nQuery);
        if (m_address.m_strDevice.empty())
            Refuse("the device is missing: serial:/dev/ttyUSB0?baud=115200");
        if (nQuery == strText.npos) return;
        for (std::string_view strRest = strText.substr(nQuery + 1);;) {
            const std::size_t nEnd = strRest.find('&');
            ReadSetting(strRest.substr(0, nEnd));
            if (nEnd == strRest.npos) return;
            strRest.remove_prefix(nEnd + 1);
        }
    }

    void ReadSetting(std::string_view strSetting) {
        const std::size_t nEquals = std::min(strSetting.find('='), strSetting.size());
        const std::string_view strName = strSetting.substr(0, nEquals);
        const std::string strValue(strSetting.substr(std::min(nEquals + 1, strSetting.size())));
        if (strName == "baud") {
            const auto baud = ReadWhole(strValue);
            if (!baud || *baud < MIN_BAUD || *baud > MAX_BAUD)
                Refuse("'" + strValue + "' is not a rate from 1200 to 4000000 baud");
            m_address.m_nBaud = *baud;
        } else if (strName == "flow") {
            if (strValue != "none" && strValue != "hardware")
                Refuse("'" + strValue + "' is no flow control: none, hardware");
            m_address.m_bHardwareFlow = strValue == "hardware";
        } else {
            Refuse("a line has no setting '" + std::string(strName) + "': baud, flow");
        }
    }

    const LinkUse m_use;
    LinkAddress m_address;
};

}  // namespace

LinkAddress ReadLinkAddress(const std::string& strText, LinkUse use) {
    return CAddressReader(strText, use).Read();
}

std::string FormatLinkAddress(const LinkAddress& address) {
    if (address.m_scheme == LinkScheme::Serial)
        return "serial:" + address.m_strDevice + "?baud=" + std::to_string(address.m_nBaud) +
               "&flow=" + (address.m_bHardwareFlow ? "hardware" : "none");
    const bool bBrackets = address.m_strHost.find(':') != std::string::npos;
    std::string strText(
        std::ranges::find(SCHEMES, address.m_scheme, &SchemeForm::m_scheme)->m_strBegin);
    strText.append(bBrackets ? "[" : "").append(address.m_strHost).append(bBrackets ? "]" : "");
    strText.append(":").append(std::to_string(address.m_nPort));
    if (address.IsBroker()) strText.append("/").append(address.m_strTopic);
    return strText;
}
