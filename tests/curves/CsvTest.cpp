#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <sys/resource.h>

#include "curves/CsvExport.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Progress.h"
#include "platform/system/TextFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

std::unique_ptr<RTCurveData> MakeCurve(const std::vector<std::int16_t>& values) {
    auto pCurve = std::make_unique<RTCurveData>(static_cast<std::uint32_t>(values.size()));
    std::copy(values.begin(), values.end(), pCurve->GetFreeValues().begin());
    pCurve->PublishCount(static_cast<std::uint32_t>(values.size()));
    return pCurve;
}

std::string Export(const std::vector<std::int16_t>& values, const RTCsvOptions& options = {}) {
    const TemporaryFolder folder;
    ExportCurveCsv(folder.Path("a.csv"), *MakeCurve(values), options);
    return folder.Get("a.csv");
}

TEST(Csv, WritesPairsInThousandths) {
    EXPECT_EQ(Export({1500, -250, 12345, 7}), "Force, Distance\r\n1.500,-0.250\r\n12.345,0.007");
    EXPECT_EQ(Export({}), "Force, Distance");
    EXPECT_EQ(Export({1, 2, 3}), "Force, Distance\r\n0.001,0.002") << "only complete pairs";
}

TEST(Csv, PrintsEveryValueAsTheStandardLibraryDoes) {
    std::vector<std::int16_t> values;
    std::string strExpected = "Force, Distance";
    for (int nValue = -32768; nValue <= 32767; ++nValue) {
        values.push_back(static_cast<std::int16_t>(nValue));
        char text[32];
        std::snprintf(text, sizeof text, nValue % 2 == 0 ? "\r\n%.3f" : ",%.3f", nValue / 1000.0);
        strExpected += text;
    }
    EXPECT_TRUE(Export(values) == strExpected);
}

TEST(Csv, LeadsRowsWithTheTimeWhenAsked) {
    RTCsvOptions options{.m_bTimeColumn = true, .m_nValueRate = 40000};
    EXPECT_EQ(
        Export({1, 2, 3, 4, 5, 6}, options),
        "Time, Force, Distance\r\n0.000,0.001,0.002\r\n0.050,0.003,0.004\r\n0.100,0.005,0.006");
    options.m_nValueRate = 0;
    EXPECT_EQ(Export({1, 2, 3, 4}, options),
              "Time, Force, Distance\r\n0,0.001,0.002\r\n2,0.003,0.004");
}

TEST(Csv, AFailureKeepsTheLinesWrittenBeforeItAndSaysSo) {
    const TemporaryFolder folder;
    const std::vector<std::int16_t> values(60000, 1234);
    const auto pCurve = MakeCurve(values);
    const auto fail = [&](const std::wstring& strPath, const wchar_t* pReason, bool bKept) {
        try {
            ExportCurveCsv(strPath, *pCurve);
            ADD_FAILURE() << ToUtf8(strPath);
        } catch (const CFileException& error) {
            const std::wstring strText = error.GetErrorMessage();
            EXPECT_NE(strText.find(pReason), strText.npos) << ToUtf8(strText);
            EXPECT_EQ(strText.find(L"lines written before the failure are kept.") != strText.npos,
                      bKept);
        }
    };
    const std::string strWhole = Export(values);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    for (const std::size_t nLimit : {100000, 380000}) {  // the second within the last piece
        const rlimit tight{nLimit, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
        fail(folder.Path("a.csv"), L"File too large", true);
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_TRUE(folder.Get("a.csv") == strWhole.substr(0, nLimit)) << nLimit;
    }
    fail(L"/dev/full", L"No space left on device", false);
    fail(L"/no/a.csv", L"No such file or directory", false);
}

TEST(Csv, ACancelledExportLeavesNoFile) {
    class Stop : public IProgress {
        bool Advance(std::uint64_t nDone, std::uint64_t nTotal) override {
            EXPECT_EQ(nTotal, 200000u);
            EXPECT_LT(nDone, nTotal) << "between two pieces";
            return nDone < nTotal / 2;
        }
    } stop;
    const TemporaryFolder folder;
    const auto pCurve = MakeCurve(std::vector<std::int16_t>(400000));
    std::filesystem::create_symlink("target", folder.GetPath() / "link");
    for (const char* pName : {"a.csv", "link"})
        EXPECT_THROW(ExportCurveCsv(folder.Path(pName), *pCurve, {}, &stop), CUserException);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath() / "link"));
    EXPECT_EQ(folder.CountEntries(), 1u);
}

}  // namespace
