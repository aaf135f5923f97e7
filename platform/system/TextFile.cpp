#include "platform/system/TextFile.h"

#include <cstring>
#include <utility>

CTextFile::CTextFile() : m_pBuffer(std::make_unique_for_overwrite<char[]>(PIECE_SIZE + MAX_ROOM)) {}

// What could not be written is not written again later, in the wrong place.

void CTextFile::WritePiece() {
    const std::size_t nRest = std::exchange(m_nBuffered, 0) - PIECE_SIZE;
    CFile::Write(m_pBuffer.get(), PIECE_SIZE);
    std::memmove(m_pBuffer.get(), m_pBuffer.get() + PIECE_SIZE, nRest);
    m_nBuffered = nRest;
}

void CTextFile::WriteBuffer() { CFile::Write(m_pBuffer.get(), std::exchange(m_nBuffered, 0)); }

void CTextFile::Write(const void* pBuffer, std::size_t nCount) {
    if (nCount > MAX_ROOM) {
        WriteBuffer();
        CFile::Write(pBuffer, nCount);
        return;
    }
    char* pPlace = GetBuffer();
    std::memcpy(pPlace, pBuffer, nCount);
    ReleaseBuffer(pPlace + nCount);
}

void CTextFile::WriteString(std::string_view strText) {
    for (std::size_t nBreak; (nBreak = strText.find('\n')) != std::string_view::npos;) {
        Write(strText.data(), nBreak);
        Write("\r\n", 2);
        strText.remove_prefix(nBreak + 1);
    }
    Write(strText.data(), strText.size());
}

void CTextFile::Flush() {
    WriteBuffer();
    CFile::Flush();
}

void CTextFile::Close() {
    if (IsOpen()) WriteBuffer();
    CFile::Close();
}
