#include "platform/system/Text.h"

#include <cstddef>

namespace {

constexpr char32_t FIRST_STRAY_BYTE = 0xDC80;
constexpr char32_t LAST_STRAY_BYTE = 0xDCFF;
constexpr char32_t REPLACEMENT = 0xFFFD;

bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

/// Length of the well-formed sequence that begins a text, and its character; 0 when there is none.
std::size_t ReadSequence(std::string_view strBytes, char32_t& character) {
    const auto byteAt = [&](std::size_t n) { return static_cast<unsigned char>(strBytes[n]); };
    const unsigned char first = byteAt(0);
    std::size_t nLength = 0;
    char32_t smallest = 0;
    if (first < 0x80) {
        character = first;
        return 1;
    } else if ((first & 0xE0) == 0xC0) {
        nLength = 2, smallest = 0x80, character = first & 0x1Fu;
    } else if ((first & 0xF0) == 0xE0) {
        nLength = 3, smallest = 0x800, character = first & 0x0Fu;
    } else if ((first & 0xF8) == 0xF0) {
        nLength = 4, smallest = 0x10000, character = first & 0x07u;
    }
    if (nLength == 0 || nLength > strBytes.size()) return 0;
    for (std::size_t n = 1; n < nLength; ++n) {
        if ((byteAt(n) & 0xC0) != 0x80) return 0;
        character = (character << 6) | (byteAt(n) & 0x3Fu);
    }
    const bool bWellFormed =
        character >= smallest && character <= 0x10FFFF && !IsSurrogate(character);
    return bWellFormed ? nLength : 0;
}

void AppendCharacter(std::string& strBytes, char32_t c) {
    const auto append = [&](char32_t byte) { strBytes.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        append(c);
    } else if (c < 0x800) {
        append(0xC0 | (c >> 6));
        append(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        append(0xE0 | (c >> 12));
        append(0x80 | ((c >> 6) & 0x3F));
        append(0x80 | (c & 0x3F));
    } else {
        append(0xF0 | (c >> 18));
        append(0x80 | ((c >> 12) & 0x3F));
        append(0x80 | ((c >> 6) & 0x3F));
        append(0x80 | (c & 0x3F));
    }
}

}  // namespace

std::wstring FromUtf8(std::string_view strBytes) {
    std::wstring strText;
    strText.reserve(strBytes.size());
    while (!strBytes.empty()) {
        char32_t character = 0;
        std::size_t nLength = ReadSequence(strBytes, character);
        if (nLength == 0) {
            character = 0xDC00u + static_cast<unsigned char>(strBytes[0]);
            nLength = 1;
        }
        strText.push_back(static_cast<wchar_t>(character));
        strBytes.remove_prefix(nLength);
    }
    return strText;
}

std::string ToUtf8(std::wstring_view strText) {
    std::string strBytes;
    strBytes.reserve(strText.size());
    for (const wchar_t wide : strText) {
        const auto c = static_cast<char32_t>(wide);
        if (c >= FIRST_STRAY_BYTE && c <= LAST_STRAY_BYTE)
            strBytes.push_back(static_cast<char>(c - 0xDC00u));
        else
            AppendCharacter(strBytes, IsSurrogate(c) || c > 0x10FFFF ? REPLACEMENT : c);
    }
    return strBytes;
}
