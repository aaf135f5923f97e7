// Files without a buffer, as the framework offers them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/system/Export.h"
#include "platform/system/NumberedText.h"
#include "platform/system/Types.h"

/// An open file, or a closed one. Each operation goes straight to the system.
///
/// Thread safety: none; a file is used by one thread at a time.
/// Errors: every operation that fails throws CFileException with the file's path and the system's
/// reason. A file that is destroyed open is closed without a word; who has written calls Close.
class PLATFORM_API CFile {
  public:
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeCreate = 0x1000,  ///< make the file, or empty an existing one
        modeAppend = 0x2000,  ///< make the file if it is missing; each write goes to its end
    };

    CFile() = default;
    CFile(const std::wstring& strPath, UINT nOpenFlags) { Open(strPath, nOpenFlags); }
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Opens a file; one that is already open is closed first. A directory is refused, and so is a
    /// pipe that nobody reads from. For reading only a regular file is opened, or a link to one; a
    /// name that is not there also finds the file whose name differs from it only in case
    /// (FindFileOfAnyCase).
    void Open(const std::wstring& strPath, UINT nOpenFlags);

    /// Writes to the process's standard output; GetFilePath then gives its name in words.
    void OpenStandardOutput();
    /// Reads from the process's standard input.
    void OpenStandardInput();

    bool IsOpen() const { return m_hFile != INVALID; }

    /// Whether it is a file proper, with a length and a place to seek; not a pipe or a device.
    bool IsRegular() const;

    /// Reads up to nCount bytes. @return how many; fewer only at the end of the file
    virtual std::size_t Read(void* pBuffer, std::size_t nCount);
    virtual void Write(const void* pBuffer, std::size_t nCount);

    virtual std::uint64_t GetPosition() const;  ///< bytes from the beginning
    virtual std::uint64_t GetLength() const;
    /// What is read or written next stands so many bytes from the beginning.
    virtual void Seek(std::uint64_t nPosition);

    /// Returns when everything written has reached the disk. What has no disk (a pipe, a device) is
    /// left alone.
    virtual void Flush();

    /// Closes the file; nothing happens when it is not open.
    virtual void Close();

    /// The path as it was given to Open.
    const std::wstring& GetFilePath() const { return m_strFilePath; }

  protected:
    static constexpr int INVALID = -1;

    /// As Open.
    /// @return false when there is no such file
    bool TryOpen(const std::wstring& strPath, UINT nOpenFlags);

    /// @throws CFileException with the file's path
    [[noreturn]] void ThrowError(int nSystemError, const NumberedText& detail = NO_TEXT) const;

    int m_hFile = INVALID;
    std::wstring m_strFilePath;
    bool m_bWriting = false;  ///< what has been opened, or could not be, was for writing
};
