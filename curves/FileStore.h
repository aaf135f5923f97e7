// The folder beside the host's executable in which the panel keeps its captures.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The store folder, whether it exists or not.
std::wstring GetStoreFolder();

/// Makes the store folder when it is missing; that it could not be made shows when a file is
/// created in it.
void CreateStoreFolder();

/// Where a capture of a name is saved: name.rt3 in the store folder, or the file there whose name
/// differs from it only in case.
/// @throws CFileException when what has that name is no regular file
std::wstring GetSavePath(std::wstring_view strName);

/// The file names of the captures in the store folder, extension included, in an order that does
/// not depend on the system; none when the folder is missing.
std::vector<std::wstring> FindStoredFiles();

/// What a list shows for each of some files, no two of which have the same name: the name without
/// its extension, or the whole name where that would also be what another file is called, with its
/// extension or without. No two are alike.
std::vector<std::wstring> NameRows(const std::vector<std::wstring>& arrFiles);

/// A file name without everything from its last dot on.
std::wstring RemoveExtension(std::wstring_view strFileName);
