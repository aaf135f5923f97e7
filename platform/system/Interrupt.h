// What an interrupt leaves behind: no half file.
#pragma once

#include <csignal>
#include <string>

#include "platform/system/Export.h"

class CFile;

/// From the call on, SIGINT, SIGTERM and SIGHUP remove the unfinished file, when there is one, and
/// then end the process as they would have; also where it waits for a pipe. One that the process
/// was started to ignore stays ignored. For a program that runs from beginning to end; called once.
PLATFORM_API void CleanUpOnInterrupt();

/// While it lives, an interrupt of this thread waits.
class PLATFORM_API CInterruptPause {
  public:
    CInterruptPause();
    ~CInterruptPause();
    CInterruptPause(const CInterruptPause&) = delete;
    CInterruptPause& operator=(const CInterruptPause&) = delete;

  private:
    sigset_t m_before;
};

/// The name of a file that is being written. While it lives, an interrupt removes that file. Of
/// several at a time only the last one set is known.
class PLATFORM_API CUnfinishedFile {
  public:
    CUnfinishedFile() = default;
    ~CUnfinishedFile() { Forget(); }
    CUnfinishedFile(const CUnfinishedFile&) = delete;
    CUnfinishedFile& operator=(const CUnfinishedFile&) = delete;

    /// Opens a file for writing, a new one or an emptied one, and sets its name; of a symbolic link
    /// that of the file it leads to. What is no regular file (a pipe, a device) is opened only.
    /// @throws CFileException
    void Create(CFile& file, const std::wstring& strPath);

    /// Sets the name of a file that has just been made, within a CInterruptPause.
    void Set(const std::string& strPath);

    /// Removes the file; nothing happens when no name is set.
    void Remove();

  private:
    void Forget();

    std::string m_strPath;
};
