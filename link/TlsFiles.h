// The files that TLS on the link needs.
#pragma once

#include <stdexcept>
#include <string>

/// A certificate or key that cannot be used. The text names its file.
class CTlsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Files in PEM form; empty names: none.
struct TlsFiles {
    std::string m_strAuthorities;  ///< whose signature the other side's certificate is to have
    std::string m_strCertificate;  ///< this side's own, with those that lead to its authority
    std::string m_strKey;          ///< of the certificate
};
