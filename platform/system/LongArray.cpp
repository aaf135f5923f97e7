#include "platform/system/LongArray.h"

#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace {

constexpr std::size_t LARGE_PAGE = std::size_t{2} << 20;

}  // namespace

void* AllocateLongArray(std::size_t nBytes) {
    const std::size_t nWholePages = nBytes / LARGE_PAGE * LARGE_PAGE;
    void* pArray = nullptr;
    if (nWholePages == 0)
        pArray = std::malloc(nBytes);
    else if (::posix_memalign(&pArray, LARGE_PAGE, nBytes) != 0)
        pArray = nullptr;
    if (!pArray) throw std::bad_alloc();
    // The rest, which does not fill one, is not to use one up. A system without large pages gives
    // ordinary ones.
    if (nWholePages > 0) ::madvise(pArray, nWholePages, MADV_HUGEPAGE);
    return pArray;
}

void LongArrayDeleter::operator()(void* pArray) const noexcept { std::free(pArray); }
