// What a press does, as a signal that an instrument samples.
#pragma once

#include <cstdint>
#include <span>

/// The digital lines of the press, bits of the status byte.
enum PressLine : std::uint8_t {
    PRESSLINE_CYCLE = 1,    ///< line 1: the ram is away from its home position
    PRESSLINE_CONTACT = 2,  ///< line 2: the tool touches the part
    PRESSLINE_RETURN = 4,   ///< line 3: the ram is on its way back
    PRESSLINE_PASS = 8,     ///< line 4: the pass output, wired back
};

/// The two quantities of one channel, in value units; what does not fit 16 bits is clamped.
struct PressSample {
    double m_dForce = 0;
    double m_dSecond = 0;  ///< position or voltage
};

/// The times at which the lines change, in seconds from the beginning of the stroke.
struct StrokePhases {
    double m_dDeparts = 0;   ///< the ram leaves its home position
    double m_dTouches = 0;   ///< the tool meets the part
    double m_dTurns = 0;     ///< the ram begins its way back
    double m_dReleases = 0;  ///< the tool leaves the part
    double m_dHome = 0;      ///< the ram is back

    /// Lines 1 to 3 at a time.
    std::uint8_t GetLines(double dSeconds) const {
        std::uint8_t byLines = 0;
        if (dSeconds >= m_dDeparts && dSeconds < m_dHome) byLines |= PRESSLINE_CYCLE;
        if (dSeconds >= m_dTouches && dSeconds < m_dReleases) byLines |= PRESSLINE_CONTACT;
        if (dSeconds >= m_dTurns && dSeconds < m_dHome) byLines |= PRESSLINE_RETURN;
        return byLines;
    }
};

/// A press that makes one stroke after the other, each of the same length, without a pause between
/// them (a press's rest in its home position is part of the stroke).
///
/// Threads: the instrument's thread, after it was made.
class IPressSignal {
  public:
    virtual ~IPressSignal() = default;

    /// Length of a stroke, in seconds; 0.05 or more.
    virtual double GetStrokeSeconds() const = 0;

    virtual const StrokePhases& GetPhases() const = 0;

    /// Takes the next sample of every channel. Times do not go back within a stroke.
    /// @param nStroke counts the strokes from 0
    /// @param dSeconds from the beginning of the stroke, below its length
    virtual void Read(std::uint64_t nStroke, double dSeconds, std::span<PressSample> channels) = 0;
};
