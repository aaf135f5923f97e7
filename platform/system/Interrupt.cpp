#include "platform/system/Interrupt.h"

#include <atomic>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "platform/system/File.h"
#include "platform/system/Text.h"

namespace fs = std::filesystem;

namespace {

constexpr int INTERRUPTS[] = {SIGINT, SIGTERM, SIGHUP};

/// Owned by a CUnfinishedFile; read by the signal handler.
std::atomic<const char*> g_pUnfinished = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

sigset_t MakeInterruptSet() {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int nSignal : INTERRUPTS) ::sigaddset(&set, nSignal);
    return set;
}

/// The signal waits while its handler runs, and then ends the process.
void OnInterrupt(int nSignal) {
    if (const char* const pPath = g_pUnfinished) ::unlink(pPath);
    std::signal(nSignal, SIG_DFL);
    ::raise(nSignal);
}

}  // namespace

void CleanUpOnInterrupt() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    action.sa_mask = MakeInterruptSet();
    for (const int nSignal : INTERRUPTS) {
        struct sigaction before {};
        ::sigaction(nSignal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) ::sigaction(nSignal, &action, nullptr);
    }
}

CInterruptPause::CInterruptPause() {
    const sigset_t interrupts = MakeInterruptSet();
    ::pthread_sigmask(SIG_BLOCK, &interrupts, &m_before);
}

CInterruptPause::~CInterruptPause() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

void CUnfinishedFile::Create(CFile& file, const std::wstring& strPath) {
    constexpr UINT nFlags = CFile::modeWrite | CFile::modeCreate;
    const fs::path path = ToUtf8(strPath);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        // What is no file of its own is not removed.
        file.Open(strPath, nFlags);
        return;
    }
    const CInterruptPause pause;
    file.Open(strPath, nFlags);
    const fs::path target = fs::canonical(path, error);
    Set(error ? path.native() : target.native());
}

void CUnfinishedFile::Set(const std::string& strPath) {
    Forget();
    m_strPath = strPath;
    g_pUnfinished = m_strPath.c_str();
}

void CUnfinishedFile::Remove() {
    if (!m_strPath.empty()) ::unlink(m_strPath.c_str());
}

void CUnfinishedFile::Forget() {
    const char* pPath = m_strPath.c_str();
    g_pUnfinished.compare_exchange_strong(pPath, nullptr);
}
