// Calls of the operating system that the files are made of. Of the platform's own sources.
#pragma once

#include <cerrno>
#include <string>
#include <sys/types.h>
#include <utility>

#include "platform/system/NumberedText.h"

/// Makes a call again for as long as a signal interrupts it. Not for close, after which the
/// descriptor is gone whatever it reports.
/// @return the call's last result; -1 with errno set where it failed
template <class Call>
auto RetryInterrupted(Call call) {
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) return result;
    }
}

/// Opens a path. It takes no terminal over and does not wait for the other end of a pipe: one that
/// nobody writes to opens for reading, one that nobody reads from is refused with ENXIO. What is
/// open then waits as usual when it is read or written.
/// @param nFlags of the system's open; those that never change are added
/// @return the descriptor, or -1 with errno set
int OpenWithoutWaiting(const std::string& strPath, int nFlags, mode_t nMode = 0666);

/// Brings the names in a folder to the disk. A folder that may be written to but not read cannot be
/// opened, and so not be flushed; a file system that flushes no folders is left alone.
/// @return 0, or the system's error number
int FlushFolder(const std::string& strFolder);

/// fsync of what is open; what has no disk (a pipe, a device) is left alone.
/// @return 0, or the system's error number
int FlushDescriptor(int hFile);

/// Whether it is a regular file; a folder, a pipe or a device is none.
bool IsRegularFile(int hFile);

/// Said of a pipe, a device or a folder where a file is wanted.
constexpr NumberedText NOT_A_REGULAR_FILE{3144, L"This is not a regular file."};

/// Owns a descriptor; -1 stands for none.
class CDescriptor {
  public:
    explicit CDescriptor(int hFile) : m_hFile(hFile) {}
    ~CDescriptor();
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    explicit operator bool() const { return m_hFile >= 0; }
    int Get() const { return m_hFile; }
    int Release() { return std::exchange(m_hFile, -1); }

  private:
    int m_hFile;
};
