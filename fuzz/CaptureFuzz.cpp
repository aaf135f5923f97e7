// Feeds arbitrary bytes to the reader of .rt3 files.
//
// What was read, wholly or up to an error, must be written and read again to the same bytes.
#include <cstdlib>

#include "curves/CaptureFile.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemFile.h"

namespace {

void Check(bool bHolds) {
    if (!bHolds) std::abort();
}

std::vector<std::uint8_t> Write(RTCaptureFile& capture) {
    CMemFile file(L"written");
    WriteCapture(file, capture);
    return file.GetContents();
}

void CheckCurve(const RTCurveData& curve) {
    const std::uint32_t nCount = curve.GetCount();
    RTMinMax range;
    for (std::uint32_t n = 0; n < nCount; n += 2) range.Include(curve.GetValues()[n]);
    Check(curve.FindMinMax(0, nCount) == range);
    Check(curve.GetPulses().FindPosition(curve.GetPulses().GetCount(), nCount) <=
          curve.GetPulses().GetCount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    RTCaptureFile capture;
    try {
        CMemFile file(L"fuzzed", std::vector<std::uint8_t>(pData, pData + nSize));
        ReadCapture(file, capture);
    } catch (const CException& error) {
        Check(!error.GetErrorMessage().empty());
    }
    for (const RTCurveList& list : capture.m_curves.m_lstCurves)
        for (const auto& pCurve : list) CheckCurve(*pCurve);

    const std::vector<std::uint8_t> bytes = Write(capture);
    RTCaptureFile again;
    CMemFile file(L"written", bytes);
    ReadCapture(file, again);
    Check(Write(again) == bytes);
    return 0;
}
