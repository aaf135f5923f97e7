#include "platform/system/File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/Exceptions.h"
#include "platform/system/Paths.h"
#include "platform/system/SystemCalls.h"
#include "platform/system/Text.h"

namespace {

int ToSystemFlags(UINT nOpenFlags) {
    int nFlags = O_RDONLY;
    if (nOpenFlags & CFile::modeWrite) nFlags = O_WRONLY;
    if (nOpenFlags & CFile::modeCreate) nFlags |= O_CREAT | O_TRUNC;
    if (nOpenFlags & CFile::modeAppend) nFlags |= O_CREAT | O_APPEND;
    return nFlags;
}

}  // namespace

CFile::~CFile() {
    if (m_hFile != INVALID) ::close(m_hFile);
}

void CFile::ThrowError(int nSystemError, const NumberedText& detail) const {
    const auto cause = m_bWriting  ? CFileException::cannotWrite
                       : !IsOpen() ? CFileException::cannotOpen
                                   : CFileException::cannotRead;
    throw CFileException(cause, m_strFilePath, nSystemError,
                         detail ? GetText(detail) : std::wstring());
}

void CFile::Open(const std::wstring& strPath, UINT nOpenFlags) {
    if (!TryOpen(strPath, nOpenFlags)) ThrowError(ENOENT);
}

bool CFile::TryOpen(const std::wstring& strPath, UINT nOpenFlags) {
    Close();
    m_strFilePath = strPath;
    m_bWriting = (nOpenFlags & modeWrite) != 0;
    const int nFlags = ToSystemFlags(nOpenFlags);
    int hFile = OpenWithoutWaiting(ToUtf8(strPath), nFlags);
    if (hFile < 0 && errno == ENOENT && nOpenFlags == modeRead)
        hFile = OpenWithoutWaiting(ToUtf8(FindFileOfAnyCase(strPath)), nFlags);
    if (hFile < 0) {
        if (errno == ENOENT) return false;
        ThrowError(errno, errno == ENXIO && m_bWriting
                              ? NumberedText{3150, L"Nothing reads from it."}
                              : NO_TEXT);
    }

    // Opening a directory for reading succeeds, and only the first read would fail.
    CDescriptor file(hFile);
    struct stat status;
    if (::fstat(hFile, &status) != 0 || S_ISDIR(status.st_mode)) ThrowError(EISDIR);
    if (!m_bWriting && !S_ISREG(status.st_mode)) ThrowError(0, NOT_A_REGULAR_FILE);
    m_hFile = file.Release();
    return true;
}

void CFile::OpenStandardOutput() {
    Close();
    m_bWriting = true;
    m_strFilePath = L"standard output";
    m_hFile = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (m_hFile < 0) ThrowError(errno);
}

void CFile::OpenStandardInput() {
    Close();
    m_bWriting = false;
    m_strFilePath = L"standard input";
    m_hFile = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
    if (m_hFile < 0) ThrowError(errno);
}

bool CFile::IsRegular() const { return IsRegularFile(m_hFile); }

std::size_t CFile::Read(void* pBuffer, std::size_t nCount) {
    auto* pBytes = static_cast<std::uint8_t*>(pBuffer);
    std::size_t nRead = 0;
    while (nRead < nCount) {
        const ssize_t nPart =
            RetryInterrupted([&] { return ::read(m_hFile, pBytes + nRead, nCount - nRead); });
        if (nPart < 0) ThrowError(errno);
        if (nPart == 0) break;
        nRead += static_cast<std::size_t>(nPart);
    }
    return nRead;
}

void CFile::Write(const void* pBuffer, std::size_t nCount) {
    const auto* pBytes = static_cast<const std::uint8_t*>(pBuffer);
    while (nCount > 0) {
        const ssize_t nPart = RetryInterrupted([&] { return ::write(m_hFile, pBytes, nCount); });
        if (nPart < 0) ThrowError(errno);
        pBytes += nPart;
        nCount -= static_cast<std::size_t>(nPart);
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

void CFile::Seek(std::uint64_t nPosition) {
    if (::lseek(m_hFile, static_cast<off_t>(nPosition), SEEK_SET) < 0) ThrowError(errno);
}

void CFile::Flush() {
    if (const int nError = FlushDescriptor(m_hFile)) ThrowError(nError);
}

void CFile::Close() {
    if (m_hFile == INVALID) return;
    const int hFile = m_hFile;
    m_hFile = INVALID;
    // The descriptor is gone whatever close reports; an interrupted one is not an error.
    if (::close(hFile) != 0 && errno != EINTR) ThrowError(errno);
}
