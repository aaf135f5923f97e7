// Frames as bytes, written down by hand.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "link/Frame.h"

using Bytes = std::vector<std::uint8_t>;

/// Bytes of hexadecimal digits; spaces do not matter.
inline Bytes FromHex(std::string_view strDigits) {
    Bytes bytes;
    std::string strPair;
    for (const char ch : strDigits) {
        if (ch != ' ') strPair += ch;
        if (strPair.size() < 2) continue;
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(strPair, nullptr, 16)));
        strPair.clear();
    }
    return bytes;
}

/// One letter for each kind of frame.
inline char GetKindLetter(FrameKind kind) {
    return kind <= FrameKind::Goodbye ? "?JHPMAKRG"[static_cast<int>(kind)] : '?';
}

/// A frame's bytes.
inline Bytes MakeBytes(FrameKind kind, std::uint32_t nSequence, Bytes payload = {}) {
    Bytes bytes;
    MakeFrame(kind, 0, nSequence, std::make_shared<Bytes>(std::move(payload))).AppendTo(bytes);
    return bytes;
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// A conversation, as docs/link.md writes it down.
namespace example {
inline const Bytes JOIN = FromHex(
    "A5 52 54 5A 01 01 00 00 00 00 00 00 13 00 00 00 D4 22 2B 5D 01 01 01 00 44 33 22 11 01 00 00 "
    "00 06 64 65 73 6B 20 31 1F FC 91 50");
inline const Bytes MESSAGE = FromHex(
    "A5 52 54 5A 01 04 00 00 01 00 00 00 30 00 00 00 66 07 7E 60 01 00 00 00 27 01 29 02 B8 0B 00 "
    "40 9C 7D 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
    "00 00 00 00 00 00 58 B2 2D D2");
inline const Bytes HELLO = FromHex(
    "A5 52 54 5A 01 02 00 00 00 00 00 00 1F 00 00 00 73 1E 33 6C 01 01 01 01 40 9C 20 4E 00 00 00 "
    "00 0D F0 FE CA 01 00 00 00 05 70 72 65 73 73 04 30 30 34 32 FC 29 1E B5");
inline const Bytes ACK = FromHex(
    "A5 52 54 5A 01 05 00 00 01 00 00 00 05 00 00 00 5A CE 29 6F 01 00 00 00 00 35 59 E3 A0");
inline const Bytes RUNNING = FromHex(
    "A5 52 54 5A 01 03 00 00 02 00 00 00 2D 00 00 00 CB 95 1C E8 27 00 00 00 01 00 00 01 00 00 00 "
    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
    "00 00 00 9A 5E 43 EB");
inline const Bytes SAMPLES = FromHex(
    "A5 52 54 5A 01 03 00 00 03 00 00 00 10 00 00 00 F7 B5 42 CF 03 00 00 00 00 05 00 04 01 00 FF "
    "FF E8 03 00 80 04 CD 71 3B");
inline const Bytes KEEPALIVE =
    FromHex("A5 52 54 5A 01 06 00 00 04 00 00 00 00 00 00 00 E9 C4 11 1D E9 C4 11 1D");
inline const Bytes GOODBYE = FromHex(
    "A5 52 54 5A 01 08 00 00 05 00 00 00 06 00 00 00 E5 65 46 41 08 00 03 62 79 65 53 3B CF 6A");
}  // namespace example
