#include "link/LinkTls.h"

#include <asio/ssl/error.hpp>
#include <new>

#include "link/LinkStream.h"

namespace {

void Check(const asio::error_code& error, const std::string& strFile) {
    if (error) throw CTlsError(strFile + ": " + DescribeTransportError(error));
}

void UseFiles(asio::ssl::context& context, const TlsFiles& files) {
    SSL_CTX_set_min_proto_version(context.native_handle(), TLS1_2_VERSION);
    asio::error_code error;
    // A key with a password would have the library ask for it on the terminal.
    context.set_password_callback(
        [](std::size_t, asio::ssl::context::password_purpose) { return std::string(); }, error);
    if (!files.m_strAuthorities.empty()) {
        context.load_verify_file(files.m_strAuthorities, error);
        Check(error, files.m_strAuthorities);
    }
    if (files.m_strCertificate.empty()) return;
    context.use_certificate_chain_file(files.m_strCertificate, error);
    Check(error, files.m_strCertificate);
    context.use_private_key_file(files.m_strKey, asio::ssl::context::pem, error);
    Check(error, files.m_strKey);
}

}  // namespace

asio::ssl::context MakePanelTls(const TlsFiles& files) {
    asio::ssl::context context(asio::ssl::context::tls_client);
    context.set_verify_mode(asio::ssl::verify_peer);
    if (files.m_strAuthorities.empty()) {
        asio::error_code error;
        context.set_default_verify_paths(error);
        Check(error, "the system's authorities");
    }
    UseFiles(context, files);
    return context;
}

asio::ssl::context MakeInstrumentTls(const TlsFiles& files) {
    asio::ssl::context context(asio::ssl::context::tls_server);
    if (!files.m_strAuthorities.empty())
        context.set_verify_mode(asio::ssl::verify_peer | asio::ssl::verify_fail_if_no_peer_cert);
    UseFiles(context, files);
    return context;
}

void ExpectHost(TlsSocket& socket, const std::string& strHost) {
    SSL* const pSsl = socket.native_handle();
    if (X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(pSsl), strHost.c_str()) == 1) return;
    // What is no address is a name; without one any certificate would do.
    if (SSL_set1_host(pSsl, strHost.c_str()) != 1) throw std::bad_alloc();
    SSL_set_tlsext_host_name(pSsl, strHost.c_str());
}

std::string DescribeHandshakeError(TlsSocket& socket, const asio::error_code& error) {
    const long nResult = SSL_get_verify_result(socket.native_handle());
    if (nResult != X509_V_OK)
        return std::string("certificate: ") + X509_verify_cert_error_string(nResult);
    return DescribeTransportError(error);
}

bool IsCertificateTrouble(const asio::error_code& error) {
    if (error.category() != asio::error::get_ssl_category()) return false;
    const int nReason = ERR_GET_REASON(static_cast<unsigned long>(error.value()));
    if (nReason == SSL_R_CERTIFICATE_VERIFY_FAILED) return true;
    switch (nReason - SSL_AD_REASON_OFFSET) {  // what the other side says of it
    case SSL_AD_NO_CERTIFICATE:
    case SSL_AD_BAD_CERTIFICATE:
    case SSL_AD_UNSUPPORTED_CERTIFICATE:
    case SSL_AD_CERTIFICATE_REVOKED:
    case SSL_AD_CERTIFICATE_EXPIRED:
    case SSL_AD_CERTIFICATE_UNKNOWN:
    case SSL_AD_UNKNOWN_CA:
    case SSL_AD_ACCESS_DENIED:
    case SSL_AD_CERTIFICATE_REQUIRED:
        return true;
    default:
        return false;
    }
}
