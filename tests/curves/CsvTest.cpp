#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>

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

TEST(Csv, AFailureKeepsTheLinesWrittenBeforeIt) {
    EXPECT_THROW(ExportCurveCsv(L"/dev/full", *MakeCurve({1, 2})), CFileException);
    EXPECT_THROW(ExportCurveCsv(L"/no/such/folder/a.csv", *MakeCurve({1, 2})), CFileException);
}

TEST(Csv, ACancelledExportLeavesNoFile) {
    class Stop : public IProgress {
        bool Advance(std::uint64_t nDone, std::uint64_t nTotal) override {
            EXPECT_EQ(nTotal, 200000u);
            return nDone < nTotal / 2;
        }
    } stop;
    const TemporaryFolder folder;
    const auto pCurve = MakeCurve(std::vector<std::int16_t>(400000));
    EXPECT_THROW(ExportCurveCsv(folder.Path("a.csv"), *pCurve, {}, &stop), CUserException);
    EXPECT_EQ(folder.CountEntries(), 0u);
}

}  // namespace
