// Tells by the sequence numbers what got lost.
#pragma once

#include <cstdint>
#include <optional>

/// Judges the frames of one sender, in the order in which they come. Sequence numbers run over.
class CFrameOrder {
  public:
    /// Takes a frame's number; the first one as it comes.
    /// @return how many frames are missing in front of this one; nothing when it is an old one, to
    ///         be dropped
    std::optional<std::uint32_t> Take(std::uint32_t nSequence) {
        const std::uint32_t nMissing = m_expected ? nSequence - *m_expected : 0;
        if (nMissing >= 0x80000000) return std::nullopt;
        m_expected = nSequence + 1;
        return nMissing;
    }

    /// The next number is a first one again.
    void Restart() { m_expected.reset(); }

  private:
    std::optional<std::uint32_t> m_expected;
};
