// A name that processes of one user can see while it is held.
#pragma once

#include <string>

#include "platform/system/Export.h"

/// A named mutex, held open but never owned: it exists exactly while at least one process holds it
/// open. It goes with the process, however the process ends.
///
/// It is a file lock in the user's run-time folder ($XDG_RUNTIME_DIR, otherwise a folder of the
/// user's own in the temporary folder). The file stays; only its lock tells.
class PLATFORM_API CNamedMutex {
  public:
    /// Creates the mutex, or opens the existing one. One that cannot be made is an empty object.
    explicit CNamedMutex(const std::wstring& strName);
    ~CNamedMutex();
    CNamedMutex(const CNamedMutex&) = delete;
    CNamedMutex& operator=(const CNamedMutex&) = delete;

    explicit operator bool() const { return m_hFile >= 0; }

    /// Whether any process, this one included, holds the mutex open. Any thread.
    static bool Exists(const std::wstring& strName);

  private:
    int m_hFile = -1;
};
