// The display that the windows are to stand on: whether there is one, and what a person hears when
// there is none or it cannot be opened.
#pragma once

class QString;

/// To be called before the window system begins. With a Wayland display alone, it chooses that; all
/// else is Qt's choice. Without a display the program ends as EndWithoutDisplay says.
/// @param pAdvice what the program can do without one, as a clause, or empty; must live on
void ChooseDisplay(const char* pAdvice);

/// Says on standard error which display could not be opened and how to get one, and ends the
/// program with code 1.
/// @param strReason what Qt says about it
[[noreturn]] void EndWithoutDisplay(const QString& strReason);
