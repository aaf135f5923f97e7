#include "evaluation/LimitsReader.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "evaluation/LimitsFile.h"
#include "platform/system/Text.h"

namespace {

std::string Format(double dNumber) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", dNumber);
    return text;
}

}  // namespace

CLimitsNode::CLimitsNode(const Json& value, std::string strFile)
    : m_pValue(&value), m_strFile(std::move(strFile)) {}

CLimitsNode CLimitsNode::Child(const Json& value, const std::string& strStep) const {
    CLimitsNode node;
    node.m_pValue = &value;
    node.m_strFile = m_strFile;
    node.m_strPath = m_strPath + strStep;
    node.m_strName = m_strName;
    return node;
}

CLimitsNode CLimitsNode::Get(const char* pKey) const {
    static const Json missing;
    const std::string strStep = std::string(m_strPath.empty() ? "" : ".") + pKey;
    if (!Has(pKey)) Child(missing, strStep).Refuse("missing");
    return Child((*m_pValue)[pKey], strStep);
}

CLimitsNode CLimitsNode::At(std::size_t nIndex) const {
    return Child((*m_pValue)[nIndex], '[' + std::to_string(nIndex) + ']');
}

void CLimitsNode::RequireObject() const {
    if (!m_pValue->is_object()) Refuse(Quote() + " is no object");
}

void CLimitsNode::RequireKeys(std::span<const std::string_view> keys) const {
    RequireObject();
    for (const auto& [strKey, value] : m_pValue->items())
        if (std::find(keys.begin(), keys.end(), strKey) == keys.end())
            Child(value, std::string(m_strPath.empty() ? "" : ".") + strKey).Refuse("unknown key");
}

std::size_t CLimitsNode::CountEntries(std::size_t nLeast, std::size_t nMost) const {
    if (!m_pValue->is_array()) Refuse(Quote() + " is no list");
    const std::size_t nEntries = m_pValue->size();
    if (nEntries < nLeast || nEntries > nMost)
        Refuse("a list of " + std::to_string(nEntries) + " is not one of " +
               (nLeast == nMost ? "" : std::to_string(nLeast) + " to ") + std::to_string(nMost));
    return nEntries;
}

std::string CLimitsNode::ReadText(std::size_t nLeast, std::size_t nMost) const {
    if (!m_pValue->is_string()) Refuse(Quote() + " is no text");
    std::string strText = m_pValue->get<std::string>();
    const std::size_t nLength = FromUtf8(strText).size();
    if (nLength < nLeast || nLength > nMost)
        Refuse("a text of " + std::to_string(nLength) + " characters is not one of " +
               std::to_string(nLeast) + " to " + std::to_string(nMost));
    return strText;
}

double CLimitsNode::ReadNumber() const {
    if (!m_pValue->is_number()) Refuse(Quote() + " is no number");
    return m_pValue->get<double>();
}

double CLimitsNode::ReadNumber(double dMin, double dMax) const {
    const double dNumber = ReadNumber();
    if (dNumber < dMin || dNumber > dMax)
        Refuse(Quote() + " is not between " + Format(dMin) + " and " + Format(dMax));
    return dNumber;
}

std::size_t CLimitsNode::ReadWhole(std::size_t nMin, std::size_t nMax) const {
    const double dNumber = ReadNumber();
    if (dNumber < static_cast<double>(nMin) || dNumber > static_cast<double>(nMax) ||
        std::trunc(dNumber) != dNumber)
        Refuse(Quote() + " is no whole number from " + std::to_string(nMin) + " to " +
               std::to_string(nMax));
    return static_cast<std::size_t>(dNumber);
}

std::size_t CLimitsNode::ReadChoice(std::span<const std::string_view> choices) const {
    const auto found =
        std::find_if(choices.begin(), choices.end(), [&](std::string_view strChoice) {
            return m_pValue->is_string() && m_pValue->get_ref<const std::string&>() == strChoice;
        });
    if (found != choices.end()) return static_cast<std::size_t>(found - choices.begin());
    std::string strChoices;
    for (const std::string_view strChoice : choices)
        strChoices.append(strChoices.empty() ? "" : ", ").append(strChoice);
    Refuse(Quote() + " is none of " + strChoices);
}

Grid CLimitsNode::ReadGrid(const Scale& scale) const {
    const auto found = FindGrid(scale, ReadNumber());
    if (!found) RefuseBeyond();
    return *found;
}

Grid CLimitsNode::ReadWidth(const Scale& scale) const {
    if (ReadNumber() < 0) Refuse(Quote() + " is below 0");
    const auto found = FindGridWidth(scale, ReadNumber());
    if (!found) RefuseBeyond();
    return *found;
}

void CLimitsNode::RefuseBeyond() const {
    Refuse(Quote() + " is beyond " + std::to_string(GRID_LIMIT / GRID_PER_VALUE) + " values");
}

void CLimitsNode::Refuse(const std::string& strReason) const {
    std::string strPlace = m_strPath;
    if (!m_strName.empty()) strPlace += " (\"" + m_strName + "\")";
    throw CLimitsError(m_strFile + ": " + strPlace + (strPlace.empty() ? "" : ": ") + strReason);
}

std::string CLimitsNode::Quote() const {
    if (m_pValue->is_object()) return "an object";
    if (m_pValue->is_array()) return "a list";
    constexpr std::size_t nMost = 40;
    const std::wstring strText = FromUtf8(WriteJson(*m_pValue));
    return ToUtf8(strText.size() > nMost ? strText.substr(0, nMost) + L"..." : strText);
}
