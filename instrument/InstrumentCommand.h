// The commands that an instrument understands, read from message images.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

/// Begin a capture.
struct CaptureRequest {
    std::uint16_t m_nSampleMilliseconds = 0;  ///< 0: no end, with m_bContinuous
    bool m_bContinuous = false;               ///< until stopped, a new curve for each stroke
    std::uint16_t m_nValueRate = 0;      ///< values per second and channel; of a pair both count
    std::uint16_t m_nTriggerTenths = 0;  ///< tenths of a percent of full scale; 0: no trigger
    friend bool operator==(const CaptureRequest&, const CaptureRequest&) = default;
};

struct StopRequest {
    friend bool operator==(const StopRequest&, const StopRequest&) = default;
};

/// Send the pass output on channel 1.
struct PassOutputRequest {
    friend bool operator==(const PassOutputRequest&, const PassOutputRequest&) = default;
};

using InstrumentCommand = std::variant<CaptureRequest, StopRequest, PassOutputRequest>;

/// Reads a message image. A capture command with every parameter 0 is the stop command.
/// @return nothing when the image is cut short, or not a command
std::optional<InstrumentCommand> ReadCommand(std::string_view image);
