// Files stand in the temporary folder, so most of what is measured is the way into and out of the
// system's file cache; the way to the disk has a row of its own. What the system needs to find free
// pages for that differs from call to call, and the least of it is luck: the median decides.
#include <malloc.h>
#include <string>
#include <vector>

#include "Files.h"
#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "curves/CaptureFile.h"
#include "platform/system/File.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr std::uint32_t CAPTURE_VALUES = 2400000;
constexpr std::uint32_t BLOCK_VALUES = 200;
constexpr int ROUNDS = 61;
constexpr int DISK_ROUNDS = 25;

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

}  // namespace

void MeasureFiles(CTable& table) {
    const TemporaryFolder folder;
    const std::wstring strOurs = folder.Path("ours.rt3");
    const std::wstring strPlain = folder.Path("plain");
    RTCaptureFile capture;
    FillCapture(capture);
    SaveCapture(strOurs, capture);
    const std::vector<std::uint8_t> bytes = CopyFile(strOurs);
    const Goal goal{Goal::Within, 1.05};

    const std::vector<Figures> writing =
        MeasureInTurn({TimeCalls([&] {
                           CFile file(strOurs, CFile::modeWrite | CFile::modeCreate);
                           WriteCapture(file, capture);
                           file.Close();
                       }),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, false); })},
                      ROUNDS, Figures::Median);
    table.AddComparison("write .rt3", writing[0], "same bytes written at once", writing[1], goal);

    {
        const NewMemory newMemory;
        const std::vector<Figures> reading =
            MeasureInTurn({TimeCalls([&] {
                               CFile file(strOurs, CFile::modeRead);
                               RTCaptureFile loaded;
                               ReadCapture(file, loaded);
                               KeepResult(loaded);
                           }),
                           TimeCalls([&] { KeepResult(ReadBytes(strOurs)); })},
                          ROUNDS, Figures::Median);
        table.AddComparison("read .rt3 into new memory", reading[0],
                            "same bytes read at once, new memory", reading[1], goal);
    }

    const std::vector<Figures> saving =
        MeasureInTurn({TimeCalls([&] { SaveCapture(strOurs, capture); }, Clock::Wall),
                       TimeCalls([&] { WriteBytes(strPlain, bytes, true); }, Clock::Wall)},
                      DISK_ROUNDS, Figures::Median);
    table.AddComparison("save .rt3 to the disk, by the clock", saving[0],
                        "same bytes, flushed to the disk", saving[1], goal);
}
