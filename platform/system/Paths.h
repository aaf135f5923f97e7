// Folders and file names. Separators are the platform's; names are wide strings.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/system/Export.h"

/// The path of the running executable.
PLATFORM_API std::wstring GetExecutablePath();
/// Its folder, without a separator at the end.
PLATFORM_API std::wstring GetExecutableFolder();
/// The folder with the panel's own files, captures and (see Installation.h) language files: the
/// executable's, unless SetProgramFolder has named another.
PLATFORM_API std::wstring GetProgramFolder();
/// To be called before the first screen is made, by the host. Libraries are loaded from the
/// executable's folder all the same.
PLATFORM_API void SetProgramFolder(const std::wstring& strFolder);
/// The current user's documents folder.
PLATFORM_API std::wstring GetDocumentsFolder();

PLATFORM_API std::wstring JoinPath(std::wstring_view strFolder, std::wstring_view strName);
/// The folder part of a path; "." when it has none.
PLATFORM_API std::wstring GetFolderOfPath(std::wstring_view strPath);
/// What follows the last separator.
PLATFORM_API std::wstring GetNameOfPath(std::wstring_view strPath);

/// Whether two names differ at most in case.
PLATFORM_API bool EqualsInAnyCase(std::wstring_view strA, std::wstring_view strB);

/// The path from the root, without detours and without a separator at its end.
PLATFORM_API std::wstring GetAbsolutePath(const std::wstring& strPath);

/// Whether a name typed by the operator names a file in a folder itself: not empty, not only dots,
/// no folder separator of either kind, no control character. What else the file system does not
/// take shows when the file is created.
PLATFORM_API bool IsPlainFileName(std::wstring_view strName);

/// Whether there is a regular file at a path, or a link to one.
PLATFORM_API bool FileExists(const std::wstring& strPath);
PLATFORM_API bool FolderExists(const std::wstring& strPath);

/// What tells a regular file from every other while it exists, by whatever path it is reached.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

/// None for a path that leads to no regular file.
PLATFORM_API std::optional<FileIdentity> FindIdentity(const std::wstring& strPath);

/// @throws CFileException when there is something at a path that is no regular file: a pipe, a
/// device, a folder
PLATFORM_API void RequireFileOrNothing(const std::wstring& strPath);

/// Makes a folder in an existing one, and brings it to the disk as far as the system can.
/// @return whether it is there afterwards
PLATFORM_API bool CreateFolder(const std::wstring& strPath);

/// The names, as the system returns them, of the regular files in a folder, and of links to some,
/// that end in an extension (".rt3"; case does not count). A folder that is missing or cannot be
/// read gives none.
PLATFORM_API std::vector<std::wstring> FindFiles(const std::wstring& strFolder,
                                                 std::wstring_view strExtension);

struct FolderContents {
    std::vector<std::wstring> m_arrFolders;
    std::vector<std::wstring> m_arrFiles;
};

/// The folders, and the files as FindFiles gives them (with an empty extension, all), in
/// alphabetical order without regard to case; no names that begin with a dot.
/// @throws CFileException when the folder cannot be read
PLATFORM_API FolderContents ReadFolder(const std::wstring& strFolder,
                                       std::wstring_view strExtension);

/// The path itself when it exists; otherwise the path of a regular file in the same folder whose
/// name differs only in case (of several, the one that agrees longest from its beginning);
/// otherwise the path itself.
PLATFORM_API std::wstring FindFileOfAnyCase(const std::wstring& strPath);
