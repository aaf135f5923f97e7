// What a capture file says about the instrument that made it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// The beginning of an .rt3 file, as far as its version holds it.
struct CaptureFileHead {
    std::optional<std::uint8_t> m_nMode;           ///< instrument mode
    std::optional<std::uint8_t> m_nPositionInput;  ///< kind of second input
};

/// Reads the head of a file. Of a file that cannot be read, or ends before, nothing is known: the
/// screen tells the operator when it opens the file.
CaptureFileHead ReadCaptureFileHead(const std::wstring& strPath);
