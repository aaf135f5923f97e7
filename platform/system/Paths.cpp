#include "platform/system/Paths.h"

#include <QChar>
#include <QStandardPaths>
#include <algorithm>
#include <compare>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/system/Exceptions.h"
#include "platform/system/SystemCalls.h"
#include "platform/system/Text.h"

namespace fs = std::filesystem;

namespace {

constexpr wchar_t SEPARATOR = L'/';

std::wstring g_strProgramFolder;  // empty: the executable's

fs::path ToSystemPath(const std::wstring& strPath) { return fs::path(ToUtf8(strPath)); }

char32_t FoldCase(wchar_t c) { return QChar::toCaseFolded(static_cast<char32_t>(c)); }

bool EndsInAnyCase(std::wstring_view strName, std::wstring_view strExtension) {
    const std::size_t nStem = strName.size() - std::min(strName.size(), strExtension.size());
    return EqualsInAnyCase(strName.substr(nStem), strExtension);
}

void SortInAnyCase(std::vector<std::wstring>& names) {
    std::sort(names.begin(), names.end(), [](const std::wstring& a, const std::wstring& b) {
        const auto order = std::lexicographical_compare_three_way(
            a.begin(), a.end(), b.begin(), b.end(),
            [](wchar_t x, wchar_t y) { return FoldCase(x) <=> FoldCase(y); });
        return std::is_eq(order) ? a < b : std::is_lt(order);
    });
}

/// @return the error that has kept it from going on, if any
template <class Visit>
std::error_code VisitFolder(const std::wstring& strFolder, Visit visit) {
    std::error_code error;
    for (fs::directory_iterator entry(ToSystemPath(strFolder), error), end; !error && entry != end;
         entry.increment(error))
        visit(*entry);
    return error;
}

bool IsControl(wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }
bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

}  // namespace

std::wstring GetExecutablePath() {
    std::error_code error;
    return FromUtf8(fs::read_symlink("/proc/self/exe", error).native());
}

std::wstring GetExecutableFolder() { return GetFolderOfPath(GetExecutablePath()); }

std::wstring GetProgramFolder() {
    return g_strProgramFolder.empty() ? GetExecutableFolder() : g_strProgramFolder;
}

void SetProgramFolder(const std::wstring& strFolder) { g_strProgramFolder = strFolder; }

std::wstring GetDocumentsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdWString();
}

std::wstring JoinPath(std::wstring_view strFolder, std::wstring_view strName) {
    std::wstring strPath(strFolder);
    if (!strPath.empty() && strPath.back() != SEPARATOR) strPath += SEPARATOR;
    return strPath += strName;
}

std::wstring GetFolderOfPath(std::wstring_view strPath) {
    const std::size_t nSeparator = strPath.rfind(SEPARATOR);
    if (nSeparator == std::wstring_view::npos) return L".";
    return std::wstring(strPath.substr(0, std::max<std::size_t>(nSeparator, 1)));
}

std::wstring GetNameOfPath(std::wstring_view strPath) {
    const std::size_t nSeparator = strPath.rfind(SEPARATOR);
    return std::wstring(strPath.substr(nSeparator + 1));
}

bool EqualsInAnyCase(std::wstring_view strA, std::wstring_view strB) {
    return std::equal(strA.begin(), strA.end(), strB.begin(), strB.end(),
                      [](wchar_t a, wchar_t b) { return FoldCase(a) == FoldCase(b); });
}

std::wstring GetAbsolutePath(const std::wstring& strPath) {
    std::error_code error;
    fs::path path = fs::absolute(ToSystemPath(strPath), error).lexically_normal();
    if (!path.has_filename() && path.has_relative_path()) path = path.parent_path();
    return FromUtf8(path.native());
}

bool IsPlainFileName(std::wstring_view strName) {
    if (strName.find_first_not_of(L'.') == std::wstring_view::npos) return false;
    return std::none_of(strName.begin(), strName.end(),
                        [](wchar_t c) { return IsControl(c) || IsSeparator(c); });
}

bool FileExists(const std::wstring& strPath) {
    std::error_code error;
    return fs::is_regular_file(ToSystemPath(strPath), error);
}

bool FolderExists(const std::wstring& strPath) {
    std::error_code error;
    return fs::is_directory(ToSystemPath(strPath), error);
}

std::optional<FileIdentity> FindIdentity(const std::wstring& strPath) {
    struct stat status;
    if (::stat(ToUtf8(strPath).c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileIdentity(status.st_dev, status.st_ino);
}

void RequireFileOrNothing(const std::wstring& strPath) {
    std::error_code error;
    const fs::file_status status = fs::status(ToSystemPath(strPath), error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw CFileException(CFileException::cannotWrite, strPath, 0, GetText(NOT_A_REGULAR_FILE));
}

bool CreateFolder(const std::wstring& strPath) {
    std::error_code error;
    if (fs::create_directory(ToSystemPath(strPath), error))
        FlushFolder(ToUtf8(GetFolderOfPath(strPath)));
    return FolderExists(strPath);
}

std::vector<std::wstring> FindFiles(const std::wstring& strFolder, std::wstring_view strExtension) {
    std::vector<std::wstring> arrNames;
    VisitFolder(strFolder, [&](const fs::directory_entry& entry) {
        std::wstring strName = FromUtf8(entry.path().filename().native());
        std::error_code error;
        if (EndsInAnyCase(strName, strExtension) && entry.is_regular_file(error))
            arrNames.push_back(std::move(strName));
    });
    return arrNames;
}

FolderContents ReadFolder(const std::wstring& strFolder, std::wstring_view strExtension) {
    FolderContents contents;
    const std::error_code failure = VisitFolder(strFolder, [&](const fs::directory_entry& entry) {
        std::wstring strName = FromUtf8(entry.path().filename().native());
        std::error_code error;
        if (strName.starts_with(L'.')) return;
        if (entry.is_directory(error))
            contents.m_arrFolders.push_back(std::move(strName));
        else if (EndsInAnyCase(strName, strExtension) && entry.is_regular_file(error))
            contents.m_arrFiles.push_back(std::move(strName));
    });
    if (failure) throw CFileException(CFileException::cannotOpenFolder, strFolder, failure.value());
    SortInAnyCase(contents.m_arrFolders);
    SortInAnyCase(contents.m_arrFiles);
    return contents;
}

std::wstring FindFileOfAnyCase(const std::wstring& strPath) {
    std::error_code error;
    if (fs::exists(ToSystemPath(strPath), error)) return strPath;

    const std::wstring strFolder = GetFolderOfPath(strPath);
    const std::wstring strWanted = GetNameOfPath(strPath);
    std::wstring strBest;
    std::ptrdiff_t nBestAgreement = -1;
    VisitFolder(strFolder, [&](const fs::directory_entry& entry) {
        const std::wstring strName = FromUtf8(entry.path().filename().native());
        if (!EqualsInAnyCase(strName, strWanted) || !entry.is_regular_file(error)) return;
        const auto differing =
            std::mismatch(strName.begin(), strName.end(), strWanted.begin()).first;
        const std::ptrdiff_t nAgreement = differing - strName.begin();
        if (nAgreement > nBestAgreement || (nAgreement == nBestAgreement && strName < strBest)) {
            nBestAgreement = nAgreement;
            strBest = strName;
        }
    });
    return strBest.empty() ? strPath : JoinPath(strFolder, strBest);
}
