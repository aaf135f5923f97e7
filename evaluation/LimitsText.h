// The text of a limits file as JSON.
#pragma once

#include <string>
#include <string_view>

#include "evaluation/Json.h"

/// Reads JSON; a key that stands twice in an object, and what is nested or has keys far beyond what
/// a limits file can have, is refused before it takes memory or time.
/// @param strName what errors call the file
/// @throws CLimitsError
Json ParseLimitsText(const std::string& strName, std::string_view strText);

/// A line for each key of the file and each of its objects.
std::string WriteLimitsText(const Json& document);
