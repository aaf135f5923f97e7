// Texts that are to fit into a width.
#pragma once

#include <string>

#include "platform/drawing/Graphics.h"

/// The text, or as much of its beginning and its end as has room around a mark for what is missing.
/// @param nHead so many characters at the beginning stay in any case
std::wstring LeaveOutMiddle(const CDC& dc, const std::wstring& strText, std::size_t nHead,
                            int nWidth);
