#include "platform/system/NamedMutex.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/system/Text.h"

namespace {

/// Other users can write to the temporary folder, so a folder there is trusted only when it is a
/// real folder of this user that nobody else can enter.
bool IsPrivateFolder(const std::string& strFolder) {
    struct stat status;
    return ::lstat(strFolder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & 077) == 0;
}

/// The user's run-time folder, or an empty string when there is none to be had.
std::string FindRuntimeFolder() {
    const char* pFolder = std::getenv("XDG_RUNTIME_DIR");
    if (pFolder && *pFolder == '/' && IsPrivateFolder(pFolder)) return pFolder;

    std::error_code error;
    const std::filesystem::path temporary = std::filesystem::temp_directory_path(error);
    if (error) return {};
    const std::string strFolder =
        (temporary / ("realtime-" + std::to_string(::geteuid()))).native();
    ::mkdir(strFolder.c_str(), 0700);
    return IsPrivateFolder(strFolder) ? strFolder : std::string();
}

std::string GetLockPath(const std::wstring& strName) {
    const std::string strFolder = FindRuntimeFolder();
    if (strFolder.empty()) return {};
    std::string strFile = ToUtf8(strName);
    for (char& c : strFile)
        if (c == '/' || c == '\0') c = '_';
    return strFolder + "/" + strFile + ".mutex";
}

struct flock WholeFile(short nType) {
    struct flock lock = {};
    lock.l_type = nType;
    lock.l_whence = SEEK_SET;
    return lock;
}

}  // namespace

CNamedMutex::CNamedMutex(const std::wstring& strName) {
    const std::string strPath = GetLockPath(strName);
    if (strPath.empty()) return;
    m_hFile = ::open(strPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_hFile < 0) return;

    // Shared, so that any number of holders count as one mutex; of the open file, not the process,
    // so that two holders in one process do not release each other.
    struct flock lock = WholeFile(F_RDLCK);
    if (::fcntl(m_hFile, F_OFD_SETLK, &lock) != 0) {
        ::close(m_hFile);
        m_hFile = -1;
    }
}

CNamedMutex::~CNamedMutex() {
    if (m_hFile >= 0) ::close(m_hFile);
}

bool CNamedMutex::Exists(const std::wstring& strName) {
    const std::string strPath = GetLockPath(strName);
    if (strPath.empty()) return false;
    const int hFile = ::open(strPath.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (hFile < 0) return false;

    // Asks who would be in the way of an exclusive lock; nothing is locked by asking.
    struct flock lock = WholeFile(F_WRLCK);
    const bool bHeld = ::fcntl(hFile, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(hFile);
    return bHeld;
}
