#include "platform/system/FileEvents.h"

#include <gtest/gtest.h>

#include <optional>

TEST(FileEvents, TellHowTheWorkEndedUnlessThePersonStoppedIt) {
    std::wstring strHeard;
    const CFileListener forgetful([](const FileEvent&) { throw std::bad_alloc(); });
    std::optional<CFileListener> listener;
    listener.emplace([&](const FileEvent& event) {
        strHeard += std::to_wstring(int{static_cast<BYTE>(event.m_work)}) + event.m_strPath +
                    (event.m_pError ? event.m_pError->GetErrorMessage() : L"") + L';';
    });
    DoFileWork(FileWork::Export, L"a", [] {});
    EXPECT_THROW(
        DoFileWork(FileWork::Load, L"b",
                   [] { throw CFileException(CFileException::cannotOpen, L"b", 0, L"gone"); }),
        CFileException);
    EXPECT_THROW(DoFileWork(FileWork::Save, L"c", [] { throw CUserException(); }), CUserException);
    EXPECT_THROW(DoFileWork(FileWork::Save, L"d", [] { throw std::bad_alloc(); }),
                 CMemoryException);
    listener.reset();
    DoFileWork(FileWork::Load, L"e", [] {});
    EXPECT_EQ(strHeard, L"2a;1bb\ngone;0dOut of memory.;");
}
