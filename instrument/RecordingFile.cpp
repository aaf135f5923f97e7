#include "instrument/RecordingFile.h"

#include <algorithm>
#include <charconv>
#include <span>

namespace {

constexpr std::size_t MAX_ROWS = 10'000'000;
constexpr std::size_t NO_COLUMN = CTextTable::NO_COLUMN;

/// How much longer than the others a step of time may be: clocks are read in whole milliseconds.
constexpr double LONGEST_STEP = 2.5;

constexpr const char* FORCES[] = {"force", "load", "kraft"};
constexpr const char* TRAVELS[] = {"displacement", "position", "distance",
                                   "voltage",      "weg",      "spannung"};
constexpr const char* TIMES[] = {"time", "t", "zeit"};

/// Units that may stand behind a name without brackets.
constexpr const char* UNITS[] = {"s", "sec", "ms", "us", "\xC2\xB5s", "N", "kN", "mm", "V"};

/// A column's name and what stands behind it: "Time (ms)", "Zeit/s", "force, N", "time_ms".
struct NameAndUnit {
    std::string_view m_strName;
    std::string_view m_strUnit;
};

NameAndUnit SplitName(std::string_view strText) {
    std::size_t nUnit = strText.find_first_of("([/,");
    if (nUnit == std::string_view::npos) {
        nUnit = strText.find_last_of("_ ");
        if (nUnit == std::string_view::npos || std::ranges::none_of(UNITS, [&](const char* pUnit) {
                return EqualsNoCase(strText.substr(nUnit + 1), pUnit);
            }))
            return {strText, {}};
    }
    std::string_view strName = strText.substr(0, nUnit);
    while (strName.ends_with(' ')) strName.remove_suffix(1);
    std::string_view strUnit = strText.substr(nUnit + 1);
    while (strUnit.starts_with(' ')) strUnit.remove_prefix(1);
    while (strUnit.ends_with(')') || strUnit.ends_with(']')) strUnit.remove_suffix(1);
    return {strName, strUnit};
}

std::size_t FindName(const std::vector<std::string>& names, std::string_view strName) {
    for (std::size_t n = 0; n < names.size(); ++n)
        if (EqualsNoCase(names[n], strName)) return n;
    for (std::size_t n = 0; n < names.size(); ++n)
        if (EqualsNoCase(SplitName(names[n]).m_strName, strName)) return n;
    return NO_COLUMN;
}

/// The last word of a name: "force" of "ch1_force [N]".
std::string_view GetLastWord(std::string_view strText) {
    const std::string_view strName = SplitName(strText).m_strName;
    return strName.substr(strName.find_last_of("_ ") + 1);
}

/// The column that was asked for, by name or number.
std::size_t FindColumn(const std::vector<std::string>& names, const std::string& strColumn,
                       const std::string& strPath) {
    if (const std::size_t nNamed = FindName(names, strColumn); nNamed != NO_COLUMN) return nNamed;
    std::size_t nNumber = 0;
    const char* const pEnd = strColumn.data() + strColumn.size();
    const auto [pRest, error] = std::from_chars(strColumn.data(), pEnd, nNumber);
    if (error == std::errc() && pRest == pEnd && nNumber >= 1 && nNumber <= names.size())
        return nNumber - 1;

    std::string strNames;
    for (const std::string& strName : names) strNames += (strNames.empty() ? "" : ", ") + strName;
    throw CRecordingError(strPath + ": has no column '" + strColumn + "'; its " +
                          std::to_string(names.size()) + " columns are: " + strNames);
}

/// Which columns are read; NO_COLUMN: the file has none.
struct ColumnChoice {
    std::size_t m_nFirst = NO_COLUMN;
    std::size_t m_nSecond = NO_COLUMN;
    std::size_t m_nTime = NO_COLUMN;
};

ColumnChoice ChooseColumns(const std::vector<std::string>& names, const RecordingColumns& asked,
                           const std::string& strPath) {
    ColumnChoice choice;
    const auto isFree = [&choice](std::size_t n) {
        return n != choice.m_nFirst && n != choice.m_nSecond && n != choice.m_nTime;
    };
    const auto findUsual = [&](std::span<const char* const> usual) {
        for (const char* pName : usual)
            if (const std::size_t n = FindName(names, pName); n != NO_COLUMN && isFree(n)) return n;
        for (const char* pName : usual)
            for (std::size_t n = 0; n < names.size(); ++n)
                if (isFree(n) && EqualsNoCase(GetLastWord(names[n]), pName)) return n;
        return NO_COLUMN;
    };
    /// The first free column from one on.
    const auto findNext = [&](std::size_t n) {
        while (n < names.size() && !isFree(n)) ++n;
        return n < names.size() ? n : NO_COLUMN;
    };
    if (!asked.m_strFirst.empty()) choice.m_nFirst = FindColumn(names, asked.m_strFirst, strPath);
    if (!asked.m_strSecond.empty())
        choice.m_nSecond = FindColumn(names, asked.m_strSecond, strPath);
    choice.m_nTime = findUsual(TIMES);
    if (choice.m_nFirst == NO_COLUMN) choice.m_nFirst = findUsual(FORCES);
    if (choice.m_nFirst == NO_COLUMN) choice.m_nFirst = findNext(0);
    if (choice.m_nFirst == NO_COLUMN)
        throw CRecordingError(strPath + ": has no column of a quantity");
    if (choice.m_nSecond == NO_COLUMN) choice.m_nSecond = findUsual(TRAVELS);
    if (choice.m_nSecond == NO_COLUMN) choice.m_nSecond = findNext(choice.m_nFirst + 1);
    return choice;
}

/// Seconds of the unit behind a time column's name.
double GetTimeUnit(const std::string& strName, const std::string& strPath) {
    const std::string_view strUnit = SplitName(strName).m_strUnit;
    for (const auto& [pUnit, dSeconds] : {std::pair{"", 1.0},
                                          {"s", 1.0},
                                          {"sec", 1.0},
                                          {"ms", 1e-3},
                                          {"us", 1e-6},
                                          {"\xC2\xB5s", 1e-6}})
        if (EqualsNoCase(strUnit, pUnit)) return dSeconds;
    throw CRecordingError(strPath + ": the unit of '" + strName + "' is not s, ms or us");
}

/// Takes the times of the rows in turn.
class CTimes {
  public:
    void Add(CTextTable& table, double dTime) {
        if (m_nRows > 0 && dTime <= m_dLast)
            table.Refuse(table.GetLine(), "the time does not come after the one before");
        if (m_nRows == 0) m_dFirst = dTime;
        if (m_nRows > 0 && dTime - m_dLast > m_dLongest) {
            m_dLongest = dTime - m_dLast;
            m_nLongestLine = table.GetLine();
        }
        m_dLast = dTime;
        ++m_nRows;
    }

