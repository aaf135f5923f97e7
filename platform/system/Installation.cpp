#include "platform/system/Installation.h"

#include <QStandardPaths>
#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "platform/system/Paths.h"
#include "platform/system/Text.h"

namespace fs = std::filesystem;

namespace {

constexpr std::wstring_view LANGUAGE_FOLDER = L"lang";
constexpr std::wstring_view LANGUAGE_EXTENSION = L".txt";
/// Names the instrument's language, and is none itself.
constexpr std::wstring_view SETTING_FILE = L"default.txt";

std::wstring g_strLanguage;  // empty: none is chosen

/// Something of this library, by whose address the system finds its file.
constexpr char OWN_ADDRESS = 0;

/// The languages that there are files for, in any order.
std::vector<std::wstring> FindLanguagesOf(const std::wstring& strHome) {
    std::vector<std::wstring> arrNames =
        FindFiles(JoinPath(strHome, LANGUAGE_FOLDER), LANGUAGE_EXTENSION);
    std::erase_if(arrNames, [](const std::wstring& strName) {
        return EqualsInAnyCase(strName, SETTING_FILE);
    });
    for (std::wstring& strName : arrNames)
        strName.resize(strName.size() - LANGUAGE_EXTENSION.size());
    return arrNames;
}

/// The folder for what is installed for everybody. Found from the libraries, so that an
/// installation can be moved as a whole.
std::wstring GetSharedFolder() { return JoinPath(GetLibraryFolder(), RT_SHARED_FROM_LIBRARIES); }

std::wstring GetUserDataFolder() {
    const QString strFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return JoinPath(strFolder.toStdWString(), L"realtime-mode");
}

bool IsWritable(const std::wstring& strFolder) {
    return ::access(ToUtf8(strFolder).c_str(), W_OK) == 0;
}

}  // namespace

std::wstring GetLibraryFolder() {
    Dl_info info{};
    if (!::dladdr(&OWN_ADDRESS, &info) || !info.dli_fname) return GetExecutableFolder();
    std::error_code error;
    const fs::path path = fs::canonical(info.dli_fname, error);
    return error ? GetExecutableFolder() : FromUtf8(path.parent_path().native());
}

std::wstring MakeDataFolder() {
    std::wstring strBeside = GetExecutableFolder();
    if (GetLibraryFolder() == strBeside && IsWritable(strBeside)) return strBeside;
    std::wstring strFolder = GetUserDataFolder();
    std::error_code error;
    fs::create_directories(ToUtf8(strFolder), error);
    return strFolder;
}

std::wstring FindLanguageHome() {
    std::wstring strOwn = GetProgramFolder();
    for (const std::wstring& strHome : {strOwn, GetExecutableFolder(), GetSharedFolder()})
        if (!FindLanguagesOf(strHome).empty()) return strHome;
    return strOwn;
}

std::vector<std::wstring> FindLanguages() {
    std::vector<std::wstring> arrNames = FindLanguagesOf(FindLanguageHome());
    std::sort(arrNames.begin(), arrNames.end());
    return arrNames;
}

std::wstring GetChosenLanguage() { return g_strLanguage; }

bool ChooseLanguage(const std::wstring& strName) {
    const auto arrNames = FindLanguages();
    const auto it =
        std::find_if(arrNames.begin(), arrNames.end(), [&](const std::wstring& strLanguage) {
            return EqualsInAnyCase(strLanguage, strName);
        });
    if (it == arrNames.end() && !strName.empty()) return false;
    g_strLanguage = strName.empty() ? strName : *it;
    return true;
}
