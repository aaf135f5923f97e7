// JSON as this program writes it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

using Json = nlohmann::ordered_json;

/// The text of a value on one line: a number is the shortest one that reads back the same, and none
/// is where it is not finite.
std::string WriteJson(const Json& value);
