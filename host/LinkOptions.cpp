#include "host/LinkOptions.h"

#include "platform/commandline/CommandLine.h"

namespace {

constexpr const char* NEED_LINK[] = {
    "--view",     "--panel-name", "--link-ca",           "--link-cert",
    "--link-key", "--link-user",  "--link-password-file"};
constexpr const char* NEED_TLS[] = {"--link-ca", "--link-cert", "--link-key"};
constexpr const char* OF_INSTRUMENT[] = {
    "--mode",          "--second-input",       "--value-rate",
    "--aux-rate",      "--device-24v",         "--seed",
    "--replay",        "--replay-first",       "--replay-second",
    "--replay-rate",   "--replay-first-scale", "--replay-second-scale",
    "--capture-locked"};

void ReadLink(const std::string& strAddress, LinkOptions& options) {
    try {
        options.m_link = ReadLinkAddress(strAddress, LinkUse::Connect);
    } catch (const CAddressError& error) {
        throw CUsageError(error.what());
    }
}

}  // namespace

void AddLink(CCommandLine& line, LinkOptions& options) {
    line.AddOption("--link", "ADDRESS",
                   "an instrument elsewhere: tcp://HOST:PORT, tls://HOST:PORT, "
                   "serial:DEVICE?baud=N&flow=hardware, mqtt://BROKER:PORT/TOPIC or "
                   "mqtts://BROKER:PORT/TOPIC (ports 5039, 5040, 1883, 8883; 115200 baud, no flow "
                   "control)",
                   [&](const std::string& str) { ReadLink(str, options); });
    line.AddFlag("--view", options.m_bView, "show the linked instrument without commanding it");
    line.AddText("--panel-name", "NAME", options.m_strPanelName,
                 "what the linked instrument and other panels call this one (the host's name)");
    line.AddText("--link-ca", "FILE", options.m_tlsFiles.m_strAuthorities,
                 "authorities that may have signed the linked instrument's certificate (the "
                 "system's)");
    line.AddText("--link-cert", "FILE", options.m_tlsFiles.m_strCertificate,
                 "this panel's own certificate");
    line.AddText("--link-key", "FILE", options.m_tlsFiles.m_strKey, "its key");
    line.AddText("--link-user", "NAME", options.m_login.m_strUser,
                 "who the panel is to the message broker");
    line.AddText("--link-password-file", "FILE", options.m_login.m_strPasswordFile,
                 "file whose first line is the password of that user");
}

void CheckLink(const CCommandLine& line, const LinkOptions& options) {
    const auto refusePair = [&line](const char* pOption, const char* pOther, const char* pWhy) {
        if (line.Has(pOption) && line.Has(pOther))
            throw CUsageError(std::string(pOption) + " cannot go with " + pOther + ": " + pWhy);
    };
    for (const char* pName : NEED_LINK)
        if (line.Has(pName) && !options.m_link)
            throw CUsageError(std::string(pName) + " needs --link ADDRESS");
    for (const char* pName : OF_INSTRUMENT)
        refusePair("--link", pName, "the linked instrument says what it is");
    refusePair("--link", "--desktop", "a desktop has no instrument");
    for (const char* pOther : {"--sample-time", "--trigger"})
        refusePair("--view", pOther, "the screen's capture controls are disabled");
    for (const char* pName : NEED_TLS)
        if (line.Has(pName) && !options.m_link->IsEncrypted())
            throw CUsageError(std::string(pName) + " needs a --link to tls:// or mqtts://");
    if (line.Has("--link-cert") != line.Has("--link-key"))
        throw CUsageError("--link-cert and --link-key need each other");
    if (line.Has("--link-user") && !options.m_link->IsBroker())
        throw CUsageError("--link-user needs a --link to mqtt:// or mqtts://");
    if (line.Has("--link-password-file") && !line.Has("--link-user"))
        throw CUsageError("--link-password-file needs --link-user NAME");
}