    /// @return rows per unit of time; none of a single row
    std::optional<double> FindRate(const CTextTable& table) const {
        if (m_nRows < 2) return std::nullopt;
        const double dRate = static_cast<double>(m_nRows - 1) / (m_dLast - m_dFirst);
        if (m_dLongest * dRate > LONGEST_STEP)
            table.Refuse(m_nLongestLine, "there is a gap in the time");
        return dRate;
    }

  private:
    std::size_t m_nRows = 0;
    double m_dFirst = 0;
    double m_dLast = 0;
    double m_dLongest = 0;
    std::size_t m_nLongestLine = 0;
};

}  // namespace

Recording ReadRecording(const std::string& strPath, const RecordingColumns& columns) {
    CTextTable table(strPath);
    const std::vector<std::string>& names = table.GetNames();
    const ColumnChoice choice = ChooseColumns(names, columns, strPath);
    const bool bTimes = columns.m_bTimes && choice.m_nTime != NO_COLUMN;
    const double dUnit = bTimes ? GetTimeUnit(names[choice.m_nTime], strPath) : 1;

    Recording recording;
    CTimes times;
    while (table.ReadRow()) {
        if (recording.m_adFirst.size() == MAX_ROWS)
            table.Refuse(table.GetLine(), "there are too many rows");
        recording.m_adFirst.push_back(table.ReadValue(choice.m_nFirst));
        if (choice.m_nSecond != NO_COLUMN)
            recording.m_adSecond.push_back(table.ReadValue(choice.m_nSecond));
        if (bTimes) times.Add(table, dUnit * table.ReadValue(choice.m_nTime));
    }
    if (recording.m_adFirst.empty()) throw CRecordingError(strPath + ": holds no rows");
    recording.m_rowsPerSecond = times.FindRate(table);
    recording.m_strFirstName = names[choice.m_nFirst];
    if (choice.m_nSecond != NO_COLUMN) recording.m_strSecondName = names[choice.m_nSecond];
    if (recording.m_rowsPerSecond) recording.m_strTimeName = names[choice.m_nTime];
    recording.m_strForm = table.DescribeForm();
    return recording;
}
