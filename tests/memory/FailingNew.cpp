#include "tests/memory/FailingNew.h"

#include <malloc.h>

#include <algorithm>
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

thread_local std::size_t t_nHeld = 0;
thread_local std::size_t t_nMostHeld = 0;

/// What a block takes of the heap: its places, and the heap's own word.
std::size_t GetCost(void* pBlock) {
    return pBlock ? ::malloc_usable_size(pBlock) + sizeof(void*) : 0;
}

void* Allocate(std::size_t nSize, std::size_t nAlignment) {
    if (Fails()) return nullptr;
    void* const pBlock =
        nAlignment <= alignof(std::max_align_t)
            ? std::malloc(nSize)
            : std::aligned_alloc(nAlignment, (nSize + nAlignment - 1) / nAlignment * nAlignment);
    t_nHeld += GetCost(pBlock);
    t_nMostHeld = std::max(t_nMostHeld, t_nHeld);
    return pBlock;
}

void Free(void* pBlock) {
    t_nHeld -= GetCost(pBlock);
    std::free(pBlock);
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

std::size_t FindMostHeld(const std::function<void()>& work) {
    const std::size_t nBefore = t_nMostHeld = t_nHeld;
    work();
    return t_nMostHeld - nBefore;
}

// The other forms of the language's library call these.
void* operator new(std::size_t nSize) { return AllocateOrThrow(nSize); }
void* operator new(std::size_t nSize, std::align_val_t alignment) {
    return AllocateOrThrow(nSize, static_cast<std::size_t>(alignment));
}
void operator delete(void* pBlock) noexcept { Free(pBlock); }
void operator delete(void* pBlock, std::size_t) noexcept { Free(pBlock); }
void operator delete(void* pBlock, std::align_val_t) noexcept { Free(pBlock); }
void operator delete(void* pBlock, std::size_t, std::align_val_t) noexcept { Free(pBlock); }

/// Asked by the sanitizer of leaks: the window system loses a block here and there when it finds no
/// memory for the next one.
extern "C" __attribute__((visibility("default"))) const char*
__lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { return "leak:libQt6"; }
