// Both write 2.4 million values in a row, the length of a capture of 60 s, into new memory of the
// same kind before they begin anew: the copy into one array, the decoder into the current curves,
// with counts, summaries and records of the digital lines.
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "acquisition/SampleDecoder.h"
#include "platform/system/LongArray.h"

namespace {

constexpr std::size_t CAPTURE_VALUES = 2400000;
constexpr std::size_t HEADER_BYTES = 4;  // of the packet and its one block
constexpr int ROUNDS = 301;

std::vector<std::uint8_t> MakePayload(std::size_t nValues) {
    std::vector<std::uint8_t> payload{0, 5, static_cast<std::uint8_t>(nValues / 256),
                                      static_cast<std::uint8_t>(nValues % 256)};
    for (std::size_t i = 0; i < 2 * nValues; ++i)
        payload.push_back(static_cast<std::uint8_t>(i * i / 7));
    return payload;
}

std::function<void()> MakeCopier(const std::vector<std::uint8_t>& payload) {
    auto spTarget = std::make_shared<LongArray<std::int16_t>>();
    return [&payload, spTarget, nCount = CAPTURE_VALUES]() mutable {
        const std::size_t nBytes = payload.size() - HEADER_BYTES;
        if (nCount + nBytes / 2 > CAPTURE_VALUES) {
            spTarget->reset();
            *spTarget = MakeLongArray<std::int16_t>(CAPTURE_VALUES);
            nCount = 0;
        }
        std::memcpy(spTarget->get() + nCount, payload.data() + HEADER_BYTES, nBytes);
        nCount += nBytes / 2;
        KeepResult(*spTarget);
    };
}

std::function<void()> MakeDecoder(const std::vector<std::uint8_t>& payload, ValueLayout layout) {
    return [&payload, layout, aspCurves = RTCurrentCurves{}]() mutable {
        const std::size_t nShare = (payload.size() - HEADER_BYTES) / 2 / layout.m_nChannels;
        if (!aspCurves[0] || aspCurves[0]->GetFreeValues().size() < nShare) {
            for (std::size_t k = 0; k < layout.m_nChannels; ++k) {
                aspCurves[k].reset();
                aspCurves[k] = std::make_shared<RTCurveData>(
                    static_cast<std::uint32_t>(CAPTURE_VALUES / layout.m_nChannels));
            }
        }
        DecodeSamples(payload, layout, aspCurves);
        KeepResult(aspCurves);
    };
}

}  // namespace

void MeasureDecode(CTable& table) {
    struct Layout {
        const char* m_pName;
        ValueLayout m_layout;
    };
    constexpr Layout LAYOUTS[] = {
        {"1 channel", {1, 1}},         {"1 channel, pairs", {1, 2}}, {"2 channels", {2, 1}},
        {"2 channels, pairs", {2, 2}}, {"3 channels", {3, 1}},
    };
    constexpr struct {
        std::size_t m_nValues;
        const char* m_pName;
        bool m_bGoal;  ///< a few values cost what any packet costs
    } SIZES[] = {{200, "200", false}, {2000, "2,000", true}, {30000, "30,000", true}};

    for (const auto& size : SIZES) {
        const std::vector<std::uint8_t> payload = MakePayload(size.m_nValues);
        std::vector<Measure> measures{TimeCalls(MakeCopier(payload))};
        for (const Layout& layout : LAYOUTS)
            measures.push_back(TimeCalls(MakeDecoder(payload, layout.m_layout)));
        const std::vector<Figures> figures = MeasureInTurn(measures, ROUNDS);
        for (std::size_t i = 0; i < std::size(LAYOUTS); ++i) {
            Goal goal{Goal::Within};
            if (size.m_bGoal) goal.m_times = LAYOUTS[i].m_layout.m_nChannels == 1 ? 1.5 : 2.0;
            table.AddComparison(std::string(size.m_pName) + " values, " + LAYOUTS[i].m_pName,
                                figures[i + 1], "copy of the same bytes", figures[0], goal);
        }
    }
}
