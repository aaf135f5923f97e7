// The command line of rtpanel.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/InstrumentOptions.h"
#include "host/LinkOptions.h"

struct Options : InstrumentOptions, LinkOptions {
    std::wstring m_strSampleTime;  ///< seconds as typed; empty: the screen's own
    std::wstring m_strTrigger;     ///< percent as typed; empty: the screen's own

    bool m_bDesktop = false;

    std::optional<double> m_dScale;  ///< of all windows; none: by the display
    bool m_bFitDisplay = false;      ///< without a scale: as large as fits, whatever the display

    std::wstring m_strLimits;          ///< strokes are judged by this file; empty: they are not
    std::size_t m_nLimitsChannel = 1;  ///< those of this channel, from 1
    bool m_bPassOutput = false;        ///< a stroke that passes is told to the instrument
    std::wstring m_strVerdictLog;      ///< gets a line for each stroke; empty: none

    std::string m_strDemo;          ///< folder for what the demonstration makes; empty: no demo
    std::string m_strDataFolder;    ///< with lang and RealTimeFiles; empty: MakeDataFolder's
    std::string m_strSettingsFile;  ///< empty: the current user's
    std::wstring m_strLanguage;     ///< empty: the one that the panel is set to
    std::string m_strCaptureFile;   ///< capture to open at once, in the viewer; empty: none
};

/// Reads the arguments behind the program's name.
/// @throws CUsageError, CHelpRequest
Options ReadOptions(std::span<const char* const> arguments);
