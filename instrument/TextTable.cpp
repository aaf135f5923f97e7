#include "instrument/TextTable.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <optional>
#include <span>
#include <utility>

namespace {

constexpr std::uintmax_t MAX_FILE_SIZE = 256u << 20;
constexpr std::size_t MAX_LINE_LENGTH = 65536;
/// Lines that the form is found out from.
constexpr std::size_t FIRST_LINES = 20;

std::string_view Trim(std::string_view str) {
    const auto isPadding = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!str.empty() && isPadding(str.front())) str.remove_prefix(1);
    while (!str.empty() && isPadding(str.back())) str.remove_suffix(1);
    return str;
}

std::string_view Unquote(std::string_view str) {
    str = Trim(str);
    if (str.size() >= 2 && str.front() == '"' && str.back() == '"')
        return Trim(str.substr(1, str.size() - 2));
    return str;
}

/// The first place of a separator that does not stand between quotes, or npos.
std::size_t FindSeparator(std::string_view str, char chSeparator) {
    bool bQuoted = false;
    for (std::size_t n = 0; n < str.size(); ++n) {
        if (str[n] == '"') bQuoted = !bQuoted;
        if (str[n] == chSeparator && !bQuoted) return n;
    }
    return std::string_view::npos;
}

/// A finite number with a decimal point, or with the sign that stands for it; '\0' takes either,
/// and becomes the one that is found.
std::optional<double> ReadNumber(std::string_view strText, char& chDecimal) {
    std::string strNumber(strText);
    const bool bComma = strNumber.find(',') != std::string::npos;
    const bool bPoint = strNumber.find('.') != std::string::npos;
    if ((bComma && (bPoint || chDecimal == '.')) || (bPoint && chDecimal == ','))
        return std::nullopt;
    std::ranges::replace(strNumber, ',', '.');
    const char* pBegin = strNumber.data();
    const char* const pEnd = pBegin + strNumber.size();
    if (strNumber.starts_with('+')) ++pBegin;
    double dValue = 0;
    const auto [pRest, error] = std::from_chars(pBegin, pEnd, dValue);
    if (error != std::errc() || pRest != pEnd || !std::isfinite(dValue)) return std::nullopt;
    if (bComma || bPoint) chDecimal = bComma ? ',' : '.';
    return dValue;
}

bool IsNumber(std::string_view strText) {
    char chDecimal = '\0';
    return ReadNumber(strText, chDecimal).has_value();
}

/// Whether the comma of a line with one of them can be nothing but a decimal one.
bool HasDecimalComma(std::string_view strLine) {
    const std::size_t nComma = strLine.find(',');
    if (!IsNumber(Unquote(strLine)) || nComma == std::string_view::npos) return false;
    const std::string_view strBehind = Trim(strLine.substr(nComma + 1));
    return strBehind.size() > 1 && strBehind.front() == '0' &&
           strBehind.find_first_not_of("0123456789") == std::string_view::npos;
}

std::ifstream OpenFile(const std::string& strPath) {
    std::error_code error;
    const auto status = std::filesystem::status(strPath, error);
    if (!std::filesystem::exists(status))
        throw CRecordingError(strPath + ": there is no such file");
    if (!std::filesystem::is_regular_file(status))
        throw CRecordingError(strPath + ": is not a file of rows");
    if (std::filesystem::file_size(strPath, error) > MAX_FILE_SIZE)
        throw CRecordingError(strPath + ": is larger than 256 MiB");

    errno = 0;
    std::ifstream file(strPath, std::ios::binary);
    if (!file) throw CRecordingError(strPath + ": " + std::strerror(errno));
    return file;
}

}  // namespace

bool EqualsNoCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

CTextTable::CTextTable(const std::string& strPath) : m_strPath(strPath), m_file(OpenFile(strPath)) {
    std::vector<std::string> firstLines;
    while (firstLines.size() < FIRST_LINES && ReadLine()) firstLines.push_back(m_strLine);
    if (firstLines.empty()) throw CRecordingError(strPath + ": holds no rows");
    FindForm(firstLines);
    m_file.clear();
    m_file.seekg(0);
    m_nLine = 0;
    if (m_bHeader) ReadLine();
}

void CTextTable::Refuse(std::size_t nLine, const std::string& strReason) const {
    throw CRecordingError(m_strPath + ":" + std::to_string(nLine) + ": " + strReason);
}

