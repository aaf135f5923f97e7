// Tables of numbers as programs write them into text files.
#pragma once

#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// A recording that cannot be used. The text says which file, line and column, and why.
class CRecordingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads a table row by row. How it is written is found out from its first lines, and what
/// contradicts that later is refused, never read as something else:
/// - fields stand between semicolons, tabs or commas, the first of these that the first two rows
///   hold, in double quotes or not; blank lines are skipped, a byte-order mark is too;
/// - numbers have a decimal point or a decimal comma, the same in the whole file; a comma is a
///   decimal one also in a file of a single column whose header or leading zeros show it;
/// - a first row that is not all numbers is the header; a row of texts behind it holds the units.
class CTextTable {
  public:
    static constexpr std::size_t NO_COLUMN = static_cast<std::size_t>(-1);

    /// @throws CRecordingError when the file cannot be read, is no regular file or larger than 256
    ///         MiB, is written in UTF-16 or holds no row
    explicit CTextTable(const std::string& strPath);

    /// The names of the columns: of the header, or "1", "2" and so on.
    const std::vector<std::string>& GetNames() const { return m_names; }

    /// Goes to the next row.
    /// @return false at the end of the file
    /// @throws CRecordingError for a line above 64 KiB or with a carriage return within it, or a
    /// row
    ///         that is longer than the header
    bool ReadRow();

    /// A finite number of the row.
    /// @throws CRecordingError
    double ReadValue(std::size_t nColumn);

    /// Where the row stands in the file, from 1.
    std::size_t GetLine() const { return m_nLine; }

    /// How the table is written, as far as it has been read: "semicolons, decimal comma, header".
    std::string DescribeForm() const;

    [[noreturn]] void Refuse(std::size_t nLine, const std::string& strReason) const;

  private:
    bool ReadLine();
    void FindForm(const std::vector<std::string>& firstLines);
    void SplitRow(std::string_view strLine);
    bool IsUnits() const;

    const std::string m_strPath;
    std::ifstream m_file;
    std::string m_strLine;
    std::size_t m_nLine = 0;
    char m_chSeparator = '\0';  ///< of the fields; '\0': one column
    char m_chDecimal = '\0';    ///< '\0': no number has had any so far
    bool m_bHeader = false;
    bool m_bFirstRow = true;
    std::vector<std::string> m_names;
    std::vector<std::string_view> m_fields;  ///< of m_strLine
};

/// Whether two texts are the same but for the case of the letters A to Z.
bool EqualsNoCase(std::string_view a, std::string_view b);
