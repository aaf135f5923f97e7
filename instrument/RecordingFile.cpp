#include "instrument/RecordingFile.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace {

constexpr std::uintmax_t MAX_FILE_SIZE = 256u << 20;
constexpr std::size_t MAX_ROWS = 10'000'000;
constexpr std::size_t MAX_LINE_LENGTH = 65536;
constexpr std::size_t NO_COLUMN = static_cast<std::size_t>(-1);

std::string_view Trim(std::string_view str) {
    const auto isPadding = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!str.empty() && isPadding(str.front())) str.remove_prefix(1);
    while (!str.empty() && isPadding(str.back())) str.remove_suffix(1);
    if (str.size() >= 2 && str.front() == '"' && str.back() == '"')
        str = str.substr(1, str.size() - 2);
    return str;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    if (a.size() != b.size()) return false;
    for (std::size_t n = 0; n < a.size(); ++n)
        if (lower(a[n]) != lower(b[n])) return false;
    return true;
}

std::vector<std::string_view> SplitRow(std::string_view strLine) {
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t nComma = strLine.find(',');
        fields.push_back(Trim(strLine.substr(0, nComma)));
        if (nComma == std::string_view::npos) return fields;
        strLine.remove_prefix(nComma + 1);
    }
}

std::optional<double> ReadNumber(std::string_view str) {
    if (str.starts_with('+')) str.remove_prefix(1);
    double dValue = 0;
    const auto [pEnd, error] = std::from_chars(str.data(), str.data() + str.size(), dValue);
    if (error != std::errc() || pEnd != str.data() + str.size() || !std::isfinite(dValue))
        return std::nullopt;
    return dValue;
}

std::size_t FindName(const std::vector<std::string_view>& header, std::string_view strName) {
    for (std::size_t n = 0; n < header.size(); ++n)
        if (EqualsNoCase(header[n], strName)) return n;
    return NO_COLUMN;
}

/// The column that was asked for, by name or number.
std::size_t FindColumn(const std::vector<std::string_view>& header, const std::string& strColumn,
                       const std::string& strPath) {
    if (const std::size_t nNamed = FindName(header, strColumn); nNamed != NO_COLUMN) return nNamed;
    std::size_t nNumber = 0;
    const char* const pEnd = strColumn.data() + strColumn.size();
    const auto [pRest, error] = std::from_chars(strColumn.data(), pEnd, nNumber);
    if (error == std::errc() && pRest == pEnd && nNumber >= 1 && nNumber <= header.size())
        return nNumber - 1;

    std::string strNames;
    for (const std::string_view strName : header)
        strNames += (strNames.empty() ? "" : ", ") + std::string(strName);
    throw CRecordingError(strPath + ": has no column '" + strColumn + "'; its " +
                          std::to_string(header.size()) + " columns are: " + strNames);
}

std::size_t FindUsualSecond(const std::vector<std::string_view>& header, std::size_t nFirst) {
    for (const char* pName : {"displacement", "position", "distance", "voltage"})
        if (const std::size_t n = FindName(header, pName); n != NO_COLUMN && n != nFirst) return n;
    return nFirst + 1 < header.size() ? nFirst + 1 : NO_COLUMN;
}

/// Reads a file line by line.
class CLineReader {
  public:
    CLineReader(std::ifstream& file, const std::string& strPath)
        : m_file(file), m_strPath(strPath) {}

    /// Goes to the next line; the fields of the one before are no longer valid.
    /// @return false at the end of the file
    bool ReadLine() {
        if (!std::getline(m_file, m_strLine)) return false;
        ++m_nLine;
        if (m_strLine.size() > MAX_LINE_LENGTH) Refuse("the line is too long");
        return true;
    }

    /// The line without a byte-order mark.
    std::string_view GetLine() const {
        std::string_view strLine = m_strLine;
        if (m_nLine == 1 && strLine.starts_with("\xEF\xBB\xBF")) strLine.remove_prefix(3);
        return strLine;
    }

    double ReadValue(const std::vector<std::string_view>& fields, std::size_t nColumn) const {
        const std::string strColumn = "column " + std::to_string(nColumn + 1);
        if (nColumn >= fields.size()) Refuse("the row ends before " + strColumn);
        if (const auto value = ReadNumber(fields[nColumn])) return *value;
        Refuse(strColumn + " holds '" + std::string(fields[nColumn].substr(0, 40)) +
               "', which is no number");
    }

    [[noreturn]] void Refuse(const std::string& strReason) const {
        throw CRecordingError(m_strPath + ":" + std::to_string(m_nLine) + ": " + strReason);
    }

  private:
    std::ifstream& m_file;
    const std::string& m_strPath;
    std::string m_strLine;
    std::size_t m_nLine = 0;
};

/// Opens a file that is not too large to be read.
std::ifstream OpenRecording(const std::string& strPath) {
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

Recording ReadRecording(const std::string& strPath, const RecordingColumns& columns) {
    std::ifstream file = OpenRecording(strPath);
    CLineReader lines(file, strPath);
    if (!lines.ReadLine() || Trim(lines.GetLine()).empty())
        throw CRecordingError(strPath + ": has no header row");

    Recording recording;
    std::size_t nFirst = 0;
    std::size_t nSecond = NO_COLUMN;
    {
        const std::vector<std::string_view> header = SplitRow(lines.GetLine());
        if (!columns.m_strFirst.empty())
            nFirst = FindColumn(header, columns.m_strFirst, strPath);
        else if (const std::size_t nForce = FindName(header, "force"); nForce != NO_COLUMN)
            nFirst = nForce;
        nSecond = columns.m_strSecond.empty() ? FindUsualSecond(header, nFirst)
                                              : FindColumn(header, columns.m_strSecond, strPath);
        recording.m_strFirstName = header[nFirst];
        if (nSecond != NO_COLUMN) recording.m_strSecondName = header[nSecond];
    }

    while (lines.ReadLine()) {
        if (Trim(lines.GetLine()).empty()) continue;
        if (recording.m_adFirst.size() == MAX_ROWS) lines.Refuse("there are too many rows");
        const std::vector<std::string_view> fields = SplitRow(lines.GetLine());
        recording.m_adFirst.push_back(lines.ReadValue(fields, nFirst));
        if (nSecond != NO_COLUMN) recording.m_adSecond.push_back(lines.ReadValue(fields, nSecond));
    }
    if (file.bad()) throw CRecordingError(strPath + ": could not be read to its end");
    if (recording.m_adFirst.empty()) throw CRecordingError(strPath + ": holds no rows");
    return recording;
}
