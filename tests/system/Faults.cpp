#include "tests/system/Faults.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

thread_local Fault* t_pFault = nullptr;

template <class... Arguments>
int Call(const char* pName, long nNumber, Arguments... arguments) {
    if (t_pFault && t_pFault->Fails(pName)) return -1;
    if (t_pFault) t_pFault->m_strMade.append(" ").append(pName);
    return static_cast<int>(::syscall(nNumber, arguments...));
}

}  // namespace

Fault::Fault(int nCall, int nError) : m_nCallsBefore(nCall), m_nError(nError) { t_pFault = this; }
Fault::~Fault() { t_pFault = nullptr; }

bool Fault::Fails(const char* pCall) {
    if (m_nCallsBefore-- != 0) return false;
    m_strFailed = pCall;
    errno = m_nError;
    return true;
}

// The program's own definitions of the system's calls, which its libraries use too.
#define SYSTEM_CALL extern "C" __attribute__((visibility("default")))

SYSTEM_CALL int open(const char* pPath, int nFlags, ...) {
    va_list arguments;
    va_start(arguments, nFlags);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    const int nMode = nFlags & O_CREAT ? va_arg(arguments, int) : 0;
    va_end(arguments);
    return Call("open", SYS_openat, AT_FDCWD, pPath, nFlags, nMode);
}
SYSTEM_CALL int flock(int hFile, int nHow) noexcept {
    return Call("flock", SYS_flock, hFile, nHow);
}
SYSTEM_CALL int fchown(int hFile, uid_t nOwner, gid_t nGroup) noexcept {
    return Call("fchown", SYS_fchown, hFile, nOwner, nGroup);
}
SYSTEM_CALL int fchmod(int hFile, mode_t nMode) noexcept {
    return Call("fchmod", SYS_fchmod, hFile, nMode);
}
SYSTEM_CALL ssize_t write(int hFile, const void* pBytes, std::size_t nCount) {
    return Call("write", SYS_write, hFile, pBytes, nCount);
}
SYSTEM_CALL int fsync(int hFile) {
    if (g_beforeFlush) g_beforeFlush();
    return Call("fsync", SYS_fsync, hFile);
}
SYSTEM_CALL int rename(const char* pOld, const char* pNew) noexcept {
    return Call("rename", SYS_renameat2, AT_FDCWD, pOld, AT_FDCWD, pNew, 0);
}
SYSTEM_CALL int close(int hFile) {
    const auto nResult = static_cast<int>(::syscall(SYS_close, hFile));
    if (t_pFault) t_pFault->m_strMade += " close";
    return t_pFault && t_pFault->Fails("close") ? -1 : nResult;
}
