#include "platform/system/File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/Exceptions.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"

namespace {

int OpenRetrying(const std::wstring& strPath, int nFlags) {
    const std::string strBytes = ToUtf8(strPath);
    if (strBytes.find('\0') != std::string::npos) {
        errno = EINVAL;
        return -1;
    }
    int hFile;
    do {
        hFile = ::open(strBytes.c_str(), nFlags | O_CLOEXEC, 0666);
    } while (hFile < 0 && errno == EINTR);
    return hFile;
}

int ToSystemFlags(UINT nOpenFlags) {
    int nFlags = O_RDONLY;
    if (nOpenFlags & CFile::modeWrite) nFlags = O_WRONLY;
    if (nOpenFlags & CFile::modeCreate) nFlags |= O_CREAT | O_TRUNC;
    return nFlags;
}

}  // namespace

CFile::~CFile() {
    if (m_hFile != INVALID) ::close(m_hFile);
}

void CFile::ThrowError(int nSystemError) const {
    throw CFileException(m_strFilePath, nSystemError);
}

void CFile::Open(const std::wstring& strPath, UINT nOpenFlags) {
    Close();
    m_strFilePath = strPath;
    m_hFile = OpenRetrying(strPath, ToSystemFlags(nOpenFlags));
    if (m_hFile < 0 && errno == ENOENT && nOpenFlags == modeRead) {
        const std::wstring strFound = FindFileOfAnyCase(strPath);
        m_hFile = OpenRetrying(strFound, O_RDONLY);
    }
    if (m_hFile < 0) ThrowError(errno);

    // Opening a directory for reading succeeds, and only the first read would fail.
    struct stat status;
    if (::fstat(m_hFile, &status) != 0 || S_ISDIR(status.st_mode)) {
        ::close(m_hFile);
        m_hFile = INVALID;
        ThrowError(EISDIR);
    }
}

void CFile::OpenStandardOutput() {
    Close();
    m_strFilePath = L"standard output";
    m_hFile = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (m_hFile < 0) ThrowError(errno);
}

void CFile::OpenStandardInput() {
    Close();
    m_strFilePath = L"standard input";
    m_hFile = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
    if (m_hFile < 0) ThrowError(errno);
}

bool CFile::IsRegular() const {
    struct stat status;
    return ::fstat(m_hFile, &status) == 0 && S_ISREG(status.st_mode);
}

std::size_t CFile::Read(void* pBuffer, std::size_t nCount) {
    auto* pBytes = static_cast<std::uint8_t*>(pBuffer);
    std::size_t nRead = 0;
    while (nRead < nCount) {
        const ssize_t nPart = ::read(m_hFile, pBytes + nRead, nCount - nRead);
        if (nPart > 0)
            nRead += static_cast<std::size_t>(nPart);
        else if (nPart == 0)
            break;
        else if (errno != EINTR)
            ThrowError(errno);
    }
    return nRead;
}

void CFile::Write(const void* pBuffer, std::size_t nCount) {
    const auto* pBytes = static_cast<const std::uint8_t*>(pBuffer);
    while (nCount > 0) {
        const ssize_t nPart = ::write(m_hFile, pBytes, nCount);
        if (nPart >= 0) {
            pBytes += nPart;
            nCount -= static_cast<std::size_t>(nPart);
        } else if (errno != EINTR) {
            ThrowError(errno);
        }
    }
}

std::uint64_t CFile::GetPosition() const {
    const off_t nPosition = ::lseek(m_hFile, 0, SEEK_CUR);
    if (nPosition < 0) ThrowError(errno);
    return static_cast<std::uint64_t>(nPosition);
}

std::uint64_t CFile::GetLength() const {
    struct stat status;
    if (::fstat(m_hFile, &status) != 0) ThrowError(errno);
    return static_cast<std::uint64_t>(status.st_size);
}

void CFile::Flush() {
    int nResult;
    do {
        nResult = ::fsync(m_hFile);
    } while (nResult != 0 && errno == EINTR);
    if (nResult != 0 && errno != EINVAL && errno != EROFS) ThrowError(errno);
}

void CFile::Close() {
    if (m_hFile == INVALID) return;
    const int hFile = m_hFile;
    m_hFile = INVALID;
    // The descriptor is gone whatever close reports; an interrupted one is not an error.
    if (::close(hFile) != 0 && errno != EINTR) ThrowError(errno);
}
