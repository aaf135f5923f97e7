// What every CSV file does at its end and at a failure.
#pragma once

#include <functional>
#include <string>

class CTextFile;

/// Writes rows and closes the file. The error of a regular file that could not be written says that
/// the lines before the failure are kept.
/// @throws CFileException, and what writeRows throws
void WriteCsv(CTextFile& file, const std::function<void()>& writeRows);

/// Has a file written that is created, or replaces an existing one. At a failure it keeps the lines
/// written before; stopped by the person (CUserException), it is removed, and of a symbolic link
/// the file that it leads to.
/// @throws CFileException, and what write throws
void ExportCsv(const std::wstring& strPath, const std::function<void(CTextFile& file)>& write);
