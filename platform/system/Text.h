// Conversion between the system's wide strings and the UTF-8 of files, file names and the console.
#pragma once

#include <string>
#include <string_view>

#include "platform/system/Export.h"

/// Wide text of UTF-8 bytes. A byte that is not part of a well-formed sequence becomes one of the
/// code points U+DC80 to U+DCFF, which ToUtf8 turns back into that byte: a file name of any bytes
/// survives the way through the system.
PLATFORM_API std::wstring FromUtf8(std::string_view strBytes);

/// UTF-8 bytes of wide text. What is no character (and none of the code points above) becomes
/// U+FFFD.
PLATFORM_API std::string ToUtf8(std::wstring_view strText);
