// The on-screen keyboards, called in the sibling library "OnscreenKeyboard.dll", which is loaded
// for the one entry and released after it. User-interface thread.
//
// A library or an entry that is missing counts as an entry that the operator cancelled.
#pragma once

#include <string>

#include "platform/system/Export.h"
#include "platform/system/Types.h"

/// The two functions of the library; C linkage. Each shows a modal window.
/// @return nonzero when the operator confirmed the entry, 0 when it was cancelled
using ShowKeyboardFunction = BYTE(const std::wstring* pError, const std::wstring* pTitle,
                                  std::wstring* pValue, BYTE* pFlag1, BYTE* pFlag2, BYTE* pFlag3);
using ShowNumberPadFunction = BYTE(std::wstring strTitle, std::wstring strInitial,
                                   std::wstring* pResult, double* pNumber, BYTE* pOption1,
                                   BYTE* pOption2);

/// Enters a text.
/// @param strError what the keyboard shows when the operator confirms a blank entry
/// @param pValue in: the initial text, out: the entered text
PLATFORM_API BYTE CallKeyboard(const std::wstring& strError, const std::wstring& strTitle,
                               std::wstring* pValue);

/// Enters a number.
/// @param pResult receives the number as the operator typed it
/// @param nOption1 1 for numbers with decimals, else 0
PLATFORM_API BYTE CallNumberPad(const std::wstring& strTitle, const std::wstring& strInitial,
                                std::wstring* pResult, double* pNumber, BYTE nOption1,
                                BYTE nOption2);
