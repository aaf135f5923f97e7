// The press that the command line asks for.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/InstrumentOptions.h"
#include "instrument/InstrumentCommand.h"
#include "instrument/PressSignal.h"

struct Press {
    std::unique_ptr<IPressSignal> m_pSignal;
    std::string m_strText;                      ///< what it is, in a line for people
    std::optional<CaptureRequest> m_selfStart;  ///< a capture that it begins by itself
};

/// @throws CRecordingError
Press MakePress(const InstrumentOptions& options);
