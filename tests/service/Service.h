// What the tests of the programs that serve an instrument have in common.
#pragma once

#include <string>
#include <vector>

#include "platform/system/Paths.h"
#include "platform/system/Text.h"
#include "tests/link/Support.h"
#include "tests/support/ChildProgram.h"

/// The image of a start.
inline Bytes MakeStart(unsigned nMilliseconds, unsigned nRate, bool bContinuous = false) {
    Bytes image(44);
    const auto put = [&](std::size_t n, unsigned nValue) {
        image[n] = static_cast<std::uint8_t>(nValue & 0xFF);
        image[n + 1] = static_cast<std::uint8_t>(nValue >> 8);
    };
    image[0] = 39;
    image[1] = 1;
    image[2] = 41;
    image[3] = 2;
    put(4, nMilliseconds);
    image[6] = bContinuous ? 1 : 0;
    put(7, nRate);
    return image;
}

inline const Bytes STOP = MakeStart(0, 0);

/// The command line of rtinstrument.
inline std::vector<std::string> Instrument(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ToUtf8(GetExecutableFolder()).append("/rtinstrument"));
    return arguments;
}

/// The port that a program prints behind a text.
inline std::uint16_t ReadPort(CChildProgram& program, const std::string& strBefore) {
    const std::string strPort = program.Await(strBefore);
    return static_cast<std::uint16_t>(strPort.empty() ? 0 : std::stoi(strPort));
}
