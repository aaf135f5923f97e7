// Which language the instrument speaks, and its texts.
//
// The language files stand in a folder that is found from the host's executable; the file
// "default.txt" names the language. Nothing here reports an error: what is missing leaves English,
// and an empty table leaves the built-in texts.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class CLanguageTable;

struct LanguageInfo {
    std::wstring m_strLanguage = L"English";  ///< the language file's name without ".txt"
    std::wstring m_strLangFolder;             ///< of the language files; ends in a separator
    std::wstring m_strDefaultFolder;          ///< of "default.txt"; ends in a separator
};

/// What the rule that finds the language asks about its surroundings. Folders end in a separator.
struct LanguageSurroundings {
    std::wstring m_strExecutable;  ///< full path of the running program
    wchar_t m_chSeparator;         ///< between folders
    std::function<std::optional<std::wstring>()> m_findDocumentsFolder;  ///< without a separator
    std::function<bool(const std::wstring& strFolder)> m_folderExists;
    std::function<bool(const std::wstring& strFolder)> m_createFolder;
    std::function<bool(const std::wstring& strPath)> m_fileExists;
    /// The beginning of a file, or nothing when it cannot be opened.
    std::function<std::optional<std::vector<std::uint8_t>>(const std::wstring& strPath)> m_readFile;
};

/// Finds the language by the rule alone.
LanguageInfo FindLanguage(const LanguageSurroundings& surroundings);

/// The language that was chosen, else that of this panel; may create the folders that are looked
/// into.
LanguageInfo FindLanguage();

/// Empties the table and fills it from the language's file.
/// @return false when the file could not be read, or without a table
bool LoadLanguage(const LanguageInfo& info, CLanguageTable* pTable);
