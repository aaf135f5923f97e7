#include "platform/system/MemFile.h"

#include <algorithm>
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
