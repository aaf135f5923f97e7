// The command line of rtinstrument.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/InstrumentOptions.h"
#include "link/BrokerLogin.h"
#include "link/LinkAddress.h"

struct ServiceOptions : InstrumentOptions {
    static constexpr std::size_t MAX_ADDRESSES = 4;

    std::vector<LinkAddress> m_addresses;  ///< where panels are awaited; 1 to MAX_ADDRESSES
    std::string m_strName;                 ///< of the instrument, for people
    std::string m_strSerialNumber;
    BrokerLogin m_brokerLogin;
    std::string m_strBrokerAuthorities;  ///< empty: the system's
    unsigned m_nMaxPanels = 8;           ///< joined ones, with the one that commands
    std::string m_strCertificate;        ///< files in PEM form; for tls://
    std::string m_strKey;                ///< of the certificate
    std::string m_strClientAuthority;    ///< empty: every panel is let in
};

/// Reads the arguments behind the program's name. Looks up the names of hosts.
/// @throws CUsageError, CHelpRequest
ServiceOptions ReadServiceOptions(std::span<const char* const> arguments);
