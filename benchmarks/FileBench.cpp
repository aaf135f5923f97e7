// What it costs to save, load and export captures and to find extremes, each beside the least that
// could be done: the same bytes written or read in one piece, a plain loop over the values.
//
// The capture is three channels of 60 s at 40000 values a second; files stand in the temporary
// folder, so most of what is measured is the way into and out of the system's file cache.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

#include "curves/CaptureFile.h"
#include "curves/CsvExport.h"
#include "curves/CurveSetRecord.h"
#include "platform/File.h"
#include "platform/Text.h"

namespace {

constexpr std::uint32_t CAPTURE_VALUES = 2400000;
constexpr std::uint32_t BLOCK_VALUES = 200;
constexpr std::size_t HEAD_BYTES = 23;  // of the two records in front of the curve set

class BenchFolder {
  public:
    BenchFolder() {
        std::string strPattern =
            (std::filesystem::temp_directory_path() / "realtime-bench-XXXXXX").native();
        if (!::mkdtemp(strPattern.data())) std::abort();
        m_path = strPattern;
    }
    ~BenchFolder() { std::filesystem::remove_all(m_path); }
    std::string Path(const char* pName) const { return m_path / pName; }

  private:
    std::filesystem::path m_path;
};

void Fill(RTCurveData& curve) {
    std::uint32_t nState = 1;
    for (std::int16_t& nValue : curve.GetFreeValues()) {
        nState = nState * 1664525 + 1013904223;
        nValue = static_cast<std::int16_t>(nState >> 16);
    }
    curve.PublishCount(curve.GetCapacity());
    curve.RecomputeExtremes();
}

const RTCaptureFile& GetCapture() {
    static const auto pCapture = [] {
        auto p = std::make_unique<RTCaptureFile>();
        for (std::size_t nChannel = 0; nChannel < CRTCurves::CHANNEL_COUNT; ++nChannel) {
            const auto pCurve = p->m_curves.AddCurve(nChannel, CAPTURE_VALUES);
            Fill(*pCurve);
            for (std::uint32_t n = BLOCK_VALUES; n <= CAPTURE_VALUES; n += BLOCK_VALUES)
                pCurve->AddPulse(static_cast<std::int32_t>(n), static_cast<std::uint8_t>(n / 1000));
        }
        return p;
    }();
    return *pCapture;
}

RTCurveData& GetCurve() { return *GetCapture().m_curves.m_lstCurves[0].front(); }

std::vector<std::uint8_t> MakeFileBytes() {
    const std::size_t nCurves = GetCurveSetLength(GetCapture().m_curves.m_lstCurves);
    return std::vector<std::uint8_t>(nCurves + HEAD_BYTES, 7);
}

void CountBytes(benchmark::State& state, std::uint64_t nBytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(nBytes));
}

/// Each pass creates the file anew, over the old one.
template <class Work>
void MeasureWriting(benchmark::State& state, Work work) {
    const BenchFolder folder;
    const std::string strPath = folder.Path("file");
    for (auto _ : state) {
        CFile file(FromUtf8(strPath), CFile::modeWrite | CFile::modeCreate);
        work(file);
        file.Close();
    }
    CountBytes(state, std::filesystem::file_size(strPath));
}

