// Serial lines and their like (pseudo-terminals) as the system has them.
#pragma once

#include <cstdint>
#include <string>

#include "platform/system/Export.h"

/// Opens a device for reading and writing that does not wait: exclusively, raw (8 data bits, no
/// parity, 1 stop bit; no echo, no translation, no signals), with nothing left in its buffers.
/// @param nBaud any rate that the device can have; of a pseudo-terminal it means nothing
/// @param bHardwareFlow RTS and CTS
/// @return the descriptor, for the caller to close; -1 with errno set
PLATFORM_API int OpenSerialDevice(const std::string& strPath, std::uint32_t nBaud,
                                  bool bHardwareFlow);

/// How many bytes written are not sent yet.
PLATFORM_API int CountUnsentBytes(int hDevice);

/// To be called before closing: drops what is not sent, for which closing would wait, and lets
/// others open the device again.
PLATFORM_API void ReleaseSerialDevice(int hDevice);