/// Goes to the next line that is not blank.
bool CTextTable::ReadLine() {
    while (std::getline(m_file, m_strLine)) {
        ++m_nLine;
        if (m_strLine.size() > MAX_LINE_LENGTH) Refuse(m_nLine, "the line is too long");
        if (m_nLine == 1 && m_strLine.starts_with("\xEF\xBB\xBF")) m_strLine.erase(0, 3);
        if (m_nLine == 1 &&
            (m_strLine.starts_with("\xFF\xFE") || m_strLine.starts_with("\xFE\xFF")))
            throw CRecordingError(m_strPath + ": is written in UTF-16; save it as UTF-8");
        if (const std::size_t nReturn = m_strLine.find('\r'); nReturn < m_strLine.size() - 1)
            Refuse(m_nLine, "a carriage return stands where no line ends");
        if (!Trim(m_strLine).empty()) return true;
    }
    if (m_file.bad()) throw CRecordingError(m_strPath + ": could not be read to its end");
    return false;
}

void CTextTable::FindForm(const std::vector<std::string>& firstLines) {
    const std::string& strFirst = firstLines.front();
    const auto holds = [&](char chSeparator) {
        const auto firstTwo =
            std::span(firstLines).first(std::min<std::size_t>(firstLines.size(), 2));
        return std::ranges::all_of(firstTwo, [chSeparator](const std::string& strLine) {
            return FindSeparator(Trim(strLine), chSeparator) != std::string_view::npos;
        });
    };
    for (const char chSeparator : {';', '\t', ','})
        if (m_chSeparator == '\0' && holds(chSeparator)) m_chSeparator = chSeparator;
    if (m_chSeparator == ',' && std::ranges::any_of(firstLines, HasDecimalComma) &&
        std::ranges::all_of(firstLines, IsNumber))
        m_chSeparator = '\0';

    SplitRow(strFirst);
    m_bHeader = !std::ranges::all_of(
        m_fields, [](std::string_view strField) { return strField.empty() || IsNumber(strField); });
    for (std::size_t n = 0; n < m_fields.size(); ++n)
        m_names.push_back(m_bHeader ? std::string(m_fields[n]) : std::to_string(n + 1));
}

void CTextTable::SplitRow(std::string_view strLine) {
    m_fields.clear();
    for (;;) {
        const std::size_t nPlace =
            m_chSeparator ? FindSeparator(strLine, m_chSeparator) : std::string_view::npos;
        m_fields.push_back(Unquote(strLine.substr(0, nPlace)));
        if (nPlace == std::string_view::npos) return;
        strLine.remove_prefix(nPlace + 1);
    }
}

/// Whether no field of the row could be meant as a number.
bool CTextTable::IsUnits() const {
    return std::ranges::none_of(m_fields, [](std::string_view strField) {
        return strField.find_first_of("+-.0123456789") == 0 || EqualsNoCase(strField, "nan") ||
               EqualsNoCase(strField, "inf");
    });
}

bool CTextTable::ReadRow() {
    do {
        if (!ReadLine()) return false;
        SplitRow(m_strLine);
    } while (std::exchange(m_bFirstRow, false) && m_bHeader && IsUnits());

    // A row may end with a separator.
    for (std::size_t n = m_names.size(); n < m_fields.size(); ++n)
        if (!m_fields[n].empty())
            Refuse(m_nLine, "the row has " + std::to_string(m_fields.size()) +
                                " columns, the first one has " + std::to_string(m_names.size()));
    return true;
}

double CTextTable::ReadValue(std::size_t nColumn) {
    const std::string strColumn = "column " + std::to_string(nColumn + 1);
    if (nColumn >= m_fields.size()) Refuse(m_nLine, "the row ends before " + strColumn);
    if (const auto value = ReadNumber(m_fields[nColumn], m_chDecimal)) return *value;
    const std::string strField(m_fields[nColumn].substr(0, 40));
    const bool bOther = IsNumber(strField);
    Refuse(m_nLine, strColumn + " holds '" + strField +
                        (bOther ? "', in a file with a decimal " : "', which is no number") +
                        (!bOther              ? ""
                         : m_chDecimal == ',' ? "comma"
                                              : "point"));
}

std::string CTextTable::DescribeForm() const {
    std::string strForm = m_chSeparator == ';'    ? "semicolons"
                          : m_chSeparator == '\t' ? "tabs"
                          : m_chSeparator == ','  ? "commas"
                                                  : "one column";
    if (m_chDecimal) strForm += m_chDecimal == ',' ? ", decimal comma" : ", decimal point";
    return strForm + (m_bHeader ? ", header" : ", no header");
}
