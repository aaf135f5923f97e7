#include "platform/system/FileEvents.h"

#include <mutex>
#include <new>
#include <vector>

namespace {

std::mutex g_mutex;  ///< guards the list, and is held while listeners are called
std::vector<const CFileListener*> g_listeners;

}  // namespace

CFileListener::CFileListener(std::function<void(const FileEvent&)> onEvent)
    : m_onEvent(std::move(onEvent)) {
    const std::lock_guard lock(g_mutex);
    g_listeners.push_back(this);
}

CFileListener::~CFileListener() {
    const std::lock_guard lock(g_mutex);
    std::erase(g_listeners, this);
}

void TellFileListeners(const FileEvent& event) noexcept {
    const std::lock_guard lock(g_mutex);
    for (const CFileListener* pListener : g_listeners) {
        try {
            pListener->m_onEvent(event);
        } catch (const std::bad_alloc&) {
            // The work itself has ended as it did, and whoever asked for it learns of that.
        }
    }
}
