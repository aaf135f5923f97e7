// Building blocks of a JSON text.
#pragma once

#include <concepts>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A string in quotes. Bytes that are no UTF-8 (of a file name) become U+FFFD.
std::string QuoteJson(std::wstring_view strText);

/// The shortest text of a finite number.
std::string ToJson(double dValue);
std::string ToJson(std::integral auto nValue) { return std::to_string(nValue); }
inline std::string ToJson(bool bValue) { return bValue ? "true" : "false"; }
template <class Value>
std::string ToJson(const std::optional<Value>& value) {
    return value ? ToJson(*value) : "null";
}

/// Members and elements are JSON texts themselves.
std::string MakeJsonObject(const std::vector<std::pair<const char*, std::string>>& members);
std::string MakeJsonArray(const std::vector<std::string>& elements);
