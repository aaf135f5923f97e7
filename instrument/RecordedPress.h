// A press that repeats a recorded stroke.
#pragma once

#include "instrument/PressSignal.h"
#include "instrument/RecordingFile.h"

/// How a recording is played.
struct ReplaySettings {
    double m_dRowsPerSecond = 1000;
    double m_dFirstScale = 20;     ///< value units per unit of the first column
    double m_dSecondScale = 1000;  ///< value units per unit of the second column
};

/// Every channel gets the recorded stroke, with straight lines between its rows. The lines follow
/// the recording: contact where the first quantity is above 2 percent of its largest value, away
/// from home where the second (without one: the first) is above 1 percent, on the way back from the
/// row with the largest first quantity.
class CRecordedPress : public IPressSignal {
  public:
    /// @throws CRecordingError when the recording lasts less than 0.05 s at that rate
    CRecordedPress(Recording recording, const ReplaySettings& settings);

    /// How many values of the recording do not fit 16 bits and are clamped.
    std::size_t CountClamped() const;

    double GetStrokeSeconds() const override { return m_dStrokeSeconds; }
    const StrokePhases& GetPhases() const override { return m_phases; }
    void Read(std::uint64_t nStroke, double dSeconds, std::span<PressSample> channels) override;

  private:
    const Recording m_recording;
    const ReplaySettings m_settings;
    double m_dStrokeSeconds;
    StrokePhases m_phases;
};
