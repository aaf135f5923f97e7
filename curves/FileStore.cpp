#include "curves/FileStore.h"

#include <algorithm>
#include <set>

#include "platform/system/Paths.h"

std::wstring GetStoreFolder() { return JoinPath(GetProgramFolder(), L"RealTimeFiles"); }

void CreateStoreFolder() { CreateFolder(GetStoreFolder()); }

std::wstring GetSavePath(std::wstring_view strName) {
    std::wstring strPath =
        FindFileOfAnyCase(JoinPath(GetStoreFolder(), std::wstring(strName) + L".rt3"));
    RequireFileOrNothing(strPath);
    return strPath;
}

std::vector<std::wstring> FindStoredFiles() {
    std::vector<std::wstring> arrFiles = FindFiles(GetStoreFolder(), L".rt3");
    std::sort(arrFiles.begin(), arrFiles.end());
    return arrFiles;
}

std::vector<std::wstring> NameRows(const std::vector<std::wstring>& arrFiles) {
    std::multiset<std::wstring> names(arrFiles.begin(), arrFiles.end());
    for (const std::wstring& strFile : arrFiles) names.insert(RemoveExtension(strFile));
    std::vector<std::wstring> arrRows;
    for (const std::wstring& strFile : arrFiles) {
        const std::wstring strRow = RemoveExtension(strFile);
        arrRows.push_back(names.count(strRow) == 1 ? strRow : strFile);
    }
    return arrRows;
}

std::wstring RemoveExtension(std::wstring_view strFileName) {
    return std::wstring(strFileName.substr(0, strFileName.rfind(L'.')));
}
