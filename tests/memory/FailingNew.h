// Memory that runs out at a chosen place.
#pragma once

#include <cstddef>
#include <functional>

enum class Failing { Once, FromThenOn };

/// While it lives, the calling thread's operator new fails after nAllocations more calls. One at a
/// time.
class CFailingNew {
  public:
    CFailingNew(std::size_t nAllocations, Failing failing);
    ~CFailingNew();
    CFailingNew(const CFailingNew&) = delete;
    CFailingNew& operator=(const CFailingNew&) = delete;

    bool HasFailed() const;
};

/// The most bytes of the heap that the calling thread holds at one time during some work, beyond
/// those that it held before.
std::size_t FindMostHeld(const std::function<void()>& work);
