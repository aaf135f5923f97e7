#include "platform/system/ReplaceFile.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <random>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/system/Exceptions.h"
#include "platform/system/SystemCalls.h"
#include "platform/system/Text.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view TEMPORARY_PREFIX = ".realtime-save-";
constexpr std::string_view SUFFIX_CHARACTERS = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr std::size_t SUFFIX_LENGTH = 10;
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

bool TryLock(int hFile) {
    return RetryInterrupted([&] { return ::flock(hFile, LOCK_EX | LOCK_NB); }) == 0;
}

/// Whether a path still names the file that is open.
bool IsSameFile(const std::string& strPath, int hFile) {
    struct stat named;
    struct stat open;
    return ::lstat(strPath.c_str(), &named) == 0 && ::fstat(hFile, &open) == 0 &&
           named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

bool IsTemporaryName(std::string_view strName) {
    return strName.size() == TEMPORARY_PREFIX.size() + SUFFIX_LENGTH &&
           strName.starts_with(TEMPORARY_PREFIX) &&
           strName.find_first_not_of(SUFFIX_CHARACTERS, TEMPORARY_PREFIX.size()) ==
               std::string_view::npos;
}

/// Whether this user's saves could have made it: the superuser's have the owner of the old file.
bool IsOwn(int hFile) {
    struct stat status;
    return ::fstat(hFile, &status) == 0 && S_ISREG(status.st_mode) &&
           (status.st_uid == ::geteuid() || ::geteuid() == 0);
}

/// Removes the temporary files of saves that ended without a word: those nobody holds a lock on.
void RemoveStrayTemporaries(const std::string& strFolder) {
    std::error_code error;
    for (fs::directory_iterator entry(strFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string& strPath = entry->path().native();
        if (!IsTemporaryName(entry->path().filename().native())) continue;
        const CDescriptor file(OpenWithoutWaiting(strPath, O_RDONLY | O_NOFOLLOW));
        if (file && IsOwn(file.Get()) && TryLock(file.Get()) && IsSameFile(strPath, file.Get()))
            ::unlink(strPath.c_str());
    }
}

std::string MakeTemporaryName() {
    std::random_device random;
    std::string strName(TEMPORARY_PREFIX);
    for (std::size_t n = 0; n < SUFFIX_LENGTH; ++n)
        strName += SUFFIX_CHARACTERS[random() % SUFFIX_CHARACTERS.size()];
    return strName;
}

/// Makes a call that nothing can interrupt on a thread of its own and tells somebody meanwhile. A
/// call that he does not want to wait for ends by itself.
/// @return what the call has given, or none
std::optional<int> CallShowing(IProgress& progress, std::function<int()> call) {
    constexpr std::chrono::milliseconds SHOW_EVERY{20};
    const auto spTask = std::make_shared<std::packaged_task<int()>>(std::move(call));
    std::future<int> result = spTask->get_future();
    try {
        std::thread([spTask] { (*spTask)(); }).detach();
    } catch (const std::system_error&) {
        (*spTask)();
    }
    while (result.wait_for(SHOW_EVERY) != std::future_status::ready)
        if (!progress.Advance(1, 1)) return std::nullopt;
    return result.get();
}

/// As FlushDescriptor.
/// @throws CUserException
int FlushShowing(IProgress* pProgress, int hFile) {
    if (!pProgress) return FlushDescriptor(hFile);
    const auto spCopy = std::make_shared<CDescriptor>(::fcntl(hFile, F_DUPFD_CLOEXEC, 0));
    if (!*spCopy) return errno;
    const auto error = CallShowing(*pProgress, [spCopy] { return FlushDescriptor(spCopy->Get()); });
    if (!error) throw CUserException();
    return *error;
}

/// As FlushFolder. What is in place already is not given up any more.
int FlushFolderShowing(IProgress* pProgress, const std::string& strFolder) {
    if (!pProgress) return FlushFolder(strFolder);
    const auto error = CallShowing(*pProgress, [strFolder] { return FlushFolder(strFolder); });
    return error.value_or(0);
}

}  // namespace

CReplaceFile::CReplaceFile(const std::wstring& strPath) {
    // The rename would succeed over a file that may not be written; writing to it must not.
    if (TryOpen(strPath, modeWrite) && !IsRegular()) return;
    const CDescriptor oldFile(std::exchange(m_hFile, INVALID));

    m_strTarget = ResolveLinks(ToUtf8(strPath)).native();
    RemoveStrayTemporaries(GetFolder());
    // Nobody looks into what replaces a private file before its permissions are set.
    const unsigned nMode = oldFile ? 0600 : 0666;
    int nError = EEXIST;
    for (int n = 0; nError == EEXIST && n < MAX_ATTEMPTS; ++n) nError = CreateTemporary(nMode);
    if (nError != 0) ThrowError(nError);
    if (oldFile) TakeOverAttributes(oldFile.Get());
}

CReplaceFile::~CReplaceFile() {
    if (!m_strTemporary.empty()) ::unlink(m_strTemporary.c_str());
}

std::string CReplaceFile::GetFolder() const {
    const fs::path folder = fs::path(m_strTarget).parent_path();
    return folder.empty() ? "." : folder.native();
}

/// Opens the file and locks it.
/// @return 0, or the system's error number; EEXIST when another name may work
int CReplaceFile::CreateTemporary(unsigned nMode) {
    const CInterruptPause pause;
    std::string strPath = GetFolder() + "/" + MakeTemporaryName();
    CDescriptor file(OpenWithoutWaiting(strPath, O_RDWR | O_CREAT | O_EXCL, nMode));
    if (!file) return errno;

    // Between its creation and its locking another save may have taken the file for a stray one. A
    // file system that knows no locks lets the save go on without one; nobody can lock it there.
    const bool bTaken = !TryLock(file.Get()) && errno == EWOULDBLOCK;
    if (bTaken || !IsSameFile(strPath, file.Get())) return EEXIST;
    m_hFile = file.Release();
    m_strTemporary = std::move(strPath);
    m_unfinished.Set(m_strTemporary);
    return 0;
}

/// Only as far as the user may: a file can be written by others than its owner.
void CReplaceFile::TakeOverAttributes(int hOldFile) {
    struct stat before;
    struct stat now;
    if (::fstat(hOldFile, &before) != 0) return;
    const auto changeOwner = [&](uid_t nOwner) {
        return RetryInterrupted([&] { return ::fchown(m_hFile, nOwner, before.st_gid); }) == 0;
    };
    if (!changeOwner(before.st_uid)) changeOwner(static_cast<uid_t>(-1));
    if (::fstat(m_hFile, &now) != 0) return;

    mode_t nMode = before.st_mode & 07777;
    if (now.st_uid != before.st_uid) nMode &= ~mode_t{S_ISUID};
    // Members of another group may do what others may, as far as the old group might.
    if (now.st_gid != before.st_gid)
        nMode = (nMode & ~mode_t{S_ISGID | S_IRWXG}) | (nMode & (nMode & S_IRWXO) << 3);
    RetryInterrupted([&] { return ::fchmod(m_hFile, nMode); });
}

void CReplaceFile::Commit(IProgress* pProgress) {
    if (const int nError = FlushShowing(pProgress, m_hFile)) ThrowError(nError);
    if (m_strTemporary.empty()) {
        CFile::Close();
        return;
    }
    // Renamed while it is open and locked, so that nobody takes it for a stray file before.
    if (RetryInterrupted([&] { return ::rename(m_strTemporary.c_str(), m_strTarget.c_str()); }) !=
        0)
        ThrowError(errno);
    m_strTemporary.clear();
    try {
        if (const int nError = FlushFolderShowing(pProgress, GetFolder())) ThrowError(nError);
        CFile::Close();
    } catch (CFileException& error) {
        error.m_strDetail =
            GetText({3143, L"The new file is in place, but may be lost at a loss of power."});
        throw;
    }
}

void CReplaceFile::Close() {
    if (!m_strTemporary.empty()) ::unlink(m_strTemporary.c_str());
    m_strTemporary.clear();
    CFile::Close();
}
