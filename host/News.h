// What a program that serves tells on standard output, line by line.
#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <string>

/// Lines wait here until the output takes them, so that nobody waits for who reads it. Of more than
/// MAX_LINES the last are left out, and their number is told.
///
/// Threads: Add may be called on any.
class CNews {
  public:
    static constexpr std::size_t MAX_LINES = 256;
    /// How often Print is to be called.
    static constexpr std::chrono::milliseconds PERIOD{50};

    void Add(const std::string& strLine);
    /// Prints what the output takes now.
    void Print();

  private:
    bool Take(std::string& strLine);

    std::mutex m_mutex;
    std::deque<std::string> m_lines;
    std::size_t m_nLeftOut = 0;
};
