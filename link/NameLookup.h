// Looks up the addresses of a host.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The system's lookup may take half a minute, and nothing can end it. It runs on a thread of its
/// own, which is left alone when nobody waits for it any more; a next try waits for the same one.
///
/// Threads: the context's.
class CNameLookup {
  public:
    using Endpoints = std::vector<asio::ip::tcp::endpoint>;
    using OnFound = std::function<void(const Endpoints& endpoints, const std::string& strWhyNone)>;

    /// @param context must outlive the lookup
    CNameLookup(asio::io_context& context, std::string strHost, std::uint16_t nPort);
    ~CNameLookup();
    CNameLookup(const CNameLookup&) = delete;
    CNameLookup& operator=(const CNameLookup&) = delete;

    /// Calls back later, once, unless it is told to forget.
    void Find(OnFound onFound);
    void Forget() { m_onFound = nullptr; }

  private:
    struct Job;
    void OnDone(const Endpoints& endpoints, const std::string& strWhyNone);

    asio::io_context& m_context;
    const std::string m_strHost;
    const std::uint16_t m_nPort;
    OnFound m_onFound;
    std::shared_ptr<Job> m_spJob;  ///< under way
};
