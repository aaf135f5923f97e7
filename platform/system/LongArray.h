// Memory for arrays of many numbers.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/system/Export.h"

struct PLATFORM_API LongArrayDeleter {
    void operator()(void* pArray) const noexcept;
};

template <class Number>
using LongArray = std::unique_ptr<Number[], LongArrayDeleter>;

/// Memory that is not cleared. A long array lies on large pages where the system has some: filling
/// it for the first time then costs a fraction of the page faults, and no memory beyond its end.
/// @throws std::bad_alloc
PLATFORM_API void* AllocateLongArray(std::size_t nBytes);

/// @throws std::bad_alloc
template <class Number>
LongArray<Number> MakeLongArray(std::size_t nLength) {
    return LongArray<Number>(static_cast<Number*>(AllocateLongArray(nLength * sizeof(Number))));
}
