#include "link/BrokerClient.h"

#include <mosquitto.h>
#include <mqtt_protocol.h>

#include <asio/post.hpp>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include "link/LinkStream.h"
#include "platform/system/Threads.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int KEEPALIVE_SECONDS = 5;
constexpr int LOOP_MILLISECONDS = 100;
constexpr int REFUSED = 0x80;  ///< reasons from here on are failures
constexpr std::size_t MAX_PASSWORD = 1024;
constexpr std::size_t MESSAGE_COST = 256;  ///< of a message, beside its bytes

std::atomic<int> g_nThreads = 0;

bool IsPermissionTrouble(int nReason) {
    return nReason == MQTT_RC_BAD_USERNAME_OR_PASSWORD || nReason == MQTT_RC_NOT_AUTHORIZED ||
           nReason == MQTT_RC_BANNED;
}

std::string MakeSentence(std::string strText) {
    if (strText.ends_with('.')) strText.pop_back();
    if (strText.size() > 1 && std::islower(static_cast<unsigned char>(strText[1])) != 0)
        strText[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(strText[0])));
    return strText;
}

/// What the library says of certificates is the last part of a line of its log.
std::string FindTlsReason(const std::string& strLog) {
    if (strLog.empty()) return "TLS failed";
    const std::size_t nColon = strLog.rfind(':');
    return MakeSentence(nColon == std::string::npos ? strLog : strLog.substr(nColon + 1));
}

}  // namespace

/// What the client and its thread share; the last of them lets it go.
struct CBrokerClient::State : std::enable_shared_from_this<State> {
    // The thread.
    void Run();
    bool SetUp();
    bool Connect();
    void Converse();
    void End(const std::string& strWhy, bool bPatient);
    std::optional<Clock::time_point> FindDeadline();
    void Refuse(const char* pWhy, bool bPermission);
    /// Has a call made on the context's thread, if there still is an owner then.
    void Tell(std::function<void()> call);

    // The library's callbacks, on the thread.
    void OnConnected(int nReason);
    void OnSubscribed(int nGranted);
    void OnMessage(const mosquitto_message& message);
    void OnPublished(int nMessage);

    // The context's thread.
    void TakeMessages();

    asio::io_context* m_pContext = nullptr;
    BrokerSettings m_settings;
    BrokerEvents m_events;
    std::promise<void> m_done;

    // Of the thread.
    std::string m_strPassword;
    std::string m_strLog;  ///< the library's last complaint
    std::string m_strRefusal;
    bool m_bShaken = false;      ///< the broker has answered
    bool m_bPermission = false;  ///< the refusal is about it
    std::size_t m_nGranted = 0;  ///< subscriptions

    std::mutex m_useMutex;  ///< held while the library is used by the context's thread
    mosquitto* m_pClient = nullptr;

    std::mutex m_mutex;  ///< guards what follows
    std::condition_variable m_taken;
    bool m_bOwned = true;
    bool m_bClosing = false;
    Clock::time_point m_deadline;
    bool m_bReading = true;
    bool m_bTelling = false;  ///< a call that takes messages is on its way
    std::deque<BrokerMessage> m_inbox;
    std::size_t m_nInboxBytes = 0;
    std::map<int, std::size_t> m_unsent;  ///< sizes by the library's numbers
    std::set<int> m_early;                ///< reported as sent before their number was known
    std::size_t m_nUnsentBytes = 0;
};

void CBrokerClient::State::Run() {
    NameThread("link-broker");
    BlockPipeSignal();
    if (SetUp() && Connect()) Converse();
    mosquitto* pClient = nullptr;
    {
        const std::lock_guard lock(m_useMutex);
        std::swap(pClient, m_pClient);
    }
    mosquitto_destroy(pClient);
    --g_nThreads;
    m_done.set_value();
}

