// What this process holds of the system, for finding what a screen leaves behind.
#pragma once

#include <string>
#include <vector>

struct ProcessUse {
    std::vector<std::string> m_threads;  ///< names, sorted
    std::size_t m_nFiles = 0;            ///< open file descriptors
    std::vector<std::string> m_widgets;  ///< kinds of the windows and controls, sorted
    double m_dMegabytes = 0;             ///< resident memory, after free memory was given back
};

/// User-interface thread.
ProcessUse MeasureProcess();

/// Resident memory now, in megabytes. Any thread.
double MeasureResidentMegabytes();

/// Whether a sanitizer keeps books of its own on memory, and slows everything down.
constexpr bool IsSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}
