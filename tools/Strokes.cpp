#include "tools/Strokes.h"

#include "platform/system/Paths.h"
#include "tools/Captures.h"

namespace {

template <class Read>
auto CallWithUsageError(Read read) {
    try {
        return read();
    } catch (const CLimitsError& error) {
        throw CUsageError(error.what());
    } catch (const CException& error) {
        throw CUsageError(DescribeError(error));
    }
}

}  // namespace

void StrokeRequest::AddOptions(CCommandLine& line) {
    line.AddNumber("--channel", "N", m_nChannel, 1, CRTCurves::CHANNEL_COUNT, "channel (1)");
    line.AddOption("--curve", "N", "the channel's curve, counted from the oldest, or \"all\" (all)",
                   [this](const std::string& strText) {
                       m_curve.reset();
                       if (strText != "all")
                           m_curve = static_cast<std::size_t>(
                               ReadNumber(strText, true, 1, RTCurveData::MAX_VALUES));
                   });
    line.AddFlag("--pairs", m_bPairs,
                 "take every curve as force and position in turn, whatever the file says");
}

std::vector<StrokeSource> ReadStrokes(const std::wstring& strPath, const StrokeRequest& request) {
    RTCaptureFile capture;
    ReadInput(strPath, capture);
    const RTCurveList& list = capture.m_curves.m_lstCurves[request.m_nChannel - 1];
    StrokeSource source{
        {strPath, request.m_nChannel, request.m_curve}, nullptr, capture.m_screen.m_nValueRate};
    source.m_bVoltage = GetSecondInput(capture.m_screen) == SecondInput::Voltage;
    const std::size_t nFirst = request.m_curve.value_or(1);
    const std::size_t nLast = request.m_curve.value_or(list.size());
    if (nFirst > nLast || nLast > list.size()) {
        source.m_pObstacle = request.m_curve ? "no such curve" : "no curves";
        return {source};
    }
    if (!request.m_bPairs && !HoldsPairs(capture.m_screen)) source.m_pObstacle = "no pairs";
    std::vector<StrokeSource> sources;
    for (std::size_t n = nFirst; n <= nLast; ++n) {
        source.m_name.m_curve = n;
        source.m_spCurve = list[n - 1];
        sources.push_back(source);
    }
    return sources;
}

const char* StrokeSource::FindObstacle() const {
    return m_pObstacle ? m_pObstacle : CStroke(*m_spCurve, m_nRate).FindObstacle();
}

std::string DescribeStroke(const StrokeName& name) {
    const std::string strFile = ToUtf8(name.m_file.value_or(L""));
    return name.m_curve ? strFile + " curve " + std::to_string(*name.m_curve) : strFile;
}

CLimitsFile ReadLimits(const std::wstring& strPath) {
    if (strPath.empty()) return {};
    return CallWithUsageError([&] { return ReadLimitsFile(strPath); });
}

Limits ReadLimitsToCheck(const std::wstring& strPath) {
    return CallWithUsageError([&] { return ReadLimitsToJudgeBy(strPath); });
}

void KeepInputs(const std::wstring& strOutput, const std::vector<std::wstring>& arrInputs) {
    const auto output = FindIdentity(strOutput);
    for (const std::wstring& strInput : arrInputs)
        if (output && FindIdentity(FindFileOfAnyCase(strInput)) == output)
            throw CUsageError(ToUtf8(strInput) + " would be overwritten");
}

void ForEachStroke(
    const std::vector<std::wstring>& arrFiles, const StrokeRequest& request,
    const std::function<void(const StrokeSource&)>& work,
    const std::function<void(const std::wstring& strPath, const std::string& strError)>& fail) {
    for (const std::wstring& strPath : arrFiles) {
        std::vector<StrokeSource> sources;
        try {
            sources = ReadStrokes(strPath, request);
        } catch (const CException& error) {
            const std::string strError = DescribeError(error);
            Report(strError);
            fail(strPath, strError);
        }
        for (const StrokeSource& source : sources) work(source);
    }
}
