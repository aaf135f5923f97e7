#include "platform/system/DynamicLibrary.h"

#include <dlfcn.h>

#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "platform/system/Threads.h"

namespace {

std::wstring WithPlatformExtension(const std::wstring& strName) {
    const std::size_t nNameStart = strName.rfind(L'/') + 1;
    const std::size_t nDot = strName.rfind(L'.');
    const bool bHasExtension = nDot != std::wstring::npos && nDot > nNameStart;
    return (bHasExtension ? strName.substr(0, nDot) : strName) + L".so";
}

void* Load(const std::wstring& strPath) {
    void* hModule = ::dlopen(ToUtf8(strPath).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!hModule) TraceDebug(FromUtf8(::dlerror()).c_str());
    return hModule;
}

}  // namespace

CDynamicLibrary::CDynamicLibrary(const std::wstring& strName) {
    const std::wstring strFile = WithPlatformExtension(strName);
    const std::wstring strBeside = JoinPath(GetExecutableFolder(), strFile);
    if (strFile.find(L'/') == std::wstring::npos && FileExists(strBeside))
        m_hModule = Load(strBeside);
    if (!m_hModule) m_hModule = Load(strFile);
}

CDynamicLibrary::~CDynamicLibrary() {
    if (m_hModule) ::dlclose(m_hModule);
}

void* CDynamicLibrary::FindSymbol(const char* pName) const {
    return m_hModule ? ::dlsym(m_hModule, pName) : nullptr;
}
