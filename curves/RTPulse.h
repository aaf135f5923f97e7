// The states of the instrument's four digital lines along a curve.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

/// One record of the digital lines.
struct RTPulse {
    /// The curve's count just after the data block that carried this state was appended: the state
    /// holds for the values from the previous record's position up to this one.
    std::int32_t m_nPosition;
    /// Bits 0 to 3 are the four lines; the other bits are carried and saved, not drawn.
    std::uint8_t m_byState;
};

/// The pulse records of one curve, in arrival order.
///
/// Thread safety: one thread appends; any number of threads read at the same time. A reader takes
/// GetCount once and reads only below it.
/// Invariants: positions never decrease; a record below the published count never changes and never
/// moves; appending takes constant time.
class RTPulseList {
  public:
    RTPulseList() = default;
    ~RTPulseList();
    RTPulseList(const RTPulseList&) = delete;
    RTPulseList& operator=(const RTPulseList&) = delete;

    /// Number of finished records (acquire).
    std::size_t GetCount() const { return m_nCount.load(std::memory_order_acquire); }

    /// The record at an index below a count that GetCount has given.
    const RTPulse& At(std::size_t nIndex) const;

    /// Appends a record and publishes it (release). The writer's thread only.
    /// @throws CMemoryException with the list unchanged
    void Append(RTPulse pulse);

    /// The first index below nCount whose position is nPosition or more, or nCount: a binary search.
    std::size_t FindPosition(std::size_t nCount, std::int64_t nPosition) const;

  private:
    static constexpr std::size_t RECORDS_PER_CHUNK = 1024;
    static constexpr std::size_t CHUNKS_PER_DIRECTORY = 1024;
    using Chunk = std::array<RTPulse, RECORDS_PER_CHUNK>;
    struct Directory;

    std::atomic<std::size_t> m_nCount{0};
    std::unique_ptr<Directory> m_pFirst;  ///< a directory is a fixed array of chunks and the next one
    Directory* m_pLast = nullptr;
};
