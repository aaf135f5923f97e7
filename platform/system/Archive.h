// The framework's archive: numbers and blocks of bytes, in a fixed order, to or from a file.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "platform/system/Exceptions.h"
#include "platform/system/Export.h"
#include "platform/system/Types.h"

class CFile;
class IProgress;

/// Stores or loads primitive values, little-endian, without tags or padding.
///
/// Values pass through a buffer; a block at least as large as the buffer goes straight to or from
/// the file. The file must outlive the archive and is not closed by it. A storing archive that is
/// destroyed without Close drops what still stands in its buffer.
/// Thread safety: none.
/// Errors: CUserException when the person who is told of the progress stops it; CArchiveException
/// with the file's path (endOfFile for a value that is not there whole;
/// readOnly for storing into a loading archive, writeOnly for the reverse), and what the file
/// throws.
class PLATFORM_API CArchive {
  public:
    enum Mode { store, load };

    CArchive(CFile* pFile, Mode mode, std::size_t nBufferSize = 4096);
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    bool IsStoring() const { return m_mode == store; }
    bool IsLoading() const { return m_mode == load; }

    CArchive& operator<<(BYTE value) { return Store(value); }
    CArchive& operator<<(WORD value) { return Store(value); }
    CArchive& operator<<(DWORD value) { return Store(value); }
    CArchive& operator<<(std::int16_t value) { return Store(value); }
    CArchive& operator<<(std::int32_t value) { return Store(value); }

    CArchive& operator>>(BYTE& value) { return Load(value); }
    CArchive& operator>>(WORD& value) { return Load(value); }
    CArchive& operator>>(DWORD& value) { return Load(value); }
    CArchive& operator>>(std::int16_t& value) { return Load(value); }
    CArchive& operator>>(std::int32_t& value) { return Load(value); }

    /// Has somebody told how many bytes have gone to or come from the file, each time that some
    /// have. Of how many: when loading, those that the file has left; when storing, what
    /// SetTotalLength says.
    /// @param pProgress null: nobody; must outlive the archive
    void SetProgress(IProgress* pProgress);
    void SetTotalLength(std::uint64_t nBytes) { m_nTotal = nBytes; }

    void Write(const void* pBytes, std::size_t nCount);

    /// @return how many bytes were there; fewer than nCount only at the end of the file
    std::size_t Read(void* pBytes, std::size_t nCount);

    /// Reads exactly nCount bytes.
    void EnsureRead(void* pBytes, std::size_t nCount);

    /// Where a loading archive stands in its file, in bytes from the beginning.
    /// @throws CFileException for a file without a length (a pipe)
    std::uint64_t GetPosition() const;

    /// Goes on loading at another place of the file. What is passed over counts as done, and is not
    /// read.
    /// @throws CFileException as GetPosition
    void Seek(std::uint64_t nPosition);

    /// How many bytes of the file a loading archive has not given out yet. A count found in the
    /// file that asks for more than this cannot be true. Asks the system each time.
    /// @throws CFileException for a file without a length (a pipe)
    std::uint64_t GetBytesLeft() const;

    /// Whether that many bytes can follow. Asks the file only when the buffer does not hold them.
    /// @throws CFileException as GetBytesLeft
    bool CanFollow(std::uint64_t nBytes) const {
        return nBytes <= m_nFilled - m_nNext || nBytes <= GetBytesLeft();
    }

    /// Hands the buffer's contents to the file; the file itself is not flushed to disk.
    void Flush();

    /// Flushes; the archive is not used afterwards.
    void Close();

    /// @throws CArchiveException, badContents, with a sentence about what was found
    [[noreturn]] void RefuseContents(const std::wstring& strSentence) const;
    /// @throws CArchiveException, endOfFile, with a sentence about what does not follow
    [[noreturn]] void ReportEarlyEnd(const std::wstring& strSentence) const;

  private:
    static_assert(std::endian::native == std::endian::little,
                  "values stand in files as they stand in memory");

    template <class Value>
    CArchive& Store(Value value) {
        Write(&value, sizeof value);
        return *this;
    }
    /// A value that is not there whole leaves the caller's as it was.
    template <class Value>
    CArchive& Load(Value& value) {
        Value loaded;
        EnsureRead(&loaded, sizeof loaded);
        value = loaded;
        return *this;
    }
    [[noreturn]] void Throw(CArchiveException::Cause cause) const;
    std::size_t ReadFile(void* pBytes, std::size_t nCount);
    void WriteFile(const void* pBytes, std::size_t nCount);
    void Advance(std::uint64_t nBytes);

    CFile* m_pFile;
    Mode m_mode;
    std::size_t m_nBufferSize;
    std::unique_ptr<std::uint8_t[]> m_pBuffer;
    std::size_t m_nNext = 0;    ///< next place to fill, or next byte to give out
    std::size_t m_nFilled = 0;  ///< loading: bytes that the buffer holds

    IProgress* m_pProgress = nullptr;
    std::uint64_t m_nTotal = 0;
    std::uint64_t m_nDone = 0;
};
