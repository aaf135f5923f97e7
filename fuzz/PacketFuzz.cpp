// Feeds arbitrary sample packets to the decoder.
//
// The first four bytes choose mode, kind of second input, channels and capacity; the rest is two
// packets' payload, cut at a place that the fifth byte chooses.
#include <cstdlib>
#include <span>

#include "acquisition/SampleDecoder.h"

namespace {

void Check(bool bHolds) {
    if (!bHolds) std::abort();
}

void CheckCurve(const RTCurveData& curve) {
    const std::uint32_t nCount = curve.GetCount();
    Check(nCount <= curve.GetCapacity());
    if (nCount > 0) {
        const RTMinMax range = curve.FindMinMax(0, nCount);
        Check(range.m_nMin <= range.m_nMax);
    }
    std::int32_t nPosition = 0;
    for (std::size_t i = 0; i < curve.GetPulses().GetCount(); ++i) {
        Check(curve.GetPulses().At(i).m_nPosition >= nPosition);
        nPosition = curve.GetPulses().At(i).m_nPosition;
    }
    Check(static_cast<std::uint32_t>(nPosition) <= nCount);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    constexpr std::size_t CHOICES = 5;
    if (nSize < CHOICES) return 0;
    const ValueLayout layout = FindValueLayout(pData[0], pData[1], pData[2]);
    RTCurrentCurves aspCurves;
    // Now and then a channel has no curve.
    for (std::size_t k = 0; k < aspCurves.size(); ++k)
        if ((pData[2] >> (4 + k) & 1) == 0)
            aspCurves[k] = std::make_shared<RTCurveData>(std::uint32_t{pData[3]} * 16);

    const std::span payload(pData + CHOICES, nSize - CHOICES);
    const std::size_t nCut = payload.size() * pData[4] / 256;
    DecodeSamples(payload.first(nCut), layout, aspCurves);
    DecodeSamples(payload.subspan(nCut), layout, aspCurves);
    for (const auto& spCurve : aspCurves)
        if (spCurve) CheckCurve(*spCurve);
    return 0;
}
