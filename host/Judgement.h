// What a panel judges its strokes by: the options about it, made ready.
#pragma once

#include <memory>
#include <string>

#include "evaluation/Limits.h"
#include "host/Options.h"
#include "host/VerdictLog.h"

struct Judgement {
    Limits m_limits;
    std::wstring m_strTitle;              ///< the limits file's; when it has none, the file's name
    std::size_t m_nChannel;               ///< from 0
    bool m_bPassOutput;                   ///< a stroke that passes is told to the instrument
    std::unique_ptr<CVerdictLog> m_pLog;  ///< null: none is wanted
};

/// @throws CUsageError when the mode that the options tell has no strokes to be judged
void CheckJudgedMode(const Options& options);

/// Reads the limits file and opens the log that the options name; null: nothing is judged.
/// @throws CUsageError that says what is wrong with them, or as CheckJudgedMode does: of
///         an instrument on a link the mode is not known yet
std::unique_ptr<Judgement> PrepareJudgement(const Options& options);
