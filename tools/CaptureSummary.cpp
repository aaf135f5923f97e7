#include "tools/CaptureSummary.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>

#include "platform/commandline/CommandLine.h"
#include "platform/system/Text.h"

namespace {

using Json = nlohmann::ordered_json;

/// Seconds from the first value to the end of the last; unknown without a rate.
std::optional<double> FindDuration(const RTCurveOutline& curve, std::uint16_t nValueRate) {
    if (nValueRate == 0) return std::nullopt;
    return static_cast<double>(curve.m_nCount) / nValueRate;
}

std::string JoinSpans(const RTPlotRecord& plots) {
    std::string strSpans;
    for (std::size_t k = 0; k < plots.m_nPlots; ++k) {
        if (k > 0) strSpans += ' ';
        strSpans += std::to_string(plots.m_anSpans[k]);
    }
    return strSpans.empty() ? "none" : strSpans;
}

/// The smallest and largest value at even or odd indices; none without such values.
std::optional<RTMinMax> FindRange(const RTCurveOutline& curve, std::uint32_t nFirst) {
    if (nFirst >= curve.m_nCount) return std::nullopt;
    const RTExtremes& found = curve.m_foundExtremes;
    return nFirst == 0 ? RTMinMax{found.m_nMinEven, found.m_nMaxEven}
                       : RTMinMax{found.m_nMinOdd, found.m_nMaxOdd};
}

std::string DescribeRange(const std::optional<RTMinMax>& range) {
    if (!range) return "none";
    return std::to_string(range->m_nMin) + " to " + std::to_string(range->m_nMax);
}

std::string DescribeMarkers(const RTCurveOutline& curve) {
    std::string strMarkers;
    for (std::size_t nSlot = 0; nSlot < curve.m_anMarkers.size(); ++nSlot) {
        if (curve.m_anMarkers[nSlot] == -1) continue;
        if (!strMarkers.empty()) strMarkers += ", ";
        strMarkers += std::to_string(nSlot) + " at " + std::to_string(curve.m_anMarkers[nSlot]);
    }
    return strMarkers.empty() ? "none" : strMarkers;
}

std::string DescribeCurve(const RTCurveOutline& curve, std::size_t nNumber,
                          std::uint16_t nValueRate) {
    char duration[32] = "unknown duration";
    if (const auto dSeconds = FindDuration(curve, nValueRate))
        std::snprintf(duration, sizeof duration, "%.6g s", *dSeconds);
    return "    curve " + std::to_string(nNumber) + ": " + std::to_string(curve.m_nCount) + " of " +
           std::to_string(curve.m_nCapacity) + " values, " + duration +
           "\n      values at even indices: " + DescribeRange(FindRange(curve, 0)) +
           "\n      values at odd indices: " + DescribeRange(FindRange(curve, 1)) +
           "\n      pulse records: " + std::to_string(curve.m_nPulses) +
           "\n      markers: " + DescribeMarkers(curve) + "\n";
}

template <class Value>
Json ToJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

/// Whole seconds stand without a decimal point.
Json SecondsToJson(const std::optional<double>& dSeconds) {
    if (dSeconds && std::trunc(*dSeconds) == *dSeconds) return static_cast<std::int64_t>(*dSeconds);
    return ToJson(dSeconds);
}

/// Bytes of a file name that are no UTF-8 become U+FFFD.
Json ToJson(std::wstring strText) {
    const auto isStray = [](wchar_t c) { return c >= 0xD800 && c <= 0xDFFF; };
    std::replace_if(strText.begin(), strText.end(), isStray, L'\uFFFD');
    return ToUtf8(strText);
}

Json RangeToJson(const std::optional<RTMinMax>& range) {
    if (!range) return nullptr;
    return {{"min", range->m_nMin}, {"max", range->m_nMax}};
}

Json ToJson(const RTCurveOutline& curve, std::uint16_t nValueRate) {
    const RTExtremes extremes = curve.m_extremes.value_or(curve.m_foundExtremes);
    return {{"values", curve.m_nCount},
            {"capacity", curve.m_nCapacity},
            {"seconds", SecondsToJson(FindDuration(curve, nValueRate))},
            {"even", RangeToJson(FindRange(curve, 0))},
            {"odd", RangeToJson(FindRange(curve, 1))},
            {"stored_extremes",
             {{"max_even", extremes.m_nMaxEven},
              {"min_even", extremes.m_nMinEven},
              {"max_odd", extremes.m_nMaxOdd},
              {"min_odd", extremes.m_nMinOdd}}},
            {"pulses", curve.m_nPulses},
            {"markers", curve.m_anMarkers},
            {"reserved", curve.m_wReserved}};
}

}  // namespace

std::string DescribeCapture(const std::wstring& strPath, const RTCaptureOutline& capture) {
    const auto describe = [](const std::optional<std::uint8_t>& value) {
        return value ? std::to_string(*value) : std::string("not stored");
    };
    const RTScreenRecord& screen = capture.m_screen;
    std::string strText = MakePrintable(ToUtf8(strPath)) + "\n  version: screen " +
                          std::to_string(screen.m_nVersion) + ", curves " +
                          std::to_string(capture.m_byVersion) +
                          "\n  mode: " + describe(screen.m_nMode) +
                          "\n  second input: " + describe(screen.m_nPositionInput) +
                          "\n  values per second: " + std::to_string(screen.m_nValueRate) +
                          "\n  second rate: " + std::to_string(screen.m_nAuxRate) +
                          "\n  spans: " + JoinSpans(capture.m_plots) + "\n";
    for (std::size_t k = 0; k < CRTCurves::CHANNEL_COUNT; ++k) {
        const auto& list = capture.m_lstCurves[k];
        strText += "  channel " + std::to_string(k + 1) + ": " +
                   (list.empty() ? "no" : std::to_string(list.size())) +
                   (list.size() == 1 ? " curve\n" : " curves\n");
        for (std::size_t n = 0; n < list.size(); ++n)
            strText += DescribeCurve(list[n], n + 1, screen.m_nValueRate);
    }
    if (capture.m_nBytesBehind > 0)
        strText += "  bytes behind the end: " + std::to_string(capture.m_nBytesBehind) + "\n";
    return strText;
}

std::string DescribeCaptureAsJson(const std::wstring& strPath, const RTCaptureOutline& capture,
                                  const std::wstring& strError) {
    Json object{{"file", ToJson(strPath)},
                {"complete", strError.empty()},
                {"error", strError.empty() ? Json() : ToJson(strError)}};
    if (!strError.empty() && !capture.HasCurves()) return object.dump();

    const RTScreenRecord& screen = capture.m_screen;
    object["screen_version"] = screen.m_nVersion;
    object["curves_version"] = capture.m_byVersion;
    object["mode"] = ToJson(screen.m_nMode);
    object["second_input"] = ToJson(screen.m_nPositionInput);
    object["value_rate"] = screen.m_nValueRate;
    object["second_rate"] = screen.m_nAuxRate;
    const auto spans = std::span(capture.m_plots.m_anSpans).first(capture.m_plots.m_nPlots);
    object["spans"] = std::vector(spans.begin(), spans.end());
    for (const auto& list : capture.m_lstCurves) {
        Json curves = Json::array();
        for (const RTCurveOutline& curve : list)
            curves.push_back(ToJson(curve, screen.m_nValueRate));
        object["channels"].push_back(std::move(curves));
    }
    object["bytes_behind"] = capture.m_nBytesBehind;
    return object.dump();
}
