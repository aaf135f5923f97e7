// Progress of work that a person waits for: saving, loading, exporting.
#pragma once

#include <cstdint>

/// Told how far the work has come; lets the person stop it.
class IProgress {
  public:
    virtual ~IProgress() = default;

    /// Called on the working thread, up to some hundred times for each 100 MB; to be quick.
    /// @param nDone part of the work done, in units of the work's own; not above nTotal
    /// @return false to stop
    virtual bool Advance(std::uint64_t nDone, std::uint64_t nTotal) = 0;
};
