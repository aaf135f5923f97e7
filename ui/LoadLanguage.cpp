#include <algorithm>

#include "platform/system/Exceptions.h"
#include "platform/system/File.h"
#include "platform/system/Installation.h"
#include "platform/system/Paths.h"
#include "ui/Language.h"
#include "ui/LanguageLine.h"
#include "ui/LanguageTable.h"

namespace {

/// More than a language name needs.
constexpr std::uint64_t MAX_NAME_BYTES = 4096;

/// What is larger is no language file: an instrument has some thousand texts.
constexpr std::uint64_t MAX_LANGUAGE_BYTES = 16 << 20;

/// Reads at most so many bytes from the beginning of a file.
/// @return nothing when the file cannot be opened and read, which leaves the built-in texts; the
///         operator is not told
std::optional<std::vector<std::uint8_t>> ReadBeginning(const std::wstring& strPath,
                                                       std::uint64_t nMaxBytes) {
    try {
        CFile file(strPath, CFile::modeRead);
        std::vector<std::uint8_t> bytes(std::min(file.GetLength(), nMaxBytes));
        bytes.resize(file.Read(bytes.data(), bytes.size()));
        return bytes;
    } catch (const CFileException&) {
        return std::nullopt;
    }
}

bool IsFile(const std::wstring& strPath) { return FileExists(FindFileOfAnyCase(strPath)); }

}  // namespace

LanguageInfo FindLanguage() {
    LanguageInfo info = FindLanguage({
        .m_strExecutable = JoinPath(FindLanguageHome(), GetNameOfPath(GetExecutablePath())),
        .m_chSeparator = L'/',
        .m_findDocumentsFolder = []() -> std::optional<std::wstring> {
            std::wstring strFolder = GetDocumentsFolder();
            if (strFolder.empty()) return std::nullopt;
            return strFolder;
        },
        .m_folderExists = FolderExists,
        .m_createFolder = CreateFolder,
        .m_fileExists = IsFile,
        .m_readFile =
            [](const std::wstring& strPath) { return ReadBeginning(strPath, MAX_NAME_BYTES); },
    });
    if (const std::wstring strChosen = GetChosenLanguage(); !strChosen.empty())
        info.m_strLanguage = strChosen;
    return info;
}

bool LoadLanguage(const LanguageInfo& info, CLanguageTable* pTable) {
    if (!pTable) return false;
    pTable->Clear();
    const auto bytes =
        ReadBeginning(info.m_strLangFolder + info.m_strLanguage + L".txt", MAX_LANGUAGE_BYTES + 1);
    if (!bytes || bytes->size() > MAX_LANGUAGE_BYTES) return false;
    ParseLanguageFile(*bytes, *pTable);
    return true;
}
