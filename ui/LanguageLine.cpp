#include "ui/LanguageLine.h"

#include <algorithm>
#include <array>
#include <limits>

#include "ui/LanguageTable.h"

namespace {

constexpr char16_t BYTE_ORDER_MARK = 0xFEFF;
constexpr std::size_t FIELDS = 5;
constexpr std::size_t FIELD_SECTION = 0;
constexpr std::size_t FIELD_STRING = 2;
constexpr std::size_t FIELD_TEXT = 4;

/// Hands out the lines of a file one after another.
class LineReader {
  public:
    explicit LineReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {
        if (HasUnit() && UnitAt(0) == BYTE_ORDER_MARK) m_bytes = m_bytes.subspan(2);
    }

    /// The last line need not end in a line feed.
    /// @return false when there is no further line
    bool Next(std::u16string& line) {
        line.clear();
        if (!HasUnit()) return false;
        while (HasUnit()) {
            const char16_t chUnit = UnitAt(0);
            m_bytes = m_bytes.subspan(2);
            if (chUnit == u'\n') break;
            line.push_back(chUnit);
        }
        return true;
    }

  private:
    bool HasUnit() const { return m_bytes.size() >= 2; }
    char16_t UnitAt(std::size_t n) const {
        return static_cast<char16_t>(m_bytes[n] | (m_bytes[n + 1] << 8));
    }

    std::span<const std::uint8_t> m_bytes;
};

/// @return false when the line has fewer fields; further ones are ignored
bool SplitFields(std::u16string_view line, std::array<std::u16string_view, FIELDS>& fields) {
    for (std::size_t n = 0; n < FIELDS; ++n) {
        const std::size_t nTab = line.find(u'\t');
        fields[n] = line.substr(0, nTab);
        if (nTab == std::u16string_view::npos) return n == FIELDS - 1;
        line.remove_prefix(nTab + 1);
    }
    return true;
}

std::int32_t ParseNumber(std::u16string_view field) {
    constexpr std::u16string_view WHITE_SPACE = u" \t\n\v\f\r";
    field.remove_prefix(std::min(field.find_first_not_of(WHITE_SPACE), field.size()));
    const bool bNegative = field.starts_with(u'-');
    if (bNegative || field.starts_with(u'+')) field.remove_prefix(1);

    using Limits = std::numeric_limits<std::int32_t>;
    std::int64_t nNumber = 0;
    for (const char16_t ch : field) {
        if (ch < u'0' || ch > u'9') break;
        nNumber = std::min<std::int64_t>(nNumber * 10 + (ch - u'0'), std::int64_t{1} << 31);
    }
    if (bNegative) nNumber = -nNumber;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(nNumber, Limits::min(), Limits::max()));
}

constexpr bool IsHighSurrogate(char16_t ch) { return ch >= 0xD800 && ch <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t ch) { return ch >= 0xDC00 && ch <= 0xDFFF; }

/// Two units that make one character become one where a wide character has room for it; a surrogate
/// that stands alone is kept as it is.
std::wstring ToWide(std::u16string_view units) {
    std::wstring strText;
    strText.reserve(units.size());
    for (std::size_t n = 0; n < units.size(); ++n) {
        const bool bPair = sizeof(wchar_t) > 2 && IsHighSurrogate(units[n]) &&
                           n + 1 < units.size() && IsLowSurrogate(units[n + 1]);
        if (bPair) {
            const auto nCharacter =
                0x10000u + ((units[n] & 0x3FFu) << 10) + (units[n + 1] & 0x3FFu);
            strText.push_back(static_cast<wchar_t>(nCharacter));
            ++n;
        } else {
            strText.push_back(static_cast<wchar_t>(units[n]));
        }
    }
    return strText;
}

std::wstring ParseText(std::u16string_view field) {
    if (field.ends_with(u'\r')) field.remove_suffix(1);
    const std::wstring strRaw = ToWide(field);
    std::wstring strText;
    strText.reserve(strRaw.size());
    for (std::size_t n = 0; n < strRaw.size(); ++n) {
        const bool bLineFeed = strRaw.compare(n, 2, L"\\n") == 0;
        strText.push_back(bLineFeed ? L'\n' : strRaw[n]);
        if (bLineFeed) ++n;
    }
    return strText;
}

}  // namespace

std::optional<LanguageLine> ParseLanguageLine(std::u16string_view line) {
    std::array<std::u16string_view, FIELDS> fields;
    if (!SplitFields(line, fields)) return std::nullopt;
    const std::int32_t nSection = ParseNumber(fields[FIELD_SECTION]);
    if (nSection != 0 && nSection != 11) return std::nullopt;
    LanguageLine result{ParseNumber(fields[FIELD_STRING]), ParseText(fields[FIELD_TEXT])};
    if (result.m_strText.empty()) return std::nullopt;
    return result;
}

void ParseLanguageFile(std::span<const std::uint8_t> bytes, CLanguageTable& table) {
    LineReader reader(bytes);
    std::u16string line;
    while (reader.Next(line))
        if (auto parsed = ParseLanguageLine(line))
            table.Set(parsed->m_nString, std::move(parsed->m_strText));
}

std::wstring ParseFirstLine(std::span<const std::uint8_t> bytes) {
    std::u16string line;
    LineReader(bytes).Next(line);
    return ToWide(line);
}
