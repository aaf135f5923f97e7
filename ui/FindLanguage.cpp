#include <algorithm>

#include "ui/Language.h"
#include "ui/LanguageLine.h"

namespace {

/// The longest path that the rule looks at.
constexpr std::size_t MAX_PATH_LENGTH = 260;

constexpr const wchar_t* INSTRUMENT_FOLDER = L"C:\\Strovane\\";
constexpr const wchar_t* INSTALLED_PROGRAMS = L"Program Files";
constexpr const wchar_t* DOCUMENTS_SUBFOLDER = L"\\Strovane Log Viewer\\";
constexpr const wchar_t* LANGUAGE_SUBFOLDER = L"lang\\";

std::wstring WithSeparator(std::wstring strPath, wchar_t chSeparator) {
    std::replace(strPath.begin(), strPath.end(), L'\\', chSeparator);
    return strPath;
}

bool EnsureFolder(const LanguageSurroundings& surroundings, const std::wstring& strFolder) {
    return surroundings.m_folderExists(strFolder) || surroundings.m_createFolder(strFolder);
}

/// Works the two folders out.
/// @return false when one is missing and cannot be created
bool FindFolders(const LanguageSurroundings& surroundings, LanguageInfo& info) {
    const auto native = [&](const wchar_t* pPath) {
        return WithSeparator(pPath, surroundings.m_chSeparator);
    };
    const std::wstring strExecutable = surroundings.m_strExecutable.substr(0, MAX_PATH_LENGTH);
    const std::wstring strProgramFolder =
        strExecutable.substr(0, strExecutable.rfind(surroundings.m_chSeparator) + 1);
    info.m_strLangFolder = strProgramFolder;

    if (strProgramFolder == native(INSTRUMENT_FOLDER)) {
        info.m_strLangFolder += native(LANGUAGE_SUBFOLDER);
    } else if (strExecutable.find(INSTALLED_PROGRAMS, 1) != std::wstring::npos) {
        // An installed program's folder cannot be written: the choice is kept with the documents.
        if (const auto documents = surroundings.m_findDocumentsFolder()) {
            info.m_strDefaultFolder = *documents + native(DOCUMENTS_SUBFOLDER);
            if (!EnsureFolder(surroundings, info.m_strDefaultFolder)) return false;
        }
    } else {
        info.m_strLangFolder += native(LANGUAGE_SUBFOLDER);
        info.m_strDefaultFolder = info.m_strLangFolder;
    }
    if (info.m_strDefaultFolder.empty()) info.m_strDefaultFolder = info.m_strLangFolder;
    return EnsureFolder(surroundings, info.m_strLangFolder);
}

}  // namespace

LanguageInfo FindLanguage(const LanguageSurroundings& surroundings) {
    LanguageInfo info;
    if (!FindFolders(surroundings, info)) return info;
    if (const auto bytes = surroundings.m_readFile(info.m_strDefaultFolder + L"default.txt"))
        info.m_strLanguage = ParseFirstLine(*bytes);
    if (!surroundings.m_fileExists(info.m_strLangFolder + info.m_strLanguage + L".txt"))
        info.m_strLanguage = L"English";
    return info;
}
