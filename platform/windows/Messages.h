// Window messages with their parameters, notification codes and command numbers that the framework
// itself knows.
#pragma once

#include "platform/drawing/Geometry.h"
#include "platform/system/Types.h"

using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// A window's entry in the process-wide window table. 0 means no window; a handle is never used
/// again after its window is gone, so a stale handle is recognised as stale.
using WindowHandle = std::uintptr_t;

constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_ERASEBKGND = 0x0014;  ///< wParam: the CDC to erase with
constexpr UINT WM_COMMAND = 0x0111;     ///< wParam: control id, notification code in the high word
constexpr UINT WM_CTLCOLORSTATIC = 0x0138;  ///< wParam: the CDC, lParam: the control (CWnd);
                                            ///< gives its background brush, or 0 for none
constexpr UINT WM_MOUSEMOVE = 0x0200;       ///< lParam: x and y, see PointFromParam
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_DROPFILES = 0x0233;  ///< lParam: a std::vector<std::wstring> of full paths

/// Notification codes of WM_COMMAND.
constexpr UINT BN_CLICKED = 0;
constexpr UINT LBN_SELCHANGE = 1;
constexpr UINT CBN_SELCHANGE = 1;
constexpr UINT EN_CHANGE = 0x0300;

/// Control ids with a meaning of their own, and the results of a modal run.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDNO = 7;

constexpr WPARAM CommandParam(UINT nID, UINT nCode) {
    return (nID & 0xFFFFu) | (static_cast<WPARAM>(nCode) << 16);
}

/// A mouse message's position: x in the low, y in the high 16 bits, both signed.
constexpr LPARAM PointParam(CPoint point) {
    return static_cast<LPARAM>((static_cast<std::uint32_t>(point.x) & 0xFFFFu) |
                               (static_cast<std::uint32_t>(point.y) << 16));
}
constexpr CPoint PointFromParam(LPARAM lParam) {
    return {static_cast<std::int16_t>(lParam & 0xFFFF),
            static_cast<std::int16_t>((lParam >> 16) & 0xFFFF)};
}
