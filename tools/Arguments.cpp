#include "tools/Arguments.h"

#include <algorithm>
#include <charconv>

#include "platform/system/Text.h"

namespace {

const OptionRule& FindRule(const std::wstring& strName, const std::vector<OptionRule>& rules) {
    const auto rule = std::find_if(rules.begin(), rules.end(), [&](const OptionRule& candidate) {
        return strName == candidate.m_pName ||
               (candidate.m_pShort && strName == candidate.m_pShort);
    });
    if (rule == rules.end()) throw CUsageError("unknown option " + ToUtf8(strName));
    return *rule;
}

}  // namespace

std::vector<std::wstring> ReadArguments(const std::vector<std::wstring>& arrArguments,
                                        const std::vector<OptionRule>& rules) {
    std::vector<std::wstring> arrFiles;
    for (auto argument = arrArguments.begin(); argument != arrArguments.end(); ++argument) {
        if (*argument == L"--") {
            arrFiles.insert(arrFiles.end(), argument + 1, arrArguments.end());
            break;
        }
        if (argument->size() < 2 || argument->front() != L'-') {
            arrFiles.push_back(*argument);
            continue;
        }
        const bool bLong = argument->starts_with(L"--");
        const std::size_t nEquals = bLong ? argument->find(L'=') : std::wstring::npos;
        const std::wstring strName = argument->substr(0, nEquals);
        const OptionRule& rule = FindRule(strName, rules);
        std::wstring strValue;
        if (nEquals != std::wstring::npos) {
            if (!rule.m_bTakesValue) throw CUsageError(ToUtf8(strName) + " takes no value");
            strValue = argument->substr(nEquals + 1);
        } else if (rule.m_bTakesValue) {
            if (++argument == arrArguments.end())
                throw CUsageError(ToUtf8(strName) + " needs a value");
            strValue = *argument;
        }
        rule.m_apply(strValue);
    }
    return arrFiles;
}

unsigned ReadNumber(const std::wstring& strOption, const std::wstring& strText, unsigned nMin,
                    unsigned nMax) {
    const std::string strBytes = ToUtf8(strText);
    const char* pEnd = strBytes.data() + strBytes.size();
    unsigned nValue = 0;
    const auto result = std::from_chars(strBytes.data(), pEnd, nValue);
    if (result.ec != std::errc() || result.ptr != pEnd || nValue < nMin || nValue > nMax)
        throw CUsageError(ToUtf8(strOption) + " takes a number from " + std::to_string(nMin) +
                          " to " + std::to_string(nMax) + ", not \"" + strBytes + "\"");
    return nValue;
}
