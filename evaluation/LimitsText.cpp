#include "evaluation/LimitsText.h"

#include <set>
#include <vector>

#include "evaluation/LimitsFile.h"

namespace {

constexpr std::size_t MAX_DEPTH = 8;
constexpr std::size_t MAX_KEYS = 64;

/// Looks at each part of a text when it has been read.
class CStructureWatch {
  public:
    explicit CStructureWatch(const std::string& strName) : m_strName(strName) {}

    void See(Json::parse_event_t event, const Json& value) {
        switch (event) {
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start:
            if (m_levels.size() == MAX_DEPTH) Refuse("is nested too deeply");
            m_levels.push_back({event == Json::parse_event_t::array_start});
            return;
        case Json::parse_event_t::key:
            SeeKey(value.get<std::string>());
            return;
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            m_levels.pop_back();
            [[fallthrough]];
        case Json::parse_event_t::value:
            if (!m_levels.empty()) ++m_levels.back().m_nIndex;
        }
    }

  private:
    struct Level {
        bool m_bList;
        std::size_t m_nIndex = 0;
        std::string m_strKey = {};
        std::set<std::string> m_keys = {};
    };

    void SeeKey(const std::string& strKey) {
        Level& level = m_levels.back();
        level.m_strKey = strKey;
        if (!level.m_keys.insert(strKey).second) Refuse("stands there twice");
        if (level.m_keys.size() > MAX_KEYS) Refuse("unknown key");
    }

    [[noreturn]] void Refuse(const std::string& strReason) const {
        std::string strPath;
        for (const Level& level : m_levels)
            if (level.m_bList)
                strPath.append("[").append(std::to_string(level.m_nIndex)).append("]");
            else
                strPath.append(strPath.empty() ? "" : ".").append(level.m_strKey);
        throw CLimitsError(m_strName + ": " + strPath + ": " + strReason);
    }

    const std::string& m_strName;
    std::vector<Level> m_levels;
};

/// "line 3: what was found; what was expected", of the library's text.
std::string DescribeParseError(const Json::exception& error) {
    const std::string strText = error.what();
    const std::size_t nLine = strText.find(" at line ");
    const std::size_t nReason = strText.find(": ", nLine == std::string::npos ? 0 : nLine);
    if (nLine == std::string::npos || nReason == std::string::npos) {
        const std::size_t nPrefix = strText.find("] ");
        return nPrefix == std::string::npos ? strText : strText.substr(nPrefix + 2);
    }
    const std::size_t nNumber = nLine + 4;
    return strText.substr(nNumber, strText.find(',', nNumber) - nNumber) + strText.substr(nReason);
}

}  // namespace

Json ParseLimitsText(const std::string& strName, std::string_view strText) {
    CStructureWatch watch(strName);
    try {
        return Json::parse(strText, [&](int, Json::parse_event_t event, Json& value) {
            watch.See(event, value);
            return true;
        });
    } catch (const Json::exception& error) {
        throw CLimitsError(strName + ": " + DescribeParseError(error));
    }
}

std::string WriteLimitsText(const Json& document) {
    std::string strText;
    for (const auto& [strKey, value] : document.items()) {
        strText.append(strText.empty() ? "{\n  " : ",\n  ").append(WriteJson(strKey)).append(": ");
        if (strKey != "objects" || value.empty()) {
            strText += WriteJson(value);
            continue;
        }
        const char* pSeparator = "[\n    ";
        for (const Json& object : value) {
            strText += pSeparator + WriteJson(object);
            pSeparator = ",\n    ";
        }
        strText += "\n  ]";
    }
    return strText + "\n}\n";
}
