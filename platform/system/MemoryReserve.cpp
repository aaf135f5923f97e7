#include "platform/system/MemoryReserve.h"

#include <sys/mman.h>

#include "platform/system/Exceptions.h"

CMemoryReserve::CMemoryReserve(std::size_t nBytes) {
    if (!Take(nBytes)) throw CMemoryException();
}

bool CMemoryReserve::Take(std::size_t nBytes) noexcept {
    Release();
    void* const pBlock =
        ::mmap(nullptr, nBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pBlock == MAP_FAILED) return false;
    m_pBlock = pBlock;
    m_nBytes = nBytes;
    return true;
}

void CMemoryReserve::Release() noexcept {
    if (m_pBlock) ::munmap(m_pBlock, m_nBytes);
    m_pBlock = nullptr;
}
