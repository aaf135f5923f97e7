// The format of language files, over plain bytes and units; no file is opened here. Every function
// takes any input.
//
// A language file is a sequence of 16-bit little-endian units (UTF-16LE) of lines that end at a
// line feed. A line has five fields, divided by tabs:
//
//     section    decimal; this screen reads the sections 0 and 11
//     (not used)
//     string number    decimal
//     (not used)
//     text       up to a fifth tab or the end of the line
//
// A number is read like this: white space, a sign, then digits up to the first other character. A
// field without digits reads as 0; what does not fit into 32 bits reads as the nearest number that
// does. A carriage return at the end of a text is not part of it; a backslash followed by the
// letter n stands for a line feed.
//
// Lines that say nothing are skipped: those with fewer fields, of another section, or without a
// text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

class CLanguageTable;

struct LanguageLine {
    std::int32_t m_nString;
    std::wstring m_strText;  ///< not empty
};

/// Reads one line, without its line feed.
/// @return nothing when the line is to be skipped
std::optional<LanguageLine> ParseLanguageLine(std::u16string_view line);

/// Adds the texts of a whole file to a table. A byte-order mark in front and an odd last byte are
/// left out.
void ParseLanguageFile(std::span<const std::uint8_t> bytes, CLanguageTable& table);

/// The first line of a file, without its line feed but with a carriage return in front of it. A
/// byte-order mark is left out.
std::wstring ParseFirstLine(std::span<const std::uint8_t> bytes);
