#include "evaluation/LimitsFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "evaluation/LimitObjectReader.h"
#include "evaluation/LimitsText.h"
#include "platform/system/File.h"
#include "platform/system/Text.h"

namespace {

constexpr std::size_t MAX_TITLE = 200;
constexpr std::size_t MAX_UNIT = 16;
constexpr std::size_t MAX_OBJECTS = 1000;

Scale ReadScale(const CLimitsNode& file, const char* pKey) {
    Scale scale;
    if (!file.Has(pKey)) return scale;
    constexpr std::string_view KEYS[] = {"unit", "factor", "offset"};
    const CLimitsNode node = file.Get(pKey);
    node.RequireKeys(KEYS);
    if (node.Has("unit")) scale.m_strUnit = node.Get("unit").ReadText(0, MAX_UNIT);
    if (node.Has("factor")) scale.m_dFactor = node.Get("factor").ReadNumber(1e-9, 1e9);
    if (node.Has("offset")) scale.m_dOffset = node.Get("offset").ReadNumber(-1e9, 1e9);
    return scale;
}

void RequireFormat(const CLimitsNode& file) {
    constexpr std::string_view KEYS[] = {"format", "version",  "title",
                                         "force",  "position", "objects"};
    constexpr std::string_view FORMATS[] = {"rt3-limits"};
    file.RequireObject();
    file.Get("format").ReadChoice(FORMATS);
    const CLimitsNode version = file.Get("version");
    if (version.ReadNumber() != 1) version.Refuse(version.Quote() + " is not supported, 1 is");
    file.RequireKeys(KEYS);
}

Limits Read(const CLimitsNode& file) {
    RequireFormat(file);
    Limits limits;
    if (file.Has("title")) limits.m_strTitle = file.Get("title").ReadText(0, MAX_TITLE);
    limits.m_scales = {ReadScale(file, "force"), ReadScale(file, "position")};
    const CLimitsNode objects = file.Get("objects");
    std::set<std::string> names;
    const std::size_t nObjects = objects.CountEntries(0, MAX_OBJECTS);
    for (std::size_t n = 0; n < nObjects; ++n) {
        limits.m_objects.push_back(ReadLimitObject(objects.At(n), limits.m_scales));
        const std::string& strName = limits.m_objects.back().m_strName;
        if (!names.insert(strName).second)
            objects.At(n).Get("name").Refuse(WriteJson(strName) + " is the name of two objects");
    }
    return limits;
}

/// As many digits as a person can do something with, and more than a capture has.
double RoundForFile(double dNumber) {
    char text[32];
    std::snprintf(text, sizeof text, "%.12g", dNumber);
    return std::strtod(text, nullptr);
}

Json DescribeEnvelope(const std::string& strName, const LearnedEnvelope& envelope,
                      const Scales& scales) {
    Json lower = Json::array();
    Json upper = Json::array();
    for (const LearnedEnvelope::Corner& corner : envelope.m_corners) {
        const double dPosition = RoundForFile(scales.m_position.ToEngineering(corner.m_dPosition));
        const auto describe = [&](double dForce) {
            return Json::array({dPosition, RoundForFile(scales.m_force.ToEngineering(dForce))});
        };
        lower.push_back(describe(corner.m_dLower));
        upper.push_back(describe(corner.m_dUpper));
    }
    return {{"name", strName},
            {"kind", "envelope"},
            {"branch", envelope.m_branch == Branch::Return ? "return" : "forward"},
            {"lower", std::move(lower)},
            {"upper", std::move(upper)},
            {"tolerance", 0}};
}

}  // namespace

struct CLimitsFile::Document {
    std::string m_strName;
    Json m_json;
};

CLimitsFile::CLimitsFile()
    : CLimitsFile("", R"({"format": "rt3-limits", "version": 1, "objects": []})") {}

CLimitsFile::CLimitsFile(const std::string& strName, std::string_view strText)
    : m_pDocument(new Document{strName, ParseLimitsText(strName, strText)}),
      m_limits(Read(CLimitsNode(m_pDocument->m_json, strName))) {}

CLimitsFile::~CLimitsFile() = default;
CLimitsFile::CLimitsFile(CLimitsFile&&) noexcept = default;
CLimitsFile& CLimitsFile::operator=(CLimitsFile&&) noexcept = default;

LimitObject CLimitsFile::SetEnvelope(const LearnedEnvelope& envelope) {
    const std::string strName =
        envelope.m_branch == Branch::Return ? "learned return" : "learned forward";
    Json object = DescribeEnvelope(strName, envelope, m_limits.m_scales);
    Json& objects = m_pDocument->m_json["objects"];
    const auto place = std::find_if(objects.begin(), objects.end(),
                                    [&](const Json& each) { return each["name"] == strName; });
    const auto nObject = static_cast<std::size_t>(place - objects.begin());
    if (place == objects.end())
        objects.push_back(std::move(object));
    else
        *place = std::move(object);
    m_limits = Read(CLimitsNode(m_pDocument->m_json, m_pDocument->m_strName));
    return m_limits.m_objects[nObject];
}

std::string CLimitsFile::GetText() const { return WriteLimitsText(m_pDocument->m_json); }

CLimitsFile ReadLimitsFile(const std::wstring& strPath) {
    const std::string strName = ToUtf8(strPath);
    CFile file(strPath, CFile::modeRead);
    std::string strText(MAX_LIMITS_LENGTH + 1, '\0');
    strText.resize(file.Read(strText.data(), strText.size()));
    if (strText.size() > MAX_LIMITS_LENGTH)
        throw CLimitsError(strName + ": is longer than " + std::to_string(MAX_LIMITS_LENGTH >> 20) +
                           " MB");
    return {strName, strText};
}

Limits ReadLimitsToJudgeBy(const std::wstring& strPath) {
    const CLimitsFile file = ReadLimitsFile(strPath);
    if (file.GetLimits().m_objects.empty())
        throw CLimitsError(ToUtf8(strPath) + ": objects: there are none to judge by");
    return file.GetLimits();
}
