// The part of rtpanel's command line that is about an instrument on a link.
#pragma once

#include <optional>
#include <string>

#include "link/BrokerLogin.h"
#include "link/LinkAddress.h"
#include "link/TlsFiles.h"

class CCommandLine;

struct LinkOptions {
    std::optional<LinkAddress> m_link;  ///< none: the instrument is in the program
    bool m_bView = false;               ///< without commanding
    std::string m_strPanelName;         ///< empty: the host's
    TlsFiles m_tlsFiles;
    BrokerLogin m_login;
};

/// The options must outlive the line's Parse.
void AddLink(CCommandLine& line, LinkOptions& options);

/// After Parse: what means nothing with a link, or without one.
/// @throws CUsageError
void CheckLink(const CCommandLine& line, const LinkOptions& options);
