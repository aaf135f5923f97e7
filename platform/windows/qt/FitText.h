// Texts of any length in the room that there is for them.
#pragma once

#include <QFontMetrics>
#include <QString>

#include "platform/system/Export.h"

/// Breaks a text into rows, behind a space or a separator of folders where it can, else anywhere.
/// One that needs more rows than there are loses what is in its middle.
/// @param nWidth of a row, in pixels
/// @return the rows, with a line feed between two of them
PLATFORM_API QString FitText(QString text, const QFontMetrics& metrics, int nWidth, int nMaxRows);
