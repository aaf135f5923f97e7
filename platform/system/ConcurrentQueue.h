// The concurrent queue that carries packets from the host's link threads to a screen's reader.
#pragma once

#include <memory>

#include <oneapi/tbb/concurrent_queue.h>

/// An unbounded first-in first-out queue, safe for any number of pushing and popping threads.
template <class T>
class concurrent_queue {
  public:
    /// Appends a value; may allocate.
    void push(T value) { m_queue.push(std::move(value)); }

    /// Takes the oldest value without waiting.
    /// @return false, with `value` unchanged, when the queue is empty
    bool try_pop(T& value) { return m_queue.try_pop(value); }

  private:
    // The program's own allocator: sanitizers do not see how the library's recycles memory.
    tbb::concurrent_queue<T, std::allocator<T>> m_queue;
};
