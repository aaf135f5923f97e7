// What the link asks of TLS.
#pragma once

#include <asio/ip/tcp.hpp>
#include <asio/ssl/context.hpp>
#include <asio/ssl/stream.hpp>
#include <string>

#include "link/TlsFiles.h"

using TlsSocket = asio::ssl::stream<asio::ip::tcp::socket>;

/// TLS 1.2 or later for a panel. Without authorities of its own the system's count.
/// @throws CTlsError
asio::ssl::context MakePanelTls(const TlsFiles& files);

/// The same for an instrument, which has a certificate. With authorities it takes only panels whose
/// certificate one of them has signed.
/// @throws CTlsError
asio::ssl::context MakeInstrumentTls(const TlsFiles& files);

/// Has a panel's socket take only a certificate for this host, a name or an address.
void ExpectHost(TlsSocket& socket, const std::string& strHost);

/// Why a handshake failed, in the library's words.
std::string DescribeHandshakeError(TlsSocket& socket, const asio::error_code& error);

/// Whether an error means that a certificate was not taken, by this side or the other.
bool IsCertificateTrouble(const asio::error_code& error);
