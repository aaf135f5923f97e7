// A text file for writing.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/system/File.h"

/// Text of single bytes in which a line break, "\n", is written as carriage return and line feed.
///
/// Text gathers and is written in pieces of 256 KiB: large ones, and such that end with a page,
/// cost the system's file cache least. Close (or Flush) writes the rest; a file that is destroyed
/// without it keeps only what had been written by then.
/// Errors: as CFile. After one, the file holds the text before it as far as the system took it.
class PLATFORM_API CTextFile : public CFile {
  public:
    /// The longest text that is formed in place.
    static constexpr std::size_t MAX_ROOM = 65536;

    CTextFile();
    CTextFile(const std::wstring& strPath, UINT nOpenFlags) : CTextFile() {
        Open(strPath, nOpenFlags);
    }

    void WriteString(std::string_view strText);

    /// For text that is formed in place: room for MAX_ROOM characters at the end of the text
    /// written so far. What is put there is written as it stands, so its line breaks are "\r\n".
    /// ReleaseBuffer takes the end of the text formed.
    char* GetBuffer() {
        if (m_nBuffered >= PIECE_SIZE) WritePiece();
        return m_pBuffer.get() + m_nBuffered;
    }
    void ReleaseBuffer(const char* pEnd) {
        m_nBuffered = static_cast<std::size_t>(pEnd - m_pBuffer.get());
    }

    /// Bytes as they stand, behind the text written so far.
    void Write(const void* pBuffer, std::size_t nCount) override;
    void Flush() override;
    void Close() override;

  private:
    static constexpr std::size_t PIECE_SIZE = 262144;

    void WritePiece();
    void WriteBuffer();

    std::unique_ptr<char[]> m_pBuffer;
    std::size_t m_nBuffered = 0;
};
