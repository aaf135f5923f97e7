#include "platform/system/Archive.h"

#include <algorithm>

#include "platform/system/File.h"
#include "platform/system/Progress.h"

namespace {

/// Bytes that go to or from the file between two reports of a long block: many, since the system
/// moves long pieces faster, and few enough to stop between them without a wait.
constexpr std::size_t LONGEST_PIECE = 4 << 20;

}  // namespace

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
            WriteFile(pBytes, nCount);
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
            if (nMissing >= m_nBufferSize) return nRead + ReadFile(pTo + nRead, nMissing);
            m_nNext = m_nFilled = 0;
            m_nFilled = ReadFile(m_pBuffer.get(), m_nBufferSize);
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

std::uint64_t CArchive::GetPosition() const {
    return m_pFile->GetPosition() - (m_nFilled - m_nNext);
}

void CArchive::Seek(std::uint64_t nPosition) {
    if (!IsLoading()) Throw(CArchiveException::writeOnly);
    const std::uint64_t nBehind = m_pFile->GetPosition();
    if (nPosition <= nBehind && nBehind - nPosition <= m_nFilled) {
        m_nNext = m_nFilled - static_cast<std::size_t>(nBehind - nPosition);
        return;
    }
    m_nNext = m_nFilled = 0;
    m_pFile->Seek(nPosition);
    if (nPosition > nBehind) Advance(nPosition - nBehind);
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
    WriteFile(m_pBuffer.get(), nCount);
}

void CArchive::Close() { Flush(); }

void CArchive::SetProgress(IProgress* pProgress) {
    m_pProgress = pProgress;
    if (m_pProgress && IsLoading()) m_nTotal = GetBytesLeft();
}

std::size_t CArchive::ReadFile(void* pBytes, std::size_t nCount) {
    auto* pTo = static_cast<std::uint8_t*>(pBytes);
    std::size_t nRead = 0;
    while (nRead < nCount) {
        const std::size_t nPiece = std::min(nCount - nRead, LONGEST_PIECE);
        const std::size_t nPart = m_pFile->Read(pTo + nRead, nPiece);
        nRead += nPart;
        Advance(nPart);
        if (nPart < nPiece) break;
    }
    return nRead;
}

void CArchive::WriteFile(const void* pBytes, std::size_t nCount) {
    const auto* pFrom = static_cast<const std::uint8_t*>(pBytes);
    while (nCount > 0) {
        const std::size_t nPiece = std::min(nCount, LONGEST_PIECE);
        m_pFile->Write(pFrom, nPiece);
        pFrom += nPiece;
        nCount -= nPiece;
        Advance(nPiece);
    }
}

void CArchive::Advance(std::uint64_t nBytes) {
    m_nDone += nBytes;
    if (m_pProgress && !m_pProgress->Advance(std::min(m_nDone, m_nTotal), m_nTotal))
        throw CUserException();
}
