// Where the program stands, and what belongs to it: all in the executable's folder, as on a panel,
// or installed for everybody, with libraries and language files in folders that are only read.
//
// Names are wide strings, folders without a separator at the end. What is set here is set before
// the first screen is made.
#pragma once

#include <string>
#include <vector>

#include "platform/system/Export.h"

/// The folder of the platform's own libraries, which is the plug-in's and the siblings' too.
PLATFORM_API std::wstring GetLibraryFolder();

/// Where a program keeps what its user makes, unless the user names another folder: the
/// executable's own folder; "realtime-mode" in the user's data folder when that cannot be written,
/// or when the libraries stand elsewhere. Made when it is missing; that it could not be made shows
/// when a file is created in it.
PLATFORM_API std::wstring MakeDataFolder();

/// The folder whose "lang" holds the language files: the first that has any, of the program's
/// (GetProgramFolder), the executable's own and the one that was installed; else the program's.
PLATFORM_API std::wstring FindLanguageHome();

/// The names of the languages there are files for, sorted.
PLATFORM_API std::vector<std::wstring> FindLanguages();

/// The language that the user has chosen by name; empty: the one that the panel is set to.
PLATFORM_API std::wstring GetChosenLanguage();
/// @param strName case does not count; empty: none is chosen
/// @return false, and nothing is changed, when there is no file of that language
PLATFORM_API bool ChooseLanguage(const std::wstring& strName);
