// OnscreenKeyboard: the library with which a panel without a keyboard enters texts and numbers. It
// exports the two functions below and nothing else.
//
// Both run a modal window of their own and return when the operator has confirmed or cancelled;
// they are called on the user-interface thread. They return 1 when an entry was confirmed and 0
// when it was cancelled; what is received through pointers is written only when it was confirmed.
// Any pointer may be null: what would be read is then blank, what would be written is dropped.
//
// The keys carry letters, signs and the pictures of BitmapRes, no words, so that they need no
// translation; without BitmapRes they carry short texts. A keyboard that is plugged in works too:
// it types into the entry, Enter confirms, Escape cancels.
#pragma once

#include <string>

#define KEYBOARD_API extern "C" __attribute__((visibility("default")))

/// Enters a text, such as a file's name: of at most 100 characters, without control characters.
/// @param pError shown when the operator confirms a blank entry, which is refused; without it, an
///        English text is shown
/// @param pValue in: the initial text, out: the entered text
/// @param pFlag1, pFlag2, pFlag3 reserved: neither read nor written
KEYBOARD_API unsigned char ShowKeyboard(const std::wstring* pError, const std::wstring* pTitle,
                                        std::wstring* pValue, unsigned char* pFlag1,
                                        unsigned char* pFlag2, unsigned char* pFlag3);

/// Enters a number of at most 12 digits. An entry that is none is refused.
/// @param strInitial the number to begin with, which the first digit typed replaces; a text that is
///        no number counts as blank
/// @param pResult receives the number's text as it was typed, with a point and at least one digit
/// in
///        front of it
/// @param pOption1 how exact the number is: nonzero, three digits behind the point; 0, one, which
/// is
///        what a caller needs that rounds to whole numbers
/// @param pOption2 reserved: neither read nor written
KEYBOARD_API unsigned char ShowNumberPad(std::wstring strTitle, std::wstring strInitial,
                                         std::wstring* pResult, double* pNumber,
                                         unsigned char* pOption1, unsigned char* pOption2);
