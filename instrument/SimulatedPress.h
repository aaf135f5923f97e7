// A press without a press: strokes with approach, contact, snap, peak and release.
#pragma once

#include <random>

#include "curves/InstrumentMode.h"
#include "instrument/PressSignal.h"

/// A stroke takes 1.5 s: the ram goes down, meets the part, the part snaps in, the force rises to
/// its peak of about 3800, the ram turns and releases the part with less force than it took. The
/// further channels are tools that come a little later and meet less resistance.
///
/// The second quantity is the ram's position, 0 to 4200 (thousandths of its unit), or the voltage
/// of a force sensor in millivolts, with hum. Noise is the same for the same seed.
class CSimulatedPress : public IPressSignal {
  public:
    CSimulatedPress(SecondInput secondInput, std::uint32_t nSeed);

    double GetStrokeSeconds() const override;
    const StrokePhases& GetPhases() const override { return m_phases; }
    void Read(std::uint64_t nStroke, double dSeconds, std::span<PressSample> channels) override;

  private:
    PressSample ReadChannel(double dSeconds);
    double MakeNoise(double dAmplitude);

    SecondInput m_secondInput;
    StrokePhases m_phases;
    std::minstd_rand m_random;
    std::uint64_t m_nStroke = 0;
    double m_dStrokeGain = 1;  ///< no two strokes have quite the same force
};