bool CBrokerClient::State::SetUp() {
    static const int s_nInitialised = mosquitto_lib_init();
    mosquitto* const pClient =
        s_nInitialised == MOSQ_ERR_SUCCESS ? mosquitto_new(nullptr, true, this) : nullptr;
    if (!pClient) {
        End("out of memory", false);
        return false;
    }
    {
        const std::lock_guard lock(m_useMutex);
        m_pClient = pClient;
    }
    mosquitto_int_option(pClient, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_threaded_set(pClient, true);
    mosquitto_connect_v5_callback_set(
        pClient, [](mosquitto*, void* p, int nReason, int, const mosquitto_property*) {
            static_cast<State*>(p)->OnConnected(nReason);
        });
    mosquitto_disconnect_v5_callback_set(
        pClient, [](mosquitto*, void* p, int nReason, const mosquitto_property*) {
            if (nReason >= REFUSED)
                static_cast<State*>(p)->m_strRefusal = mosquitto_reason_string(nReason);
        });
    mosquitto_subscribe_callback_set(pClient,
                                     [](mosquitto*, void* p, int, int nCount, const int* pGranted) {
                                         for (int n = 0; n < nCount; ++n)
                                             static_cast<State*>(p)->OnSubscribed(pGranted[n]);
                                     });
    mosquitto_message_callback_set(pClient,
                                   [](mosquitto*, void* p, const mosquitto_message* pMessage) {
                                       static_cast<State*>(p)->OnMessage(*pMessage);
                                   });
    mosquitto_publish_callback_set(pClient, [](mosquitto*, void* p, int nMessage) {
        static_cast<State*>(p)->OnPublished(nMessage);
    });
    mosquitto_log_callback_set(pClient, [](mosquitto*, void* p, int nLevel, const char* pText) {
        if (nLevel == MOSQ_LOG_ERR) static_cast<State*>(p)->m_strLog = pText;
    });
    return true;
}

bool CBrokerClient::State::Connect() {
    const auto& [strUser, strPasswordFile] = m_settings.m_login;
    if (!strPasswordFile.empty()) {
        std::ifstream file(strPasswordFile);
        if (!std::getline(file, m_strPassword) || m_strPassword.size() > MAX_PASSWORD) {
            End(strPasswordFile + ": there is no password", true);
            return false;
        }
        if (m_strPassword.ends_with('\r')) m_strPassword.pop_back();
    }
    if (!strUser.empty())
        mosquitto_username_pw_set(m_pClient, strUser.c_str(),
                                  strPasswordFile.empty() ? nullptr : m_strPassword.c_str());
    int nResult = MOSQ_ERR_SUCCESS;
    if (m_settings.m_address.IsEncrypted()) {
        const auto orNull = [](const std::string& str) {
            return str.empty() ? nullptr : str.c_str();
        };
        const auto& [strAuthorities, strCertificate, strKey] = m_settings.m_tlsFiles;
        if (strAuthorities.empty()) mosquitto_int_option(m_pClient, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
        nResult = mosquitto_tls_set(
            m_pClient, orNull(strAuthorities), nullptr, orNull(strCertificate), orNull(strKey),
            // A key with a password would have the library ask for it on the terminal.
            [](char*, int, int, void*) { return 0; });
        if (nResult == MOSQ_ERR_SUCCESS) mosquitto_tls_opts_set(m_pClient, 1, nullptr, nullptr);
    }
    if (const auto& will = m_settings.m_will; will && nResult == MOSQ_ERR_SUCCESS)
        nResult = mosquitto_will_set_v5(
            m_pClient, will->m_strTopic.c_str(), static_cast<int>(will->m_bytes.size()),
            will->m_bytes.data(), static_cast<int>(will->m_care), will->m_bRetained, nullptr);
    mosquitto_property* pProperties = nullptr;
    mosquitto_property_add_int32(&pProperties, MQTT_PROP_MAXIMUM_PACKET_SIZE, MAX_PACKET);
    if (nResult == MOSQ_ERR_SUCCESS)
        nResult = mosquitto_connect_bind_v5(m_pClient, m_settings.m_address.m_strHost.c_str(),
                                            m_settings.m_address.m_nPort, KEEPALIVE_SECONDS,
                                            nullptr, pProperties);
    const int nError = errno;
    mosquitto_property_free_all(&pProperties);
    if (nResult == MOSQ_ERR_SUCCESS) return true;
    if (nResult == MOSQ_ERR_ERRNO)
        End(DescribeTransportError({nError, asio::system_category()}), false);
    else if (nResult == MOSQ_ERR_TLS)
        End(FindTlsReason(m_strLog), true);
    else
        End(MakeSentence(mosquitto_strerror(nResult)), false);
    return false;
}

void CBrokerClient::State::Converse() {
    bool bTakesLeave = false;
    for (;;) {
        const auto deadline = FindDeadline();
        if (deadline && !std::exchange(bTakesLeave, true)) {
            if (Clock::now() >= *deadline) return;  // without taking leave
            mosquitto_disconnect_v5(m_pClient, 0, nullptr);
        }
        const int nResult = mosquitto_loop(m_pClient, LOOP_MILLISECONDS, 1);
        if (bTakesLeave) {
            if (nResult != MOSQ_ERR_SUCCESS || Clock::now() >= deadline) return;
        } else if (nResult == MOSQ_ERR_TLS) {
            // The handshake may go on behind the connecting.
            return End(FindTlsReason(m_strLog), !m_bShaken);
        } else if (nResult != MOSQ_ERR_SUCCESS) {
            if (m_strRefusal.empty())
                m_strRefusal = nResult == MOSQ_ERR_CONN_LOST ? "closed by the broker"
                                                             : mosquitto_strerror(nResult);
            return End(MakeSentence(m_strRefusal), m_bPermission);
        }
    }
}

std::optional<Clock::time_point> CBrokerClient::State::FindDeadline() {
    const std::lock_guard lock(m_mutex);
    return m_bClosing ? std::optional(m_deadline) : std::nullopt;
}

void CBrokerClient::State::Tell(std::function<void()> call) {
    const std::lock_guard lock(m_mutex);
    if (!m_bOwned) return;
    asio::post(*m_pContext, [spThis = shared_from_this(), call = std::move(call)] {
        // Only the context's thread parts from the state while the context runs.
        if (spThis->m_bOwned) call();
    });
}

void CBrokerClient::State::End(const std::string& strWhy, bool bPatient) {
    Tell([this, strWhy, bPatient] { m_events.m_onLost(strWhy, bPatient); });
}

void CBrokerClient::State::Refuse(const char* pWhy, bool bPermission) {
    m_strRefusal = pWhy;
    m_bPermission = bPermission;
    mosquitto_disconnect_v5(m_pClient, 0, nullptr);
}

void CBrokerClient::State::OnConnected(int nReason) {
    m_bShaken = true;
    if (nReason != 0) {
        m_strRefusal = mosquitto_reason_string(nReason);
        m_bPermission = IsPermissionTrouble(nReason);
        return;
    }
    for (const auto& [strTopic, care] : m_settings.m_subscriptions)
        mosquitto_subscribe_v5(m_pClient, nullptr, strTopic.c_str(), static_cast<int>(care), 0,
                               nullptr);
    if (m_settings.m_subscriptions.empty()) Tell([this] { m_events.m_onOpened(); });
}

void CBrokerClient::State::OnSubscribed(int nGranted) {
    if (nGranted >= REFUSED) return Refuse("a subscription is not permitted", true);
    if (++m_nGranted == m_settings.m_subscriptions.size()) Tell([this] { m_events.m_onOpened(); });
}

void CBrokerClient::State::OnMessage(const mosquitto_message& message) {
    try {
        const auto* const pBytes = static_cast<const std::uint8_t*>(message.payload);
        BrokerMessage copy;
        copy.m_strTopic = message.topic;
        copy.m_bytes.assign(pBytes, pBytes + message.payloadlen);
        std::unique_lock lock(m_mutex);
        m_taken.wait(lock, [this] { return m_bClosing || m_nInboxBytes < INBOX_BYTES; });
        if (m_bClosing) return;
        m_nInboxBytes += copy.m_bytes.size() + MESSAGE_COST;
        m_inbox.push_back(std::move(copy));
        if (!m_bReading || std::exchange(m_bTelling, true)) return;
        lock.unlock();
        Tell([this] { TakeMessages(); });
    } catch (const std::bad_alloc&) {
        Refuse("out of memory", false);
    }
}

void CBrokerClient::State::TakeMessages() {
    const auto spThis = shared_from_this();  // a message may be the last thing its owner hears
    std::unique_lock lock(m_mutex);
    m_bTelling = false;
    while (m_bOwned && m_bReading && !m_inbox.empty()) {
        const BrokerMessage message = std::move(m_inbox.front());
        m_inbox.pop_front();
        m_nInboxBytes -= message.m_bytes.size() + MESSAGE_COST;
        lock.unlock();
        m_taken.notify_one();
        m_events.m_onMessage(message.m_strTopic, message.m_bytes);
        lock.lock();
    }
}

void CBrokerClient::State::OnPublished(int nMessage) {
    {
        const std::lock_guard lock(m_mutex);
        const auto it = m_unsent.find(nMessage);
        if (it == m_unsent.end()) {
            m_early.insert(nMessage);
            return;
        }
        m_nUnsentBytes -= it->second;
        m_unsent.erase(it);
        if (m_nUnsentBytes > 0) return;
    }
    Tell([this] { m_events.m_onSent(); });
}

CBrokerClient::CBrokerClient(asio::io_context& context, BrokerSettings settings,
                             BrokerEvents events)
    : m_spState(std::make_shared<State>()) {
    m_spState->m_pContext = &context;
    m_spState->m_settings = std::move(settings);
    m_spState->m_events = std::move(events);
    if (++g_nThreads > MAX_THREADS) {
        --g_nThreads;
        m_spState->End("too many connections are under way", false);
        m_spState->m_done.set_value();
        return;
    }
    std::thread([spState = m_spState] { spState->Run(); }).detach();
}

CBrokerClient::~CBrokerClient() {
    const std::lock_guard lock(m_spState->m_mutex);
    m_spState->m_bOwned = false;
    if (!std::exchange(m_spState->m_bClosing, true)) m_spState->m_deadline = Clock::now();
    m_spState->m_taken.notify_one();
}

void CBrokerClient::Publish(const BrokerMessage& message) {
    int nMessage = 0;
    {
        const std::lock_guard lock(m_spState->m_useMutex);
        if (!m_spState->m_pClient ||
            mosquitto_publish_v5(m_spState->m_pClient, &nMessage, message.m_strTopic.c_str(),
                                 static_cast<int>(message.m_bytes.size()), message.m_bytes.data(),
                                 static_cast<int>(message.m_care), message.m_bRetained,
                                 nullptr) != MOSQ_ERR_SUCCESS)
            return;
    }
    bool bSent = false;
    {
        const std::lock_guard lock(m_spState->m_mutex);
        if (m_spState->m_early.erase(nMessage) == 0) {
            m_spState->m_unsent.emplace(nMessage, message.m_bytes.size() + MESSAGE_COST);
            m_spState->m_nUnsentBytes += message.m_bytes.size() + MESSAGE_COST;
        } else {
            bSent = m_spState->m_nUnsentBytes == 0;
        }
    }
    if (bSent) m_spState->Tell([spState = m_spState] { spState->m_events.m_onSent(); });
}

std::size_t CBrokerClient::CountUnsent() const {
    const std::lock_guard lock(m_spState->m_mutex);
    return m_spState->m_nUnsentBytes;
}

void CBrokerClient::SetReading(bool bReading) {
    {
        const std::lock_guard lock(m_spState->m_mutex);
        if (std::exchange(m_spState->m_bReading, bReading) == bReading || !bReading ||
            m_spState->m_inbox.empty() || std::exchange(m_spState->m_bTelling, true))
            return;
    }
    m_spState->Tell([spState = m_spState] { spState->TakeMessages(); });
}

std::future<void> CBrokerClient::Close() {
    const std::lock_guard lock(m_spState->m_mutex);
    m_spState->m_bOwned = false;
    m_spState->m_bClosing = true;
    m_spState->m_deadline = Clock::now() + CLOSE_TIME;
    m_spState->m_taken.notify_one();
    return m_spState->m_done.get_future();
}
