// .rt3 files: layout, versions, damaged files, saves that fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <thread>

#include "curves/CaptureFile.h"
#include "platform/system/Archive.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemFile.h"
#include "platform/system/Progress.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"

namespace {

void Read(const std::vector<std::uint8_t>& bytes, RTCaptureFile& capture) {
    CMemFile file(L"a.rt3", bytes);
    ReadCapture(file, capture);
}

std::vector<std::uint8_t> Write(RTCaptureFile& capture, IProgress* pProgress = nullptr) {
    CMemFile file(L"a.rt3");
    WriteCapture(file, capture, pProgress);
    return file.GetContents();
}

std::vector<std::int16_t> GetValues(const RTCurveData& curve) {
    return {curve.GetValues(), curve.GetValues() + curve.GetCount()};
}

std::shared_ptr<RTCurveData> AddCurve(CRTCurves& set, std::size_t nChannel,
                                      const std::vector<std::int16_t>& values) {
    auto pCurve = set.AddCurve(nChannel, static_cast<std::uint32_t>(values.size()));
    std::copy(values.begin(), values.end(), pCurve->GetFreeValues().begin());
    pCurve->PublishCount(static_cast<std::uint32_t>(values.size()));
    return pCurve;
}

TEST(CaptureFile, WritesASmallCaptureByteForByte) {
    RTCaptureFile capture;
    capture.m_screen.m_nMode = 1;
    capture.m_plots.m_anSpans = {4, 1, 1};
    AddCurve(capture.m_curves, 0, {100, -200, 300, -50})->AddPulse(4, 5);
    EXPECT_EQ(Write(capture), FileBytes::SmallCapture());
}

TEST(CaptureFile, ReadsScreenRecordsOfEveryVersion) {
    constexpr int NONE = -1;
    const auto read = [](FileBytes bytes) {
        RTCaptureFile capture;
        capture.m_screen.m_nMode = capture.m_screen.m_nPositionInput = 9;
        Read(bytes.Spans({}).Byte(14).Byte(0).m_bytes, capture);
        const RTScreenRecord& screen = capture.m_screen;
        return std::vector<int>{screen.m_nMode ? *screen.m_nMode : NONE,
                                screen.m_nPositionInput ? *screen.m_nPositionInput : NONE,
                                screen.m_nValueRate, screen.m_nAuxRate};
    };
    using Fields = std::vector<int>;
    EXPECT_EQ(read(FileBytes().Long(1)), (Fields{NONE, NONE, 40000, 20000}));
    EXPECT_EQ(read(FileBytes().Long(-1)), (Fields{NONE, NONE, 40000, 20000}));
    EXPECT_EQ(read(FileBytes().Long(2).Byte(20)), (Fields{20, NONE, 40000, 20000}));
    EXPECT_EQ(read(FileBytes().Long(3).Byte(20).Byte(1)), (Fields{20, 1, 40000, 20000}));
    EXPECT_EQ(read(FileBytes().Long(3).Byte(20).Byte(2)), (Fields{20, 2, 32000, 16000}));
    for (const int nVersion : {4, 9})
        EXPECT_EQ(read(FileBytes().Long(nVersion).Byte(20).Byte(2).Word(50000).Word(7)),
                  (Fields{20, 2, 50000, 7}));
}

TEST(CaptureFile, ReadsCurveSetsFromBeforeVersioning) {
    FileBytes bytes = FileBytes().Head().Byte(2);
    bytes.Long(1).Values({5, -3, 7, 9}).Pulses({{2, 1}, {4, 255}});
    bytes.Long(2).Values({}).Pulses({}).Values({-1}).Pulses({});
    RTCaptureFile capture;
    Read(bytes.m_bytes, capture);
    EXPECT_EQ(capture.m_curves.m_byVersion, 0);
    ASSERT_EQ(capture.m_curves.m_lstCurves[0].size(), 1u);
    ASSERT_EQ(capture.m_curves.m_lstCurves[1].size(), 2u);
    const RTCurveData& curve = *capture.m_curves.m_lstCurves[0].front();
    EXPECT_EQ(curve.m_wReserved, 0x5A5A);
    EXPECT_EQ(curve.GetCapacity(), 1000u);
    EXPECT_EQ(curve.GetPulses().At(1).m_byState, 255);
    EXPECT_EQ(std::count(curve.m_anMarkers.begin(), curve.m_anMarkers.end(), -1), 10);
    EXPECT_EQ(curve.GetExtremes(), (RTExtremes{7, 5, 9, -3}));
    EXPECT_EQ(capture.m_curves.m_lstCurves[1][0]->GetExtremes(),
              (RTExtremes{-32768, 32767, -32768, 32767}));
    EXPECT_EQ(capture.m_curves.m_lstCurves[1][1]->GetExtremes(),
              (RTExtremes{-1, -1, -32768, 32767}));
}

TEST(CaptureFile, ReadsMarkersAsTheVersionStoredThem) {
    const std::vector<int> anStored = {1, 2, 0, 0, 0, 7, -1, -1, 0, 0};
    const std::vector<int> anCleared = {1, 2, -1, -1, 0, 7, -1, -1, -1, -1};
    for (const int nVersion : {11, 12, 13, 14, 15, 255}) {
        FileBytes bytes;
        bytes.Head().Byte(nVersion).Byte(1).Long(1).Values({3, 4}).Pulses({}).Longs(anStored);
        if (nVersion >= 14) bytes.Words({11, 12, 13, 14});
        RTCaptureFile capture;
        Read(bytes.m_bytes, capture);
        EXPECT_EQ(capture.m_curves.m_byVersion, nVersion);
        const RTCurveData& curve = *capture.m_curves.m_lstCurves[0].front();
        EXPECT_EQ(std::vector<int>(curve.m_anMarkers.begin(), curve.m_anMarkers.end()),
                  nVersion < 13 ? anCleared : anStored);
        EXPECT_EQ(curve.GetExtremes(),
                  nVersion < 14 ? (RTExtremes{3, 3, 4, 4}) : (RTExtremes{13, 14, 11, 12}));
    }
}

TEST(CaptureFile, ComputesMissingExtremesFromTheFirstListThatLacksThemOn) {
    RTCaptureFile capture;
    const auto pBefore = AddCurve(capture.m_curves, 0, {1, 2});
    const auto pLacking = AddCurve(capture.m_curves, 1, {3, -4, 5});
    const auto pNext = AddCurve(capture.m_curves, 1, {6});
    const auto pLater = AddCurve(capture.m_curves, 2, {7, 8});
    for (const auto& pCurve : {pBefore, pNext, pLater}) pCurve->SetExtremes({90, 91, 92, 93});
    Write(capture);
    EXPECT_EQ(pBefore->GetExtremes(), (RTExtremes{90, 91, 92, 93}));
    EXPECT_EQ(pLacking->GetExtremes(), (RTExtremes{5, 3, -4, -4}));
    EXPECT_EQ(pNext->GetExtremes(), (RTExtremes{6, 6, -32768, 32767}));
    EXPECT_EQ(pLater->GetExtremes(), (RTExtremes{7, 7, 8, 8}));

    pLacking->SetExtremes({90, 91, 92, 93});
    pNext->SetExtremes({});
    Write(capture);
    EXPECT_EQ(pNext->GetExtremes(), RTExtremes{}) << "only the first curve of a list tells";
}

TEST(CaptureFile, GivesBackLongCurvesAndPulseLists) {
    std::mt19937 random(3);
    RTCaptureFile capture;
    std::vector<std::int16_t> values(300001);
    for (auto& nValue : values) nValue = static_cast<std::int16_t>(random());
    const auto pCurve = AddCurve(capture.m_curves, 2, values);
    for (int n = 0; n < 9000; ++n) pCurve->AddPulse(n * 30, static_cast<std::uint8_t>(n));
    const auto bytes = Write(capture);
    EXPECT_EQ(bytes.size(), 10u + 13 + capture.m_curves.GetRecordLength());

    RTCaptureFile again;
    Read(bytes, again);
    const RTCurveData& read = *again.m_curves.m_lstCurves[2].front();
    EXPECT_EQ(GetValues(read), values);
    EXPECT_EQ(read.FindMinMax(1, 300001), pCurve->FindMinMax(1, 300001));
    EXPECT_EQ(Write(again), bytes);
}

TEST(CaptureFile, KeepsTheCompleteCurvesOfAFileCutAnywhere) {
    FileBytes bytes;
    bytes.Head().Byte(14).Byte(3).Long(2);
    std::vector<std::size_t> anCurveEnds;
    for (int nCurve = 0; nCurve < 3; ++nCurve) {
        if (nCurve == 2) bytes.Long(1);
        bytes.Values({1, 2, 3}).Pulses({{3, 1}}).Longs(std::vector(10, -1)).Words({1, 2, 3, 4});
        anCurveEnds.push_back(bytes.m_bytes.size());
    }
    bytes.Long(0);

    for (std::size_t nLength = 0; nLength < bytes.m_bytes.size(); ++nLength) {
        RTCaptureFile capture;
        std::vector<std::uint8_t> cut = bytes.m_bytes;
        cut.resize(nLength);
        try {
            Read(cut, capture);
            FAIL() << "read a file cut at " << nLength;
        } catch (const CArchiveException& error) {
            ASSERT_EQ(error.m_cause, CArchiveException::endOfFile);
        }
        const auto nComplete = std::count_if(anCurveEnds.begin(), anCurveEnds.end(),
                                             [&](std::size_t nEnd) { return nEnd <= nLength; });
        ASSERT_EQ(capture.m_curves.m_lstCurves[0].size() + capture.m_curves.m_lstCurves[1].size(),
                  static_cast<std::size_t>(nComplete))
            << nLength;
    }
}

TEST(CaptureFile, RefusesCountsThatCannotBeTrue) {
    const FileBytes start = FileBytes().Head().Byte(14).Byte(1).Long(1).Word(0);
    const std::pair<FileBytes, std::wstring> cases[] = {
        {FileBytes().Long(1).Spans({1, 2, 3, 4}), L"4 plots"},
        {FileBytes().Head().Byte(4).Long(0), L"4 channels"},
        {FileBytes().Head().Byte(14).Byte(200), L"200 channels"},
        {FileBytes(start).Long(0x7FFFFFFF).Long(1).Long(0),
         L"2147483647 values, but only 4 bytes follow"},
        {FileBytes(start).Long(0xFFFFFFFF).Long(1).Long(0), CMemoryException().GetErrorMessage()},
        {FileBytes(start).Long(0).Long(1).Long(0x7FFFFFFF).Byte(1), L"2147483647 pulse records"}};
    for (const auto& [bytes, strPart] : cases) {
        RTCaptureFile capture;
        try {
            Read(bytes.m_bytes, capture);
            ADD_FAILURE() << "not refused: " << ToUtf8(strPart);
        } catch (const CException& error) {
            EXPECT_NE(error.GetErrorMessage().find(strPart), std::wstring::npos) << ToUtf8(strPart);
        }
    }
}

TEST(CaptureFile, ReadsNothingForCountsBelowOne) {
    RTCaptureFile capture;
    Read(FileBytes().Head().Byte(3).Long(-5).Long(1).Values({1}).Long(-2000000000).Long(0).m_bytes,
         capture);
    EXPECT_TRUE(capture.m_curves.m_lstCurves[0].empty());
    ASSERT_EQ(capture.m_curves.m_lstCurves[1].size(), 1u);
    EXPECT_EQ(capture.m_curves.m_lstCurves[1].front()->GetPulses().GetCount(), 0u);
}

class StopAt : public IProgress {
  public:
    explicit StopAt(std::uint64_t nCalls) : m_nCalls(nCalls) {}
    bool Advance(std::uint64_t nDone, std::uint64_t nTotal) override {
        EXPECT_LE(nDone, nTotal);
        m_nLast = nDone;
        return m_nCalls-- > 0;
    }
    std::uint64_t m_nCalls;
    std::uint64_t m_nLast = 0;
};

TEST(CaptureFile, SavesACurveThatIsBeingFilledAsItStands) {
    RTCaptureFile capture;
    const auto pCurve = capture.m_curves.AddCurve(0, 200000);
    std::thread writer([&] {
        while (!pCurve->GetFreeValues().empty()) {
            const auto places = pCurve->GetFreeValues();
            const std::size_t nTake = std::min<std::size_t>(50, places.size());
            std::fill_n(places.begin(), nTake, static_cast<std::int16_t>(pCurve->GetCount() / 50));
            pCurve->PublishCount(pCurve->GetCount() + static_cast<std::uint32_t>(nTake));
            pCurve->AddPulse(static_cast<std::int32_t>(pCurve->GetCount()), 1);
        }
    });
    // Whoever looks at it meanwhile sees whole what it says that it has.
    for (std::uint32_t nLive = 0; nLive < 100000;) {
        nLive = pCurve->GetCount();
        ASSERT_EQ(pCurve->FindMinMax(0, nLive).m_nMax,
                  nLive ? static_cast<int>(nLive / 50) - 1 : INT16_MIN);
    }
    std::uint32_t nCount = 0;
    while (nCount < 200000) {
        RTCaptureFile read;
        pCurve->SetExtremes({});
        StopAt never(1000);
        Read(Write(capture, &never), read);
        const RTCurveData& curve = *read.m_curves.m_lstCurves[0].front();
        nCount = curve.GetCount();
        if (nCount == 0) continue;
        const auto nLast = static_cast<std::int16_t>(nCount / 50 - 1);
        ASSERT_EQ(curve.GetExtremes(), (RTExtremes{nLast, 0, nLast, 0}));
        ASSERT_EQ(curve.FindMinMax(0, nCount), (RTMinMax{0, nLast}));
        const std::size_t nPulses = curve.GetPulses().GetCount();
        if (nPulses == 0) continue;
        ASSERT_LE(curve.GetPulses().At(nPulses - 1).m_nPosition, static_cast<int>(nCount));
    }
    writer.join();
}

}  // namespace
