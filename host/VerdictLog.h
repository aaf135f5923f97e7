// The file that keeps what became of each stroke.
#pragma once

#include <string>

#include "platform/system/File.h"

/// A line for each stroke, behind those that the file has. Each is on its way to the disk when it
/// was written; a line that could not be written whole does not spoil the next one.
///
/// Threads: one at a time.
class CVerdictLog {
  public:
    /// Opens the file, or makes it. It is a regular one: whoever judges never waits for the reader
    /// of a pipe.
    /// @throws CFileException
    explicit CVerdictLog(const std::wstring& strPath);

    /// @param strLine without a line break
    /// @throws CFileException
    void Append(const std::string& strLine);

  private:
    CFile m_file;
    bool m_bTorn;  ///< the file ends within a line
};
