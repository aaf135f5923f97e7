#include "tests/memory/FailingNew.h"

#include <cstdlib>
#include <new>

namespace {

struct State {
    bool m_bArmed;
    bool m_bOnce;
    bool m_bFailed;
    std::size_t m_nLeft;
};
constinit thread_local State t_state{};

bool Fails() {
    State& state = t_state;
    if (!state.m_bArmed || (state.m_bOnce && state.m_bFailed)) return false;
    if (state.m_nLeft > 0) {
        --state.m_nLeft;
        return false;
    }
    return state.m_bFailed = true;
}

void* Allocate(std::size_t nSize, std::size_t nAlignment = alignof(std::max_align_t)) {
    const std::size_t nWhole = (nSize + nAlignment) / nAlignment * nAlignment;
    return Fails() ? nullptr : std::aligned_alloc(nAlignment, nWhole);
}

void* AllocateOrThrow(std::size_t nSize, std::size_t nAlignment = alignof(std::max_align_t)) {
    if (void* const pBlock = Allocate(nSize, nAlignment)) return pBlock;
    throw std::bad_alloc();
}

}  // namespace

CFailingNew::CFailingNew(std::size_t nAllocations, Failing failing) {
    t_state = {true, failing == Failing::Once, false, nAllocations};
}
CFailingNew::~CFailingNew() { t_state.m_bArmed = false; }
bool CFailingNew::HasFailed() const { return t_state.m_bFailed; }

// The other forms of the language's library call these.
void* operator new(std::size_t nSize) { return AllocateOrThrow(nSize); }
void* operator new(std::size_t nSize, std::align_val_t alignment) {
    return AllocateOrThrow(nSize, static_cast<std::size_t>(alignment));
}
void operator delete(void* pBlock) noexcept { std::free(pBlock); }
void operator delete(void* pBlock, std::size_t) noexcept { std::free(pBlock); }
void operator delete(void* pBlock, std::align_val_t) noexcept { std::free(pBlock); }
void operator delete(void* pBlock, std::size_t, std::align_val_t) noexcept { std::free(pBlock); }
