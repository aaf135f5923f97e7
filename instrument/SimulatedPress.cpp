#include "instrument/SimulatedPress.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double STROKE_SECONDS = 1.5;
constexpr double DOWN_BEGIN = 0.08, DOWN_END = 0.50;  // seconds: the ram's way down,
constexpr double UP_BEGIN = 0.58, UP_END = 0.92;      // and its way back
constexpr double TRAVEL = 4200;                       // value units
constexpr double PEAK_FORCE = 3800;

// Parts of the travel.
constexpr double CONTACT = 0.40;
constexpr double SNAP = 0.68, SNAP_WIDTH = 0.03;
constexpr double RELEASE = 0.46;  // the part springs back only so far

constexpr double CHANNEL_DELAY = 0.04;  // seconds that each further channel comes later
constexpr double CHANNEL_GAIN = 0.8;    // its force, as a part of the channel before

/// 0 to 1 with an even start and stop.
double Ease(double d) { return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(d, 0.0, 1.0)); }

/// The ram's travel at a time, 0 (home) to 1 (bottom).
double FindTravel(double dSeconds) {
    if (dSeconds < UP_BEGIN) return Ease((dSeconds - DOWN_BEGIN) / (DOWN_END - DOWN_BEGIN));
    return 1 - Ease((dSeconds - UP_BEGIN) / (UP_END - UP_BEGIN));
}

/// The time at which the travel passes a part of the way, on the way down or back.
double FindTime(double dTravel, bool bDown) {
    const double dPart = std::acos(1 - 2 * dTravel) / std::numbers::pi;
    return bDown ? DOWN_BEGIN + dPart * (DOWN_END - DOWN_BEGIN)
                 : UP_END - dPart * (UP_END - UP_BEGIN);
}

/// The force on the way down, as a part of the peak: rises from the contact, falls suddenly when
/// the part snaps in and rings a little, then rises ever more steeply to the bottom.
double FindForceDown(double dTravel) {
    if (dTravel < CONTACT) return 0;
    if (dTravel < SNAP) return 0.62 * std::pow((dTravel - CONTACT) / (SNAP - CONTACT), 1.4);
    const double dBeyond = dTravel - SNAP;
    if (dBeyond < SNAP_WIDTH) return 0.62 - 0.34 * Ease(dBeyond / SNAP_WIDTH);
    const double dAfter = dBeyond - SNAP_WIDTH;
    const double dRinging = 0.05 * std::exp(-dAfter / 0.02) * std::sin(dAfter / 0.003);
    const double dRise = dAfter / (1 - SNAP - SNAP_WIDTH);
    return 0.28 + 0.72 * dRise * dRise + dRinging;
}

/// The force on the way back, as a part of the peak.
double FindForceBack(double dTravel) {
    if (dTravel < RELEASE) return 0;
    const double dRest = (dTravel - RELEASE) / (1 - RELEASE);
    return 0.25 * dRest + 0.75 * std::pow(dRest, 5);
}

}  // namespace

CSimulatedPress::CSimulatedPress(SecondInput secondInput, std::uint32_t nSeed)
    : m_secondInput(secondInput), m_random(nSeed) {
    m_phases = {DOWN_BEGIN, FindTime(CONTACT, true), UP_BEGIN, FindTime(RELEASE, false), UP_END};
}

double CSimulatedPress::GetStrokeSeconds() const { return STROKE_SECONDS; }

void CSimulatedPress::Read(std::uint64_t nStroke, double dSeconds,
                           std::span<PressSample> channels) {
    if (nStroke != m_nStroke) {
        m_nStroke = nStroke;
        m_dStrokeGain = 1 + MakeNoise(0.04);
    }
    double dGain = m_dStrokeGain;
    for (PressSample& sample : channels) {
        sample = ReadChannel(dSeconds);
        sample.m_dForce = sample.m_dForce * dGain + MakeNoise(9);
        sample.m_dSecond += MakeNoise(3);
        dGain *= CHANNEL_GAIN;
        dSeconds -= CHANNEL_DELAY;
    }
}

PressSample CSimulatedPress::ReadChannel(double dSeconds) {
    const double dTravel = FindTravel(dSeconds);
    const double dForce =
        PEAK_FORCE * (dSeconds < UP_BEGIN ? FindForceDown(dTravel) : FindForceBack(dTravel));
    if (m_secondInput != SecondInput::Voltage) return {dForce, TRAVEL * dTravel};

    const double dHum = 25 * std::sin(2 * std::numbers::pi * 50 * dSeconds);
    return {dForce, 400 + 0.7 * dForce + dHum};
}

double CSimulatedPress::MakeNoise(double dAmplitude) {
    // Two draws make the small deviations the frequent ones.
    const auto draw = [this] {
        return static_cast<double>(m_random() - std::minstd_rand::min()) /
               (std::minstd_rand::max() - std::minstd_rand::min());
    };
    return dAmplitude * (draw() + draw() - 1);
}
