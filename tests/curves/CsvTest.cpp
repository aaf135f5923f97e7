#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <sys/resource.h>

#include "curves/CsvExport.h"
#include "curves/CsvTable.h"
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

TEST(Csv, GivesEachSingleValueARowOfItsOwn) {
    EXPECT_EQ(Export({1500, -250, 7}, {.m_bPairs = false}), "Force\r\n1.500\r\n-0.250\r\n0.007");
    EXPECT_EQ(
        Export({1500, -250, 7}, {.m_bPairs = false, .m_bTimeColumn = true, .m_nValueRate = 44100}),
        "Time (ms), Force\r\n0.000,1.500\r\n0.022,-0.250\r\n0.045,0.007");
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
    EXPECT_EQ(Export({1, 2, 3, 4, 5, 6}, options),
              "Time (ms), Force, "
              "Distance\r\n0.000,0.001,0.002\r\n0.050,0.003,0.004\r\n0.100,0.005,0.006");
    options.m_nValueRate = 0;
    EXPECT_EQ(Export({1, 2, 3, 4}, options),
              "Index, Force, Distance\r\n0,0.001,0.002\r\n2,0.003,0.004");
    for (const std::uint16_t nRate : {1, 3, 999, 32000, 44100, 65535}) {
        std::string strExpected = "Time (ms), Force";
        for (std::uint64_t n = 0; n < 70000; ++n) {
            const auto nMicroseconds = static_cast<unsigned long>(n * 1000000 / nRate);
            char text[48];
            std::snprintf(text, sizeof text, "\r\n%lu.%03lu,0.000", nMicroseconds / 1000,
                          nMicroseconds % 1000);
            strExpected += text;
        }
        EXPECT_TRUE(Export(std::vector<std::int16_t>(70000),
                           {.m_bPairs = false, .m_bTimeColumn = true, .m_nValueRate = nRate}) ==
                    strExpected)
            << nRate;
    }
}

/// Three curves on channel 1 and one, longer, on channel 3.
std::string Tabulate(const RTTableOptions& options) {
    CRTCurves curves;
    const auto add = [&](std::size_t nChannel, const std::vector<std::int16_t>& values,
                         const std::vector<RTPulse>& pulses) {
        curves.m_lstCurves[nChannel].push_back(MakeCurve(values));
        for (const RTPulse& pulse : pulses)
            curves.m_lstCurves[nChannel].back()->AddPulse(pulse.m_nPosition, pulse.m_byState);
    };
    add(0, {1, -2, 3}, {{4, 15}});
    add(0, {}, {});
    add(0, {-32768, 32767}, {});
    // Of records at one position the last one says nothing, and bit 4 is no line.
    add(2, {4, 5, 6, 7, 8, 9}, {{2, 0x11}, {2, 2}, {5, 12}});
    const TemporaryFolder folder;
    CTextFile file(folder.Path("a.csv"), CFile::modeCreate | CFile::modeWrite);
    WriteTableCsv(file, curves, options);
    return folder.Get("a.csv");
}

TEST(Csv, TabulatesAllChannelsAndCurvesByTimeStep) {
    EXPECT_EQ(Tabulate({.m_bPairs = false, .m_nValueRate = 2000}),
              "curve,time_ms,ch1_force,ch3_force,line1,line2,line3,line4\r\n"
              "1,0.000,0.001,0.004,1,0,0,0\r\n1,0.500,-0.002,0.005,1,0,0,0\r\n"
              "1,1.000,0.003,0.006,0,0,1,1\r\n1,1.500,,0.007,0,0,1,1\r\n"
              "1,2.000,,0.008,0,0,1,1\r\n1,2.500,,0.009,,,,\r\n"
              "3,0.000,-32.768,,,,,\r\n3,0.500,32.767,,,,,\r\n");
    EXPECT_EQ(
        Tabulate({.m_bPairs = true, .m_secondInput = SecondInput::Analogue, .m_nValueRate = 0}),
        "curve,time_ms,ch1_force,ch1_position,ch3_force,ch3_position,line1,line2,line3,line4\r\n"
        "1,0,0.001,-0.002,0.004,0.005,1,0,0,0\r\n1,2,,,0.006,0.007,0,0,1,1\r\n"
        "1,4,,,0.008,0.009,0,0,1,1\r\n3,0,-32.768,32.767,,,,,,\r\n");
    EXPECT_TRUE(Tabulate({.m_bPairs = true}).starts_with("curve,time_ms,ch1_force,ch1_voltage,"));
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
