// The private messages with which the bars, and the screen itself, ask the screen for something.
// Posted to the screen's window; lParam is 0.
#pragma once

#include "platform/windows/Messages.h"

constexpr UINT WM_RT_BARCOMMAND = 1264;  ///< wParam: a BARCMD_ code
constexpr UINT WM_RT_SWITCHBAR = 1265;   ///< wParam: the bar to show, a BAR_ code
constexpr UINT WM_RT_EXPORTCSV = 1314;   ///< export the shown channel's first curve
constexpr UINT WM_RT_PASSOUTPUT = 1315;  ///< send the pass output command

constexpr WPARAM BARCMD_MARKER_A = 200;       ///< the next click in the plot places marker A
constexpr WPARAM BARCMD_MARKER_B = 201;       ///< the next click in the plot places marker B
constexpr WPARAM BARCMD_CLEAR_MARKERS = 202;  ///< remove both markers
constexpr WPARAM BARCMD_TRIGGER = 203;        ///< the next click in the plot sets the trigger level
constexpr WPARAM BARCMD_CLEAR_TRIGGER = 204;  ///< remove the trigger level

constexpr WPARAM BAR_MAINMENU = 210;
constexpr WPARAM BAR_INFO = 211;
