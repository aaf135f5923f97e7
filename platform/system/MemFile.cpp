#include "platform/system/MemFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "platform/system/Exceptions.h"

CMemFile::CMemFile(std::wstring strName, std::vector<std::uint8_t> contents)
    : m_contents(std::move(contents)) {
    m_strFilePath = std::move(strName);
}

std::size_t CMemFile::Read(void* pBuffer, std::size_t nCount) {
    if (m_nPosition >= m_contents.size()) return 0;
    const std::size_t nRead = std::min(nCount, m_contents.size() - m_nPosition);
    if (nRead > 0) std::memcpy(pBuffer, m_contents.data() + m_nPosition, nRead);
    m_nPosition += nRead;
    return nRead;
}

void CMemFile::Write(const void* pBuffer, std::size_t nCount) {
    if (nCount == 0) return;
    try {
        if (m_contents.size() < m_nPosition + nCount) m_contents.resize(m_nPosition + nCount);
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
    std::memcpy(m_contents.data() + m_nPosition, pBuffer, nCount);
    m_nPosition += nCount;
}

std::uint64_t CMemFile::Seek(std::int64_t nOffset, SeekPosition from) {
    const std::size_t nBase = from == begin ? 0 : from == current ? m_nPosition : m_contents.size();
    const std::int64_t nPosition = static_cast<std::int64_t>(nBase) + nOffset;
    if (nPosition < 0) ThrowError(EINVAL);
    m_nPosition = static_cast<std::size_t>(nPosition);
    return m_nPosition;
}
