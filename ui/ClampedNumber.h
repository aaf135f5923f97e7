// How a touched edit control shows the number that was entered.
#pragma once

#include <string>

/// The number, brought between the limits, as text: with one decimal or as a whole number, rounded,
/// always with a decimal point. What is not a number becomes the lower limit.
std::wstring FormatClamped(double dNumber, double dMin, double dMax, bool bOneDecimal);
