// What it costs to split sample packets among the channels, beside a plain copy of the same bytes.
//
// Both write 2.4 million values in a row, the length of a capture of 60 s, before they begin anew:
// the copy into one array, the decoder into the current curves, with counts, summaries and pulses.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "acquisition/SampleDecoder.h"

namespace {

constexpr std::size_t CAPTURE_VALUES = 2400000;
constexpr std::size_t HEADER_BYTES = 4;  // of the packet and its one block

std::vector<std::uint8_t> MakePayload(std::size_t nValues) {
    std::vector<std::uint8_t> payload{0, 5, static_cast<std::uint8_t>(nValues / 256),
                                      static_cast<std::uint8_t>(nValues % 256)};
    for (std::size_t i = 0; i < 2 * nValues; ++i)
        payload.push_back(static_cast<std::uint8_t>(i * i / 7));
    return payload;
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0) * 2);
}

void CopyPacket(benchmark::State& state) {
    const auto nValues = static_cast<std::size_t>(state.range(0));
    const auto payload = MakePayload(nValues);
    std::vector<std::int16_t> target(CAPTURE_VALUES);
    std::size_t nCount = 0;
    for (auto _ : state) {
        if (nCount + nValues > target.size()) nCount = 0;
        std::memcpy(target.data() + nCount, payload.data() + HEADER_BYTES, 2 * nValues);
        nCount += nValues;
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}
BENCHMARK(CopyPacket)->Arg(200)->Arg(2000)->Arg(30000);

/// The count of values, then channels and values per channel of a sample set.
void DecodePacket(benchmark::State& state) {
    const auto nValues = static_cast<std::size_t>(state.range(0));
    const ValueLayout layout{static_cast<unsigned>(state.range(1)),
                             static_cast<unsigned>(state.range(2))};
    const auto payload = MakePayload(nValues);
    RTCurrentCurves aspCurves;
    for (auto _ : state) {
        if (!aspCurves[0] || aspCurves[0]->GetFreeValues().size() < nValues / layout.m_nChannels) {
            for (std::size_t k = 0; k < layout.m_nChannels; ++k) {
                aspCurves[k].reset();
                aspCurves[k] = std::make_shared<RTCurveData>(
                    static_cast<std::uint32_t>(CAPTURE_VALUES / layout.m_nChannels));
            }
        }
        DecodeSamples(payload, layout, aspCurves);
        benchmark::ClobberMemory();
    }
    CountBytes(state);
}
BENCHMARK(DecodePacket)
    ->ArgNames({"values", "channels", "per_channel"})
    ->ArgsProduct({{200, 2000, 30000}, {1}, {1, 2}})
    ->ArgsProduct({{200, 2000, 30000}, {2}, {1, 2}})
    ->ArgsProduct({{200, 2000, 30000}, {3}, {1}});

}  // namespace
