// Texts of any length in the room that there is for them.
#pragma once

#include <string>

#include "platform/system/Export.h"

class CFont;

/// Breaks a text into rows, behind a space or a separator of folders where it can, else anywhere.
/// One that needs more rows than there are loses what is in its middle. User-interface thread.
/// @param nWidth of a row, in pixels of the display
/// @return the rows, with a line feed between two of them
PLATFORM_API std::wstring FitText(const std::wstring& strText, const CFont& font, int nWidth,
                                  int nMaxRows);
