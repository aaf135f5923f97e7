// Memory that is kept free, so that there is some when it is needed.
#pragma once

#include <cstddef>

#include "platform/system/Export.h"

/// What a screen needs to go on with when memory is short: to paint itself, to show an error, to
/// take commands. Whoever is about to take all the memory it can get leaves as much, in bytes.
constexpr std::size_t WORKING_MEMORY = std::size_t{8} << 20;
/// What a single window needs, an error box also.
constexpr std::size_t WINDOW_MEMORY = WORKING_MEMORY / 2;

/// Holds a block of the process's address space that nobody writes to: it takes no pages, and what
/// the system grants the process is smaller by it. Giving it back cannot fail.
/// Thread safety: none.
class PLATFORM_API CMemoryReserve {
  public:
    CMemoryReserve() = default;
    /// @throws CMemoryException when there is not so much left
    explicit CMemoryReserve(std::size_t nBytes);
    ~CMemoryReserve() { Release(); }
    CMemoryReserve(const CMemoryReserve&) = delete;
    CMemoryReserve& operator=(const CMemoryReserve&) = delete;

    /// Holds a block of nBytes in place of the present one.
    /// @return false when there is not so much left: nothing is held then
    bool Take(std::size_t nBytes) noexcept;
    void Release() noexcept;

  private:
    void* m_pBlock = nullptr;
    std::size_t m_nBytes = 0;
};
