// A panel's way to an instrument that listens.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "link/LinkStream.h"
#include "link/NameLookup.h"

/// Opens a stream to an address that is no broker's, as often as it is asked to. All addresses of a
/// name are tried in turn.
///
/// Threads: the context's.
class CConnector {
  public:
    using OnOpened = std::function<void(std::shared_ptr<CLinkStream>)>;
    /// @see StreamEvents::m_onLost
    using OnFailed = std::function<void(const std::string& strWhy, bool bPatient)>;

    /// @param context must outlive the connector
    /// @param files for tls://
    /// @throws CTlsError
    CConnector(asio::io_context& context, LinkAddress address, const TlsFiles& files);
    ~CConnector();

    /// Calls one of the two, later, unless it is told to cancel.
    void Open(OnOpened onOpened, OnFailed onFailed);
    void Cancel();

  private:
    struct Attempt;

    void OpenSerial();
    void TryNext();
    void OnConnected(const asio::error_code& error);
    void ShakeHands();
    void Succeed(std::shared_ptr<CLinkStream> spStream);
    void Fail(const std::string& strWhy, bool bPatient);

    asio::io_context& m_context;
    const LinkAddress m_address;
    std::optional<asio::ssl::context> m_tls;
    CNameLookup m_lookup;
    OnOpened m_onOpened;
    OnFailed m_onFailed;
    std::shared_ptr<Attempt> m_spAttempt;  ///< under way; its handlers know by it that they are due
};
