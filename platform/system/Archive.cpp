#include "platform/system/Archive.h"

#include <algorithm>

#include "platform/system/File.h"

CArchive::CArchive(CFile* pFile, Mode mode, std::size_t nBufferSize)
    : m_pFile(pFile), m_mode(mode), m_nBufferSize(std::max<std::size_t>(nBufferSize, 1)),
      m_pBuffer(std::make_unique_for_overwrite<std::uint8_t[]>(m_nBufferSize)) {}

CArchive::~CArchive() = default;

void CArchive::Throw(CArchiveException::Cause cause) const {
    throw CArchiveException(cause, m_pFile->GetFilePath());
}

void CArchive::RefuseContents(const std::wstring& strSentence) const {
    throw CArchiveException(CArchiveException::badContents, m_pFile->GetFilePath(), strSentence);
}

void CArchive::ReportEarlyEnd(const std::wstring& strSentence) const {
    throw CArchiveException(CArchiveException::endOfFile, m_pFile->GetFilePath(), strSentence);
}

void CArchive::Write(const void* pBytes, std::size_t nCount) {
    if (!IsStoring()) Throw(CArchiveException::readOnly);
    if (nCount > m_nBufferSize - m_nNext) {
        Flush();
        if (nCount >= m_nBufferSize) {
            m_pFile->Write(pBytes, nCount);
            return;
        }
    }
    if (nCount > 0) std::memcpy(m_pBuffer.get() + m_nNext, pBytes, nCount);
    m_nNext += nCount;
}

std::size_t CArchive::Read(void* pBytes, std::size_t nCount) {
    if (!IsLoading()) Throw(CArchiveException::writeOnly);
    auto* pTo = static_cast<std::uint8_t*>(pBytes);
    std::size_t nRead = 0;
    while (nRead < nCount) {
        if (m_nNext == m_nFilled) {
            const std::size_t nMissing = nCount - nRead;
            if (nMissing >= m_nBufferSize) return nRead + m_pFile->Read(pTo + nRead, nMissing);
            m_nNext = m_nFilled = 0;
            m_nFilled = m_pFile->Read(m_pBuffer.get(), m_nBufferSize);
            if (m_nFilled == 0) break;
        }
        const std::size_t nPart = std::min(nCount - nRead, m_nFilled - m_nNext);
        std::memcpy(pTo + nRead, m_pBuffer.get() + m_nNext, nPart);
        m_nNext += nPart;
        nRead += nPart;
    }
    return nRead;
}

void CArchive::EnsureRead(void* pBytes, std::size_t nCount) {
    if (Read(pBytes, nCount) != nCount) Throw(CArchiveException::endOfFile);
}

std::uint64_t CArchive::GetBytesLeft() const {
    const std::uint64_t nLength = m_pFile->GetLength();
    const std::uint64_t nPosition = m_pFile->GetPosition();
    const std::uint64_t nBehind = nLength > nPosition ? nLength - nPosition : 0;
    return nBehind + (m_nFilled - m_nNext);
}

void CArchive::Flush() {
    if (!IsStoring()) return;
    const std::size_t nCount = m_nNext;
    m_nNext = 0;
    if (nCount > 0) m_pFile->Write(m_pBuffer.get(), nCount);
}

void CArchive::Close() { Flush(); }
