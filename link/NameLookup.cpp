#include "link/NameLookup.h"

#include <asio/ip/address.hpp>
#include <asio/post.hpp>
#include <mutex>
#include <thread>
#include <utility>

#include "link/LinkStream.h"
#include "platform/system/Threads.h"

/// What the lookup's thread shares with its owner.
struct CNameLookup::Job {
    std::mutex m_mutex;
    CNameLookup* m_pOwner;  ///< null: gone; guarded by m_mutex
};

CNameLookup::CNameLookup(asio::io_context& context, std::string strHost, std::uint16_t nPort)
    : m_context(context), m_strHost(std::move(strHost)), m_nPort(nPort) {}

CNameLookup::~CNameLookup() {
    if (!m_spJob) return;
    const std::lock_guard lock(m_spJob->m_mutex);
    m_spJob->m_pOwner = nullptr;
}

void CNameLookup::Find(OnFound onFound) {
    m_onFound = std::move(onFound);
    if (m_spJob) return;
    const auto spNew = std::make_shared<Job>();
    spNew->m_pOwner = this;
    std::thread([spJob = spNew, strHost = m_strHost, nPort = m_nPort] {
        NameThread("link-lookup");
        asio::io_context context;
        asio::error_code error;
        Endpoints endpoints;
        for (const auto& entry : asio::ip::tcp::resolver(context).resolve(
                 strHost, std::to_string(nPort), asio::ip::resolver_base::numeric_service, error))
            endpoints.push_back(entry.endpoint());
        const std::string strWhyNone = error ? DescribeTransportError(error) : "";
        const std::lock_guard lock(spJob->m_mutex);
        if (!spJob->m_pOwner) return;
        asio::post(spJob->m_pOwner->m_context, [spJob, endpoints, strWhyNone] {
            // Behind this call the owner can only go on the context's own thread.
            if (spJob->m_pOwner) spJob->m_pOwner->OnDone(endpoints, strWhyNone);
        });
    }).detach();
    m_spJob = spNew;
}

void CNameLookup::OnDone(const Endpoints& endpoints, const std::string& strWhyNone) {
    m_spJob.reset();
    if (const OnFound onFound = std::exchange(m_onFound, nullptr)) onFound(endpoints, strWhyNone);
}
