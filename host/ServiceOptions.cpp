#include "host/ServiceOptions.h"

#include <algorithm>

#include "link/Acceptor.h"
#include "link/Payloads.h"
#include "platform/commandline/CommandLine.h"

namespace {

void AddService(CCommandLine& line, ServiceOptions& options, bool& bInsecure) {
    line.AddRepeated(
        "--listen", "ADDRESS",
        "where panels are awaited, up to four times: tcp://HOST:PORT (5039; 0 is any that is "
        "free), "
        "tls://HOST:PORT (5040), serial:DEVICE?baud=N&flow=none|hardware (115200, none), "
        "mqtt://BROKER:PORT/TOPIC (1883), mqtts://BROKER:PORT/TOPIC (8883)",
        [&](const std::string& str) {
            try {
                options.m_addresses.push_back(ReadLinkAddress(str, LinkUse::Listen));
            } catch (const CAddressError& error) {
                throw CUsageError(error.what());
            }
        });
    line.AddText("--name", "TEXT", options.m_strName,
                 "name of the instrument, for people (press); at most 64 bytes");
    line.AddText("--serial-number", "TEXT", options.m_strSerialNumber,
                 "serial number (none); at most 32 bytes");
    line.AddNumber("--max-panels", "N", options.m_nMaxPanels, 1, 8,
                   "panels at a time, one of them to command: with 1 nobody views (8)");
    line.AddText("--cert", "FILE", options.m_strCertificate,
                 "certificate for tls://, with those that lead to its authority, in PEM form");
    line.AddText("--key", "FILE", options.m_strKey, "key of the certificate, in PEM form");
    line.AddText("--client-ca", "FILE", options.m_strClientAuthority,
                 "let in only panels with a certificate that one of these authorities signed");
    line.AddText("--link-user", "NAME", options.m_brokerLogin.m_strUser,
                 "user's name for a broker (none)");
    line.AddText("--link-password-file", "FILE", options.m_brokerLogin.m_strPasswordFile,
                 "file whose first line is the user's password for a broker");
    line.AddText("--link-ca", "FILE", options.m_strBrokerAuthorities,
                 "authorities that may have signed the certificate of a broker (the system's)");
    line.AddFlag("--insecure", bInsecure,
                 "serve other machines without TLS, too: everyone on the network can start the "
                 "press's captures then");
}

void CheckLength(const char* pName, const std::string& strText, std::size_t nMost) {
    if (strText.size() > nMost)
        throw CUsageError(std::string(pName) + ": it has more than " + std::to_string(nMost) +
                          " bytes");
}

void CheckAddresses(const ServiceOptions& options, bool bInsecure) {
    if (options.m_addresses.empty()) throw CUsageError("--listen ADDRESS is missing");
    if (options.m_addresses.size() > ServiceOptions::MAX_ADDRESSES)
        throw CUsageError("--listen stands more than four times");
    for (const LinkAddress& address : options.m_addresses) {
        const bool bNetwork = address.m_scheme != LinkScheme::Serial;
        if (bNetwork && !address.IsEncrypted() && !bInsecure && !IsLoopback(address.m_strHost))
            throw CUsageError("--listen: " + address.m_strText +
                              ": without TLS everyone on the network can start the press's "
                              "captures; use tls://, or say --insecure");
    }
}

void CheckTls(const CCommandLine& line, const ServiceOptions& options) {
    bool bTls = false;
    for (const LinkAddress& address : options.m_addresses)
        bTls = bTls || address.m_scheme == LinkScheme::Tls;
    for (const char* pName : {"--cert", "--key"})
        if (bTls && !line.Has(pName))
            throw CUsageError(std::string("tls:// needs ") + pName + " FILE");
    for (const char* pName : {"--cert", "--key", "--client-ca"})
        if (!bTls && line.Has(pName))
            throw CUsageError(std::string(pName) + " needs --listen tls://HOST:PORT");
}

void CheckBroker(const CCommandLine& line, const ServiceOptions& options) {
    const bool bBroker = std::ranges::any_of(options.m_addresses, &LinkAddress::IsBroker);
    for (const char* pName : {"--link-user", "--link-password-file", "--link-ca"})
        if (line.Has(pName) && !bBroker)
            throw CUsageError(std::string(pName) + " needs --listen mqtt:// or mqtts://");
    if (line.Has("--link-password-file") && !line.Has("--link-user"))
        throw CUsageError("--link-password-file needs --link-user NAME");
}

}  // namespace

ServiceOptions ReadServiceOptions(std::span<const char* const> arguments) {
    ServiceOptions options;
    options.m_strName = "press";
    bool bInsecure = false;
    CCommandLine line(
        "rtinstrument --listen ADDRESS [OPTION]...",
        "Serves a simulated press, or a recorded one (--replay), to panels on a link: "
        "rtpanel --link.\nIt ends on SIGINT or SIGTERM.\n");
    AddService(line, options, bInsecure);
    AddInstrument(line, options);
    AddReplay(line, options);
    if (!line.Parse(arguments).empty()) throw CUsageError("it takes no file");
    CheckReplay(line);
    CheckAddresses(options, bInsecure);
    CheckTls(line, options);
    CheckBroker(line, options);
    CheckLength("--name", options.m_strName, MAX_NAME);
    CheckLength("--serial-number", options.m_strSerialNumber, MAX_SERIAL_NUMBER);
    return options;
}