void WriteSameBytes(benchmark::State& state) {
    const auto bytes = MakeFileBytes();
    MeasureWriting(state, [&](CFile& file) { file.Write(bytes.data(), bytes.size()); });
}
BENCHMARK(WriteSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteCaptureFile(benchmark::State& state) {
    MeasureWriting(state, [](CFile& file) { WriteCapture(file, GetCapture()); });
}
BENCHMARK(WriteCaptureFile)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteSameBytesToDisk(benchmark::State& state) {
    const auto bytes = MakeFileBytes();
    MeasureWriting(state, [&](CFile& file) {
        file.Write(bytes.data(), bytes.size());
        file.Flush();
    });
}
BENCHMARK(WriteSameBytesToDisk)->Unit(benchmark::kMillisecond)->UseRealTime();

void SaveCaptureFileToDisk(benchmark::State& state) {
    const BenchFolder folder;
    const std::string strPath = folder.Path("a.rt3");
    for (auto _ : state) SaveCapture(FromUtf8(strPath), GetCapture());
    CountBytes(state, std::filesystem::file_size(strPath));
}
BENCHMARK(SaveCaptureFileToDisk)->Unit(benchmark::kMillisecond)->UseRealTime();

template <class Work>
void MeasureReading(benchmark::State& state, Work work) {
    const BenchFolder folder;
    const std::string strPath = folder.Path("a.rt3");
    SaveCapture(FromUtf8(strPath), GetCapture());
    for (auto _ : state) {
        CFile file(FromUtf8(strPath), CFile::modeRead);
        work(file);
    }
    CountBytes(state, std::filesystem::file_size(strPath));
}

void ReadSameBytes(benchmark::State& state) {
    MeasureReading(state, [](CFile& file) {
        const std::size_t nBytes = file.GetLength();
        const auto pBytes = std::make_unique_for_overwrite<std::uint8_t[]>(nBytes);
        benchmark::DoNotOptimize(file.Read(pBytes.get(), nBytes));
    });
}
BENCHMARK(ReadSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void LoadCaptureFile(benchmark::State& state) {
    MeasureReading(state, [](CFile& file) {
        RTCaptureFile capture;
        ReadCapture(file, capture);
        benchmark::DoNotOptimize(capture.m_curves.FirstCurve(2));
    });
}
BENCHMARK(LoadCaptureFile)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteCsvSameBytes(benchmark::State& state) {
    const BenchFolder folder;
    ExportCurveCsv(FromUtf8(folder.Path("a.csv")), GetCurve());
    const std::vector<std::uint8_t> bytes(std::filesystem::file_size(folder.Path("a.csv")), 'x');
    MeasureWriting(state, [&](CFile& file) { file.Write(bytes.data(), bytes.size()); });
}
BENCHMARK(WriteCsvSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteCsv(benchmark::State& state) {
    const BenchFolder folder;
    const std::string strPath = folder.Path("a.csv");
    for (auto _ : state) ExportCurveCsv(FromUtf8(strPath), GetCurve());
    CountBytes(state, std::filesystem::file_size(strPath));
}
BENCHMARK(WriteCsv)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteCsvByPrintf(benchmark::State& state) {
    const BenchFolder folder;
    const std::string strPath = folder.Path("a.csv");
    const std::int16_t* pValues = GetCurve().GetValues();
    for (auto _ : state) {
        std::FILE* pFile = std::fopen(strPath.c_str(), "w");
        if (!pFile) std::abort();
        std::fprintf(pFile, "Force, Distance");
        for (std::uint32_t n = 0; n < CAPTURE_VALUES; n += 2)
            std::fprintf(pFile, "\r\n%.3f,%.3f", pValues[n] / 1000.0, pValues[n + 1] / 1000.0);
        std::fclose(pFile);
    }
    CountBytes(state, std::filesystem::file_size(strPath));
}
BENCHMARK(WriteCsvByPrintf)->Unit(benchmark::kMillisecond)->UseRealTime();

void ScanExtremes(benchmark::State& state) {
    const std::int16_t* pValues = GetCurve().GetValues();
    for (auto _ : state) {
        RTMinMax even;
        RTMinMax odd;
        for (std::uint32_t n = 0; n < CAPTURE_VALUES; n += 2) {
            even.Include(pValues[n]);
            odd.Include(pValues[n + 1]);
        }
        benchmark::DoNotOptimize(even);
        benchmark::DoNotOptimize(odd);
    }
}
BENCHMARK(ScanExtremes)->Unit(benchmark::kMicrosecond);

void RecomputeExtremes(benchmark::State& state) {
    for (auto _ : state) {
        GetCurve().RecomputeExtremes();
        benchmark::ClobberMemory();
    }
    const auto dSummaryBytes = static_cast<double>(RTValueSummary::GetMemorySize(CAPTURE_VALUES));
    state.counters["summary_bytes_per_curve"] = dSummaryBytes;
    state.counters["summary_percent_of_values"] =
        100 * dSummaryBytes / (CAPTURE_VALUES * sizeof(std::int16_t));
}
BENCHMARK(RecomputeExtremes)->Unit(benchmark::kMicrosecond);

/// What the packet reader pays for the summary: a whole curve that arrives in blocks.
void SummariseArrivingValues(benchmark::State& state) {
    RTValueSummary summary(CAPTURE_VALUES);
    for (auto _ : state) {
        summary = RTValueSummary(CAPTURE_VALUES);
        for (std::uint32_t n = BLOCK_VALUES; n <= CAPTURE_VALUES; n += BLOCK_VALUES)
            summary.Extend(GetCurve().GetValues(), n);
    }
    state.SetItemsProcessed(state.iterations() * CAPTURE_VALUES);
}
BENCHMARK(SummariseArrivingValues)->Unit(benchmark::kMicrosecond);

}  // namespace
