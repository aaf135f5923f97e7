// What the operator reads of an error.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "platform/system/Exceptions.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/NoticeBox.h"
#include "tests/support/Controls.h"

namespace {

/// Reports an exception, and gives what its box shows, title first.
std::wstring ReadReport(const auto& exception, const std::function<void(CWnd&)>& look = {}) {
    std::wstring strShown;
    Operator::CScript script([&] {
        Operator::WaitFor("the box", [] { return Operator::ModalWindow() != nullptr; });
        strShown = Operator::ModalTitle() + L"\n" + Operator::ModalText();
        if (look) look(*Operator::ModalWindow());
        EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), CNoticeBox::ID_OK_CENTRE));
    });
    try {
        throw exception;
    } catch (...) {
        ReportCurrentException();
    }
    script.Join();
    return strShown;
}

/// Whether a control's picture has ink in its last column or row, where a cut text would.
bool IsCut(CWnd& control) {
    const CBitmap picture = Operator::TakePicture(control);
    const auto [nWidth, nHeight] = picture.GetSize();
    for (int y = 0; y < nHeight; ++y)
        if (picture.GetPixel(nWidth - 1, y) == 0) return true;
    for (int x = 0; x < nWidth; ++x)
        if (picture.GetPixel(x, nHeight - 1) == 0) return true;
    return false;
}

}  // namespace

TEST(ErrorBox, SaysWhatHappenedThenTheFileAndTheReason) {
    using Archive = CArchiveException;
    using File = CFileException;
    const std::wstring strFile = L"a b.rt3";
    EXPECT_EQ(ReadReport(File(File::cannotWrite, strFile, ENOSPC)),
              L"Error\nThe file cannot be saved.\na b.rt3\nNo space left on device.");
    EXPECT_EQ(ReadReport(File(File::cannotOpen, strFile, ECHILD)),
              L"Error\nThe file cannot be opened.\na b.rt3\nNo child processes.");
    EXPECT_EQ(ReadReport(Archive(Archive::badContents, strFile, L"It is a song.")),
              L"Error\nThis file is not a capture.\na b.rt3\nIt is a song.");
    EXPECT_EQ(ReadReport(Archive(Archive::endOfFile, strFile)),
              L"Error\nThis capture is not complete.\na b.rt3\nThe file ends too early.");
    EXPECT_EQ(ReadReport(std::bad_alloc()), L"Error\nOut of memory.");
    EXPECT_EQ(ReadReport(std::runtime_error("why")), L"Error\nSomething has gone wrong.\nwhy");

    const std::wstring strTranslated = L"%2 und %1 und %3%";
    const CTextSource source([&](std::int32_t nString) {
        return nString == 3105 || nString == 3123 ? &strTranslated : nullptr;
    });
    EXPECT_EQ(ReadReport(File(File::cannotWrite, strFile, ENOSPC)),
              L"Error\n%2 und %1 und %3%\na b.rt3\n%2 und %1 und %3%");
    EXPECT_EQ(GetText({3105, L""}, {L"%2", L"x"}), L"x und %2 und %3%");
    {
        const CTextSource younger([](std::int32_t) { return nullptr; });
        EXPECT_EQ(GetText({3105, L"English"}), L"English");
    }
    EXPECT_EQ(GetText({3105, L"English"}), strTranslated);
}

TEST(ErrorBox, ShowsNamesAndReasonsOfAnyLengthWithTheirEnds) {
    for (const std::size_t nLength : {40u, 400u, 100000u})
        for (const wchar_t* pPart : {L"W", L"folder/", L"two words ", L"i", L"\n"}) {
            std::wstring strPath = L"/media/";
            while (strPath.size() < nLength) strPath += pPart;
            strPath += L"/probe 17.rt3";
            std::wstring strReason = L"Because";
            while (strReason.size() < nLength) strReason += L" and because";
            const auto look = [](CWnd& box) {
                for (const int nID : {CNoticeBox::ID_SUMMARY, CNoticeBox::ID_DETAILS})
                    EXPECT_FALSE(IsCut(*box.GetControl(nID)));
                EXPECT_LE(box.GetClientRect().Width(), 790);
                EXPECT_LE(box.GetClientRect().Height(), 400);
            };
            std::wstring strShown =
                ReadReport(CFileException(CFileException::cannotRead, strPath, 0, strReason), look);
            EXPECT_LE(std::count(strShown.begin(), strShown.end(), L'\n'), 7);
            std::erase(strShown, L'\n');
            EXPECT_TRUE(strShown.starts_with(L"ErrorThe file cannot be read./media/"));
            EXPECT_NE(strShown.find(L"/probe 17.rt3Because"), std::wstring::npos);
            EXPECT_TRUE(strShown.ends_with(L"because"));
        }
}

TEST(NoticeBox, AsksAndIsConfirmedOrCancelled) {
    for (const auto& [nTapped, bExpected] :
         {std::pair{IDOK, true}, {IDCANCEL, false}, {0, false}}) {
        Operator::CScript script([nTapped = nTapped] {
            Operator::WaitFor("the box", [] { return Operator::ModalWindow() != nullptr; });
            EXPECT_FALSE(Operator::Tap(*Operator::ModalWindow(), CNoticeBox::ID_OK_CENTRE));
            if (nTapped)
                EXPECT_TRUE(Operator::Tap(*Operator::ModalWindow(), nTapped));
            else
                Operator::PressKey(Operator::Key::Escape);
        });
        EXPECT_EQ(AskOperator(L"Save", L"Replace it?", L"a.csv"), bExpected);
        script.Join();
    }
}
