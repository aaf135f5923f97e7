// What the Real Time Mode screen looks like: dialog template 102.
#pragma once

#include "platform/windows/DialogTemplate.h"

enum ScreenControl : int {
    IDC_BAR = 0,  ///< whichever bar is shown: the one child without an id of its own
    IDC_START = 1004,
    IDC_SAMPLE_TIME = 1005,
    IDC_STOP = 1006,
    IDC_ZOOM_ALL = 1007,
    IDC_SAVE = 1008,
    IDC_LOAD = 1009,
    IDC_CLEAR = 1010,
    IDC_PLOT_2 = 1011,
    IDC_PLOT_1 = 1014,
    IDC_CONTINUOUS = 1015,  ///< a command without a control
    IDC_CHANNEL_LIST = 1016,
    IDC_SECONDS = 1018,
    IDC_DISPLAY_LIST = 1019,
    IDC_SAMPLE_TIME_MODE = 1020,
    IDC_SETTINGS = 1021,
    IDC_TRIGGER_LABEL = 1024,
    IDC_TRIGGER = 1025,
    IDC_TRIGGER_UNIT = 1026,
    IDC_PLOT_3 = 1050,
};

/// By channel. Only the plot on show is visible.
inline constexpr int PLOT_CONTROLS[] = {IDC_PLOT_1, IDC_PLOT_2, IDC_PLOT_3};

inline constexpr DialogItem SCREEN_ITEMS[] = {
    {IDC_CHANNEL_LIST, ControlKind::DropDownList, L"", 7, 4, 94, 30, CS_SORT, {3187, L"Channel"}},
    {IDC_SAMPLE_TIME_MODE, ControlKind::StyledButton, L"Sample Time:", 107, 3, 103, 24},
    {IDC_SAMPLE_TIME, ControlKind::Edit, L"", 212, 12, 29, 14, CS_BORDER, {1514, L"Sample Time:"}},
    {IDC_SECONDS, ControlKind::Static, L"seconds", 243, 14, 56, 13},
    {IDC_DISPLAY_LIST,
     ControlKind::DropDownList,
     L"",
     294,
     4,
     131,
     30,
     CS_NONE,
     {3188, L"Quantity"}},
    {IDC_TRIGGER_LABEL, ControlKind::Static, L"Trigger:", 429, 14, 45, 16},
    {IDC_TRIGGER, ControlKind::Edit, L"", 475, 12, 32, 14, CS_BORDER, {1520, L"Trigger level"}},
    {IDC_TRIGGER_UNIT, ControlKind::Static, L"%", 509, 14, 14, 13},
    {IDC_START, ControlKind::PushButton, L"Start", 4, 42, 47, 24},
    {IDC_STOP, ControlKind::PushButton, L"Stop", 4, 72, 47, 24},
    {IDC_CLEAR, ControlKind::PushButton, L"Clear", 4, 102, 47, 24},
    {IDC_ZOOM_ALL, ControlKind::PushButton, L"Zoom All", 4, 131, 47, 24},
    {IDC_LOAD, ControlKind::PushButton, L"Load", 4, 178, 47, 24},
    {IDC_SAVE, ControlKind::PushButton, L"Save", 4, 209, 47, 24},
    {IDC_SETTINGS, ControlKind::StyledButton, L"Settings", 4, 248, 47, 24},
    {IDC_PLOT_1, ControlKind::StaticFrame, L"", 58, 30, 465, 211},
    {IDC_PLOT_2, ControlKind::StaticFrame, L"", 58, 30, 465, 211, CS_HIDDEN},
    {IDC_PLOT_3, ControlKind::StaticFrame, L"", 58, 30, 465, 211, CS_HIDDEN},
};

inline constexpr DialogTemplate SCREEN_TEMPLATE{102, L"Real Time Mode", 530, 280, L"MS Shell Dlg",
                                                8,   SCREEN_ITEMS};
