#include "instrument/RecordedPress.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr double SHORTEST_STROKE = 0.05;  // seconds

/// The rows in which a quantity is above a part of its largest value, from the first such row to
/// behind the last.
struct RowRange {
    std::size_t m_nBegin;
    std::size_t m_nEnd;
};

RowRange FindActiveRows(const std::vector<double>& values, double dPart) {
    const double dLevel = dPart * *std::max_element(values.begin(), values.end());
    const auto isActive = [dLevel](double d) { return d > dLevel; };
    const auto itFirst = std::find_if(values.begin(), values.end(), isActive);
    const auto itLast = std::find_if(values.rbegin(), values.rend(), isActive);
    if (itFirst == values.end()) return {0, 0};
    return {static_cast<std::size_t>(itFirst - values.begin()),
            static_cast<std::size_t>(values.rend() - itLast)};
}

double Interpolate(const std::vector<double>& values, double dRow) {
    if (values.empty()) return 0;
    const auto nRow = std::min(static_cast<std::size_t>(dRow), values.size() - 1);
    const auto nNext = std::min(nRow + 1, values.size() - 1);
    return std::lerp(values[nRow], values[nNext], std::min(dRow - static_cast<double>(nRow), 1.0));
}

}  // namespace

CRecordedPress::CRecordedPress(Recording recording, const ReplaySettings& settings)
    : m_recording(std::move(recording)), m_settings(settings),
      m_dStrokeSeconds(static_cast<double>(m_recording.m_adFirst.size()) /
                       settings.m_dRowsPerSecond) {
    if (m_dStrokeSeconds < SHORTEST_STROKE)
        throw CRecordingError("a recording of " + std::to_string(m_recording.m_adFirst.size()) +
                              " rows lasts less than 0.05 s at this rate");

    const std::vector<double>& first = m_recording.m_adFirst;
    const std::vector<double>& travel =
        m_recording.m_adSecond.empty() ? first : m_recording.m_adSecond;
    const RowRange cycle = FindActiveRows(travel, 0.01);
    const RowRange contact = FindActiveRows(first, 0.02);
    const auto nPeak = std::max_element(first.begin(), first.end()) - first.begin();
    const auto toSeconds = [&settings](auto nRow) {
        return static_cast<double>(nRow) / settings.m_dRowsPerSecond;
    };
    m_phases = {toSeconds(cycle.m_nBegin), toSeconds(contact.m_nBegin), toSeconds(nPeak),
                toSeconds(contact.m_nEnd), toSeconds(cycle.m_nEnd)};
}

std::size_t CRecordedPress::CountClamped() const {
    const auto count = [](const std::vector<double>& values, double dScale) {
        return std::ranges::count_if(values, [dScale](double dValue) {
            const double dScaled = std::round(dScale * dValue);
            return dScaled < INT16_MIN || dScaled > INT16_MAX;
        });
    };
    return static_cast<std::size_t>(count(m_recording.m_adFirst, m_settings.m_dFirstScale) +
                                    count(m_recording.m_adSecond, m_settings.m_dSecondScale));
}

void CRecordedPress::Read(std::uint64_t, double dSeconds, std::span<PressSample> channels) {
    const double dRow = dSeconds * m_settings.m_dRowsPerSecond;
    const PressSample sample{m_settings.m_dFirstScale * Interpolate(m_recording.m_adFirst, dRow),
                             m_settings.m_dSecondScale * Interpolate(m_recording.m_adSecond, dRow)};
    std::fill(channels.begin(), channels.end(), sample);
}
