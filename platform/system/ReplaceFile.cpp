#include "platform/system/ReplaceFile.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/system/Text.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view TEMPORARY_PREFIX = ".realtime-save-";
constexpr int MAX_LINKS = 40;
constexpr int MAX_ATTEMPTS = 100;

/// Follows links to the last name, which need not exist.
fs::path ResolveLinks(fs::path path) {
    std::error_code error;
    for (int nLink = 0; nLink < MAX_LINKS && fs::is_symlink(path, error); ++nLink) {
        const fs::path link = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / link;
    }
    return path;
}

bool TryLock(int hFile) { return ::flock(hFile, LOCK_EX | LOCK_NB) == 0; }

/// Whether a path still names the file that is open.
bool IsSameFile(const std::string& strPath, int hFile) {
    struct stat named;
    struct stat open;
    return ::lstat(strPath.c_str(), &named) == 0 && ::fstat(hFile, &open) == 0 &&
           named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

/// Removes the temporary files of saves that ended without a word: those nobody holds a lock on.
void RemoveStrayTemporaries(const std::string& strFolder) {
    std::error_code error;
    for (fs::directory_iterator entry(strFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().filename().native().starts_with(TEMPORARY_PREFIX)) continue;
        const std::string strPath = entry->path().native();
        const int hFile = ::open(strPath.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (hFile < 0) continue;
        if (TryLock(hFile) && IsSameFile(strPath, hFile)) ::unlink(strPath.c_str());
        ::close(hFile);
    }
}

std::string MakeTemporaryName() {
    constexpr std::string_view strDigits = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    std::string strName(TEMPORARY_PREFIX);
    for (int n = 0; n < 10; ++n) strName += strDigits[random() % strDigits.size()];
    return strName;
}

}  // namespace

CReplaceFile::CReplaceFile(const std::wstring& strPath) {
    m_strFilePath = strPath;
    const fs::path target = ResolveLinks(ToUtf8(strPath));
    m_strTarget = target.native();
    if (m_strTarget.find('\0') != std::string::npos) ThrowError(EINVAL);

    // The rename would succeed over a file that may not be written; writing to it must not.
    const int hOldFile = ::open(m_strTarget.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (hOldFile < 0 && errno != ENOENT) ThrowError(errno);
    struct stat status;
    if (hOldFile >= 0 && ::fstat(hOldFile, &status) == 0 && !S_ISREG(status.st_mode)) {
        m_hFile = hOldFile;
        return;
    }

    const std::string strFolder =
        target.has_parent_path() ? target.parent_path().native() : std::string(".");
    RemoveStrayTemporaries(strFolder);
    int nAttempts = 0;
    while (!TryCreateTemporary(strFolder) && errno == EEXIST && ++nAttempts < MAX_ATTEMPTS) {
    }
    const int nError = errno;
    if (hOldFile >= 0) {
        if (m_hFile != INVALID) TakeOverAttributes(hOldFile);
        ::close(hOldFile);
    }
    if (m_hFile == INVALID) ThrowError(nError);
}

CReplaceFile::~CReplaceFile() {
    if (!m_strTemporary.empty()) ::unlink(m_strTemporary.c_str());
}

/// @return whether the file is open and locked; otherwise errno is EEXIST when another name may
/// work
bool CReplaceFile::TryCreateTemporary(const std::string& strFolder) {
    const CInterruptPause pause;
    const std::string strPath = strFolder + "/" + MakeTemporaryName();
    const int hFile = ::open(strPath.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (hFile < 0) return false;

    // Between its creation and its locking another save may have taken the file for a stray one. A
    // file system that knows no locks lets the save go on without one; nobody can lock it there.
    const bool bTaken = !TryLock(hFile) && errno == EWOULDBLOCK;
    if (bTaken || !IsSameFile(strPath, hFile)) {
        ::close(hFile);
        errno = EEXIST;
        return false;
    }
    m_hFile = hFile;
    m_strTemporary = strPath;
    m_unfinished.Set(strPath);
    return true;
}

/// Only as far as the user may: a file can be written by others than its owner.
void CReplaceFile::TakeOverAttributes(int hOldFile) {
    struct stat status;
    if (::fstat(hOldFile, &status) != 0) return;
    const bool bSameOwner = ::fchown(m_hFile, status.st_uid, status.st_gid) == 0;
    const mode_t nMode = bSameOwner ? status.st_mode & 07777 : status.st_mode & 0777;
    ::fchmod(m_hFile, nMode);
}

void CReplaceFile::SyncFolder() {
    const std::string strFolder = fs::path(m_strTarget).parent_path().native();
    const int hFolder =
        ::open(strFolder.empty() ? "." : strFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A folder that may be written to but not read cannot be opened, and so not be flushed.
    if (hFolder < 0) return;
    const int nError = ::fsync(hFolder) == 0 ? 0 : errno;
    ::close(hFolder);
    if (nError != 0 && nError != EINVAL && nError != EROFS) ThrowError(nError);
}

void CReplaceFile::Commit() {
    Flush();
    if (!m_strTemporary.empty()) {
        // Renamed while it is open and locked, so that nobody takes it for a stray file before.
        if (::rename(m_strTemporary.c_str(), m_strTarget.c_str()) != 0) ThrowError(errno);
        m_strTemporary.clear();
        SyncFolder();
    }
    CFile::Close();
}

void CReplaceFile::Close() {
    if (!m_strTemporary.empty()) ::unlink(m_strTemporary.c_str());
    m_strTemporary.clear();
    CFile::Close();
}
