#include <gtest/gtest.h>

#include <filesystem>

#include "curves/FileStore.h"
#include "platform/system/Text.h"

namespace {

TEST(FileStore, StandsBesideTheExecutable) {
    const auto executable = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(ToUtf8(GetSavePath(L"run1")),
              executable.parent_path() / "RealTimeFiles" / "run1.rt3");
}

TEST(FileStore, RefusesNamesThatLeaveTheFolder) {
    for (const wchar_t* pName : {L"run1", L"Teil 3.1", L"..a", L"M\u00FCller", L"a:b*?", L" "})
        EXPECT_TRUE(IsStoreName(pName)) << pName;
    for (const wchar_t* pName : {L"", L".", L"..", L"....", L"../a", L"a/b", L"..\\a", L"a\\b",
                                 L"a\nb", L"\x7F", L"\x85", L"a\tb"})
        EXPECT_FALSE(IsStoreName(pName)) << pName;
    EXPECT_FALSE(IsStoreName(std::wstring_view(L"a\0b", 3)));
}

TEST(FileStore, ShowsNamesWithoutTheirLastExtension) {
    EXPECT_EQ(RemoveExtension(L"run1.rt3"), L"run1");
    EXPECT_EQ(RemoveExtension(L"a.b.RT3"), L"a.b");
    EXPECT_EQ(RemoveExtension(L"plain"), L"plain");
}

}  // namespace
