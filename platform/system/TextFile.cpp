#include "platform/system/TextFile.h"

#include <cstring>

CTextFile::CTextFile() : m_pBuffer(std::make_unique_for_overwrite<char[]>(BUFFER_SIZE)) {}

void CTextFile::WriteBuffer() {
    // Emptied first: what could not be written is not written again later, in the wrong place.
    const std::size_t nCount = m_nBuffered;
    m_nBuffered = 0;
    CFile::Write(m_pBuffer.get(), nCount);
}

void CTextFile::Write(const void* pBuffer, std::size_t nCount) {
    if (nCount > BUFFER_SIZE) {
        WriteBuffer();
        CFile::Write(pBuffer, nCount);
        return;
    }
    char* pPlace = GetBuffer(nCount);
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
