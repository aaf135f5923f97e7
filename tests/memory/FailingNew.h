// Memory that runs out at a chosen place.
#pragma once

#include <cstddef>

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
