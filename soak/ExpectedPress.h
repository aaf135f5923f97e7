// What a simulated press sends, computed without a clock, a thread or a link.
#pragma once

#include <cstdint>
#include <vector>

#include "instrument/CaptureEngine.h"

/// What a packet's content comes to, in a row: each value with its block's digital lines above its
/// 16 bits, and the announcements of new curves.
using PressTokens = std::vector<std::uint32_t>;
constexpr std::uint32_t TOKEN_NEW_CURVE = 0xFFFFFFFF;
constexpr std::uint32_t TOKEN_END = 0xFFFFFFFE;  ///< the capture is over

/// Adds what a packet comes to. Reports come to nothing.
void AppendTokens(PressTokens& tokens, const RTPacket& packet);

/// The captures of one run of the press, each of which is asked for to its end or is the last.
class CExpectedPress {
  public:
    CExpectedPress(std::uint8_t nMode, SecondInput secondInput, std::uint32_t nSeed);

    void Start(const CaptureRequest& request);
    /// What comes next in the capture; TOKEN_END for ever behind its end.
    std::uint32_t Next();

  private:
    CCaptureEngine m_engine;
    CCaptureEngine::Time m_now{0};
    PressTokens m_tokens;
    std::size_t m_nNext = 0;
};
