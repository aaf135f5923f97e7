// Files stand in the temporary folder, so most of what is measured is the way into and out of the
// system's file cache; the way to the disk has rows of its own.
#include <malloc.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/CaptureFile.h"
#include "curves/CsvExport.h"
#include "platform/system/File.h"
#include "platform/system/Text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr std::uint32_t CAPTURE_VALUES = 2400000;
constexpr std::uint32_t BLOCK_VALUES = 200;
constexpr int ROUNDS = 25;
constexpr int SLOW_ROUNDS = 9;

void FillCapture(RTCaptureFile& capture) {
    for (unsigned nChannel = 0; nChannel < CRTCurves::CHANNEL_COUNT; ++nChannel) {
        RTCurveData& curve = *capture.m_curves.AddCurve(nChannel, CAPTURE_VALUES);
        const auto free = curve.GetFreeValues();
        FillStrokes(free, nChannel);
        curve.PublishCount(CAPTURE_VALUES);
        curve.RecomputeExtremes();
        for (std::uint32_t n = BLOCK_VALUES; n <= CAPTURE_VALUES; n += BLOCK_VALUES)
            curve.AddPulse(static_cast<std::int32_t>(n), static_cast<std::uint8_t>(n / 1000));
    }
}

using Bytes = std::unique_ptr<std::uint8_t[]>;

Bytes ReadWhole(CFile& file) {
    const std::size_t nBytes = file.GetLength();
    auto pBytes = std::make_unique_for_overwrite<std::uint8_t[]>(nBytes);
    file.Read(pBytes.get(), nBytes);
    return pBytes;
}

/// While it lives, long arrays are taken from the system and given back to it each time: a program
/// that loads a capture, once in a while, has not just freed memory of that size.
class NewMemory {
  public:
    NewMemory() {
        ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
        ::malloc_trim(0);
    }
    ~NewMemory() { ::mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024); }
    NewMemory(const NewMemory&) = delete;
    NewMemory& operator=(const NewMemory&) = delete;
};

void WriteBytes(const std::wstring& strPath, const std::vector<std::uint8_t>& bytes, bool bToDisk) {
    CFile file(strPath, CFile::modeWrite | CFile::modeCreate);
    file.Write(bytes.data(), bytes.size());
    if (bToDisk) file.Flush();
    file.Close();
}

std::vector<std::uint8_t> CopyFile(const std::wstring& strPath) {
    CFile file(strPath, CFile::modeRead);
    const std::size_t nBytes = file.GetLength();
    const Bytes pBytes = ReadWhole(file);
    return {pBytes.get(), pBytes.get() + nBytes};
}

void PrintCsv(const std::wstring& strPath, const RTCurveData& curve) {
    std::FILE* pFile = std::fopen(ToUtf8(strPath).c_str(), "w");
    if (!pFile) throw std::runtime_error("no temporary file");
    std::fprintf(pFile, "Force, Distance");
    const std::int16_t* pValues = curve.GetValues();
    for (std::uint32_t n = 0; n < CAPTURE_VALUES; n += 2)
        std::fprintf(pFile, "\r\n%.3f,%.3f", pValues[n] / 1000.0, pValues[n + 1] / 1000.0);
    std::fclose(pFile);
}

void MeasureCaptures(CTable& table, const TemporaryFolder& folder, RTCaptureFile& capture) {
    const std::wstring strOurs = folder.Path("ours.rt3");
    const std::wstring strPlain = folder.Path("plain");
    SaveCapture(strOurs, capture);
    const std::vector<std::uint8_t> bytes = CopyFile(strOurs);

    const std::vector<double> writing =
        MeasureInTurn({TimeCalls([&] {
                           CFile file(strOurs, CFile::modeWrite | CFile::modeCreate);
                           WriteCapture(file, capture);
                           file.Close();
                       }),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, false); })},
                      ROUNDS);
    table.AddComparison("write .rt3", writing[0], "same bytes written at once", writing[1],
                        Goal{Goal::Within, 1.3});

    const NewMemory newMemory;
    const std::vector<double> reading = MeasureInTurn({TimeCalls([&] {
                                                           CFile file(strOurs, CFile::modeRead);
                                                           RTCaptureFile loaded;
                                                           ReadCapture(file, loaded);
                                                           KeepResult(loaded);
                                                       }),
                                                       TimeCalls([&] {
                                                           CFile file(strOurs, CFile::modeRead);
                                                           KeepResult(ReadWhole(file));
                                                       })},
                                                      ROUNDS);
    table.AddComparison("read .rt3 into new memory", reading[0], "same bytes read at once",
                        reading[1], Goal{Goal::Within, 1.3});

    const std::vector<double> saving =
        MeasureInTurn({TimeCalls([&] { SaveCapture(strOurs, capture); }, Clock::Wall),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, true); }, Clock::Wall)},
                      SLOW_ROUNDS);
    table.AddComparison("save .rt3 to the disk, by the wall", saving[0],
                        "same bytes, flushed to the disk", saving[1], Goal{Goal::Within, 1.3});
}

void MeasureCsv(CTable& table, const TemporaryFolder& folder, const RTCurveData& curve) {
    const std::wstring strOurs = folder.Path("ours.csv");
    const std::wstring strPlain = folder.Path("plain");
    ExportCurveCsv(strOurs, curve);
    const std::vector<std::uint8_t> bytes = CopyFile(strOurs);
    const std::vector<double> times =
        MeasureInTurn({TimeCalls([&] { ExportCurveCsv(strOurs, curve); }),
                       TimeCalls([&] { PrintCsv(strPlain, curve); }),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, false); })},
                      SLOW_ROUNDS);
    constexpr const char* WHAT = "export CSV of 1,200,000 rows";
    table.AddComparison(WHAT, times[0], "fprintf of each row", times[1], Goal{Goal::Faster, 8});
    table.AddComparison(WHAT, times[0], "same bytes written at once", times[2],
                        Goal{Goal::Within, 2.5});
}

}  // namespace

void MeasureFiles(CTable& table) {
    const TemporaryFolder folder;
    RTCaptureFile capture;
    FillCapture(capture);
    MeasureCaptures(table, folder, capture);
    MeasureCsv(table, folder, *capture.m_curves.FirstCurve(0));
}
