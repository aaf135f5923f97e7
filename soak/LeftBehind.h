// What this process holds of the system, and what closed screens have left behind in it.
#pragma once

#include <optional>
#include <vector>

#include "soak/Counts.h"

struct ProcessUse {
    std::vector<std::string> m_threads;  ///< names, sorted
    std::size_t m_nFiles = 0;            ///< open file descriptors
    std::vector<std::string> m_widgets;  ///< kinds of the windows and controls, sorted
    double m_dMegabytes = 0;             ///< resident memory, after free memory was given back
};

/// Whether a sanitizer keeps books of its own on memory, and slows everything down.
constexpr bool IsSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

/// Check is called when no screen is open. The first call takes the measure that the later ones go
/// by: the first screen loads fonts and pictures that stay. User-interface thread.
class CLeftBehind {
  public:
    explicit CLeftBehind(CSoakRecord& record) : m_record(record) {}

    void Check();

  private:
    CSoakRecord& m_record;
    std::optional<ProcessUse> m_first;
};
