#include "host/Judgement.h"

#include <filesystem>

#include "curves/InstrumentMode.h"
#include "evaluation/LimitsFile.h"
#include "platform/commandline/CommandLine.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Paths.h"

namespace {

Limits ReadLimits(const std::wstring& strPath) {
    try {
        return ReadLimitsToJudgeBy(strPath);
    } catch (const CLimitsError& error) {
        throw CUsageError(error.what());
    } catch (const CException& error) {
        throw CUsageError(DescribeError(error));
    }
}

std::unique_ptr<CVerdictLog> OpenLog(const std::wstring& strPath) {
    if (strPath.empty()) return nullptr;
    try {
        return std::make_unique<CVerdictLog>(strPath);
    } catch (const CException& error) {
        throw CUsageError("--verdict-log: " + DescribeError(error));
    }
}

}  // namespace

void CheckJudgedMode(const Options& options) {
    const std::string strMode = "mode " + std::to_string(options.m_nMode);
    if (!HasValuePairs(options.m_nMode, options.m_secondInput))
        throw CUsageError("--limits: " + strMode +
                          " has no pairs of force and position; 1, 10 and 20 have, and 2 with "
                          "--second-input analogue");
    if (options.m_nLimitsChannel > CountChannels(options.m_nMode))
        throw CUsageError("--limits-channel: " + strMode + " has no channel " +
                          std::to_string(options.m_nLimitsChannel));
}

std::unique_ptr<Judgement> PrepareJudgement(const Options& options) {
    if (options.m_strLimits.empty()) return nullptr;
    auto pJudgement = std::make_unique<Judgement>();
    pJudgement->m_limits = ReadLimits(options.m_strLimits);
    if (!options.m_link) CheckJudgedMode(options);
    const std::string& strTitle = pJudgement->m_limits.m_strTitle;
    pJudgement->m_strTitle =
        strTitle.empty() ? GetNameOfPath(options.m_strLimits) : FromUtf8(strTitle);
    pJudgement->m_nChannel = options.m_nLimitsChannel - 1;
    pJudgement->m_bPassOutput = options.m_bPassOutput;
    pJudgement->m_pLog = OpenLog(options.m_strVerdictLog);
    return pJudgement;
}
