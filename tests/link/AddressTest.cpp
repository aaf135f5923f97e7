#include <gtest/gtest.h>

#include "link/LinkAddress.h"

namespace {

std::string ReadAndFormat(const std::string& strText, LinkUse use = LinkUse::Connect) {
    return FormatLinkAddress(ReadLinkAddress(strText, use));
}

std::string WhyNot(const std::string& strText, LinkUse use = LinkUse::Connect) {
    try {
        ReadLinkAddress(strText, use);
    } catch (const CAddressError& error) {
        return error.what();
    }
    return "";
}

}  // namespace

TEST(LinkAddress, HasItsPortAndSettingsWhenTheyAreLeftOut) {
    EXPECT_EQ(ReadAndFormat("tcp://press-3"), "tcp://press-3:5039");
    EXPECT_EQ(ReadAndFormat("tls://10.0.0.7"), "tls://10.0.0.7:5040");
    EXPECT_EQ(ReadAndFormat("tcp://[::1]"), "tcp://[::1]:5039");
    EXPECT_EQ(ReadAndFormat("tls://[fe80::1]:65535"), "tls://[fe80::1]:65535");
    EXPECT_EQ(ReadAndFormat("tcp://h:0", LinkUse::Listen), "tcp://h:0");
    EXPECT_EQ(ReadAndFormat("serial:/dev/ttyUSB0"), "serial:/dev/ttyUSB0?baud=115200&flow=none");
    EXPECT_EQ(ReadAndFormat("serial:a b?flow=hardware&baud=4000000"),
              "serial:a b?baud=4000000&flow=hardware");
    EXPECT_EQ(ReadAndFormat("mqtt://b/hall 2/pr\xC3\xA4ss"), "mqtt://b:1883/hall 2/pr\xC3\xA4ss");
    EXPECT_EQ(ReadAndFormat("mqtts://[::1]:99/" + std::string(200, 't')),
              "mqtts://[::1]:99/" + std::string(200, 't'));
    EXPECT_EQ(ReadLinkAddress("tcp://press-3", LinkUse::Connect).m_strText, "tcp://press-3");
}

TEST(LinkAddress, SaysWhatIsWrongWithIt) {
    const std::pair<const char*, const char*> wrong[] = {
        {"", "begins with"},
        {"press-3:5039", "begins with"},
        {"TCP://a", "begins with"},
        {"tcp:/a", "begins with"},
        {"tcp://", "host is missing"},
        {"tcp://:1", "host is missing"},
        {"tcp://a b", "'a b' is not the name"},
        {"tcp://a/b", "'a/b' is not the name"},
        {"tcp://u@a", "'u@a' is not the name"},
        {"tcp://-a", "'-a' is not the name"},
        {"tcp://::1", "in brackets"},
        {"tcp://[::1", "does not close"},
        {"tcp://[]", "no IPv6 address"},
        {"tcp://[press]", "no IPv6 address"},
        {"tcp://[::1]5", "no :PORT"},
        {"tcp://a:", "'' is not a port"},
        {"tcp://a:0", "'0' is not a port from 1"},
        {"tcp://a:65536", "'65536' is not a port"},
        {"tcp://a:4294967297", "is not a port"},
        {"tcp://a:1x", "'1x' is not a port"},
        {"tcp://a:+1", "'+1' is not a port"},
        {"mqtt://b", "topic is missing"},
        {"mqtt://b/", "topic is missing"},
        {"mqtt://b//t", "empty level"},
        {"mqtt://b/t/", "empty level"},
        {"mqtt://b/t//u", "empty level"},
        {"mqtt://b/t/+", "a + or a #"},
        {"mqtt://b/#", "a + or a #"},
        {"mqtt://b/\xFF", "not UTF-8"},
        {"mqtt://b/a\nb", "control character"},
        {"mqtt://b/a\xC2\x80", "control character"},
        {"serial:", "device is missing"},
        {"serial:?baud=9600", "device is missing"},
        {"serial:d?", "no setting ''"},
        {"serial:d?baud", "'' is not a rate"},
        {"serial:d?baud=1199", "'1199' is not a rate"},
        {"serial:d?baud=4000001", "'4000001' is not a rate"},
        {"serial:d?baud=9600&", "no setting ''"},
        {"serial:d?flow=soft", "'soft' is no flow control"},
        {"serial:d?parity=even", "no setting 'parity'"},
    };
    for (const auto& [pAddress, pWhy] : wrong) {
        const std::string strWhy = WhyNot(pAddress);
        EXPECT_NE(strWhy.find(pWhy), std::string::npos) << pAddress << " gives " << strWhy;
        EXPECT_EQ(strWhy.find(pAddress, 1), 1u) << strWhy;
    }
    EXPECT_NE(WhyNot("mqtt://b/" + std::string(201, 't')), "");
    EXPECT_NE(WhyNot("tcp://" + std::string(254, 'a')), "");
    EXPECT_NE(WhyNot("mqtt://b:0/t", LinkUse::Listen), "");
}
