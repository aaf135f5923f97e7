#include "curves/FileStore.h"

#include <algorithm>

#include "platform/system/Paths.h"

namespace {

bool IsControl(wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }
bool IsSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

}  // namespace

std::wstring GetStoreFolder() { return JoinPath(GetProgramFolder(), L"RealTimeFiles"); }

void CreateStoreFolder() { CreateFolder(GetStoreFolder()); }

bool IsStoreName(std::wstring_view strName) {
    if (strName.find_first_not_of(L'.') == std::wstring_view::npos) return false;
    return std::none_of(strName.begin(), strName.end(),
                        [](wchar_t c) { return IsControl(c) || IsSeparator(c); });
}

std::wstring GetSavePath(std::wstring_view strName) {
    return JoinPath(GetStoreFolder(), std::wstring(strName) + L".rt3");
}

std::vector<std::wstring> FindStoredFiles() { return FindFiles(GetStoreFolder(), L".rt3"); }

std::wstring RemoveExtension(std::wstring_view strFileName) {
    return std::wstring(strFileName.substr(0, strFileName.rfind(L'.')));
}
