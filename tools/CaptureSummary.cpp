#include "tools/CaptureSummary.h"

#include <cstdio>
#include <optional>

#include "platform/system/Text.h"
#include "tools/Captures.h"
#include "tools/JsonText.h"

namespace {

/// Seconds from the first value to the end of the last; unknown without a rate.
std::optional<double> FindDuration(const RTCurveData& curve, std::uint16_t nValueRate) {
    if (nValueRate == 0) return std::nullopt;
    return static_cast<double>(curve.GetCount()) / nValueRate;
}

std::string JoinSpans(const RTPlotRecord& plots) {
    std::string strSpans;
    for (std::size_t k = 0; k < plots.m_nPlots; ++k) {
        if (k > 0) strSpans += ' ';
        strSpans += std::to_string(plots.m_anSpans[k]);
    }
    return strSpans.empty() ? "none" : strSpans;
}

std::string DescribeRange(const RTCurveData& curve, std::uint32_t nFirst) {
    if (nFirst >= curve.GetCount()) return "none";
    const RTMinMax range = curve.FindMinMax(nFirst, curve.GetCount());
    return std::to_string(range.m_nMin) + " to " + std::to_string(range.m_nMax);
}

std::string DescribeMarkers(const RTCurveData& curve) {
    std::string strMarkers;
    for (std::size_t nSlot = 0; nSlot < curve.m_anMarkers.size(); ++nSlot) {
        if (curve.m_anMarkers[nSlot] == -1) continue;
        if (!strMarkers.empty()) strMarkers += ", ";
        strMarkers += std::to_string(nSlot) + " at " + std::to_string(curve.m_anMarkers[nSlot]);
    }
    return strMarkers.empty() ? "none" : strMarkers;
}

std::string DescribeCurve(const RTCurveData& curve, std::size_t nNumber, std::uint16_t nValueRate) {
    char duration[32] = "unknown duration";
    if (const auto dSeconds = FindDuration(curve, nValueRate))
        std::snprintf(duration, sizeof duration, "%.6g s", *dSeconds);
    return "    curve " + std::to_string(nNumber) + ": " + std::to_string(curve.GetCount()) +
           " of " + std::to_string(curve.GetCapacity()) + " values, " + duration +
           "\n      values at even indices: " + DescribeRange(curve, 0) +
           "\n      values at odd indices: " + DescribeRange(curve, 1) +
           "\n      pulse records: " + std::to_string(curve.GetPulses().GetCount()) +
           "\n      markers: " + DescribeMarkers(curve) + "\n";
}

std::string ToJson(const RTExtremes& extremes) {
    return MakeJsonObject({{"max_even", ::ToJson(extremes.m_nMaxEven)},
                           {"min_even", ::ToJson(extremes.m_nMinEven)},
                           {"max_odd", ::ToJson(extremes.m_nMaxOdd)},
                           {"min_odd", ::ToJson(extremes.m_nMinOdd)}});
}

std::string RangeToJson(const RTCurveData& curve, std::uint32_t nFirst) {
    if (nFirst >= curve.GetCount()) return "null";
    const RTMinMax range = curve.FindMinMax(nFirst, curve.GetCount());
    return MakeJsonObject({{"min", ::ToJson(range.m_nMin)}, {"max", ::ToJson(range.m_nMax)}});
}

std::string ToJson(const RTCurveData& curve, std::uint16_t nValueRate) {
    std::vector<std::string> markers;
    for (const std::int32_t nMarker : curve.m_anMarkers) markers.push_back(::ToJson(nMarker));
    return MakeJsonObject({{"values", ::ToJson(curve.GetCount())},
                           {"capacity", ::ToJson(curve.GetCapacity())},
                           {"seconds", ::ToJson(FindDuration(curve, nValueRate))},
                           {"even", RangeToJson(curve, 0)},
                           {"odd", RangeToJson(curve, 1)},
                           {"stored_extremes", ToJson(curve.GetExtremes())},
                           {"pulses", ::ToJson(curve.GetPulses().GetCount())},
                           {"markers", MakeJsonArray(markers)},
                           {"reserved", ::ToJson(curve.m_wReserved)}});
}

}  // namespace

std::string DescribeCapture(const std::wstring& strPath, const RTCaptureFile& capture) {
    const auto describe = [](const std::optional<std::uint8_t>& value) {
        return value ? std::to_string(*value) : std::string("not stored");
    };
    const RTScreenRecord& screen = capture.m_screen;
    std::string strText =
        ToUtf8(strPath) + "\n  version: screen " + std::to_string(screen.m_nVersion) + ", curves " +
        std::to_string(capture.m_curves.m_byVersion) + "\n  mode: " + describe(screen.m_nMode) +
        "\n  second input: " + describe(screen.m_nPositionInput) +
        "\n  values per second: " + std::to_string(screen.m_nValueRate) +
        "\n  second rate: " + std::to_string(screen.m_nAuxRate) +
        "\n  spans: " + JoinSpans(capture.m_plots) + "\n";
    for (std::size_t k = 0; k < CRTCurves::CHANNEL_COUNT; ++k) {
        const RTCurveList& list = capture.m_curves.m_lstCurves[k];
        strText += "  channel " + std::to_string(k + 1) + ": " +
                   (list.empty() ? "no" : std::to_string(list.size())) +
                   (list.size() == 1 ? " curve\n" : " curves\n");
        for (std::size_t n = 0; n < list.size(); ++n)
            strText += DescribeCurve(*list[n], n + 1, screen.m_nValueRate);
    }
    return strText;
}

std::string DescribeCaptureAsJson(const std::wstring& strPath, const RTCaptureFile& capture,
                                  const std::wstring& strError) {
    std::vector<std::pair<const char*, std::string>> members{
        {"file", QuoteJson(strPath)},
        {"complete", ::ToJson(strError.empty())},
        {"error", strError.empty() ? "null" : QuoteJson(strError)}};
    if (!strError.empty() && !HasCurves(capture)) return MakeJsonObject(members);

    const RTScreenRecord& screen = capture.m_screen;
    std::vector<std::string> spans;
    for (std::size_t k = 0; k < capture.m_plots.m_nPlots; ++k)
        spans.push_back(::ToJson(capture.m_plots.m_anSpans[k]));
    std::vector<std::string> channels;
    for (const RTCurveList& list : capture.m_curves.m_lstCurves) {
        std::vector<std::string> curves;
        for (const auto& pCurve : list) curves.push_back(ToJson(*pCurve, screen.m_nValueRate));
        channels.push_back(MakeJsonArray(curves));
    }
    members.insert(members.end(), {{"screen_version", ::ToJson(screen.m_nVersion)},
                                   {"curves_version", ::ToJson(capture.m_curves.m_byVersion)},
                                   {"mode", ::ToJson(screen.m_nMode)},
                                   {"second_input", ::ToJson(screen.m_nPositionInput)},
                                   {"value_rate", ::ToJson(screen.m_nValueRate)},
                                   {"second_rate", ::ToJson(screen.m_nAuxRate)},
                                   {"spans", MakeJsonArray(spans)},
                                   {"channels", MakeJsonArray(channels)}});
    return MakeJsonObject(members);
}
