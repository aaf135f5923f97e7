// The curve set: every curve of the captures in hand, one list per channel.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "curves/RTCurveData.h"
#include "platform/system/Object.h"

using RTCurveList = std::vector<std::shared_ptr<RTCurveData>>;

/// Three lists of curves, oldest first. A set only grows; it is replaced as a whole.
///
/// Thread safety: the lists carry no lock of their own. Those of the set in hand are read and
/// appended to only under the session lock of its screen; what goes on longer (painting, saving)
/// copies the list under the lock and works on the copy.
class CRTCurves : public CObject {
    DECLARE_SERIAL(CRTCurves)

  public:
    static constexpr std::size_t CHANNEL_COUNT = 3;
    static constexpr std::uint8_t CURRENT_VERSION = 14;

    /// Makes an empty curve for nCapacity values, appends it to a channel's list and returns it.
    /// @param nChannel 0 to 2
    /// @throws CMemoryException with the set unchanged
    std::shared_ptr<RTCurveData> AddCurve(std::size_t nChannel, std::uint32_t nCapacity);

    /// The oldest curve of a channel, or null.
    std::shared_ptr<RTCurveData> FirstCurve(std::size_t nChannel) const {
        return m_lstCurves[nChannel].empty() ? nullptr : m_lstCurves[nChannel].front();
    }

    /// Stores or loads the curve set record of an .rt3 file. Loading appends to the lists; at an
    /// exception the curves read completely stay.
    /// @throws CArchiveException, CFileException, CMemoryException
    void Serialize(CArchive& ar) override;

    std::array<RTCurveList, CHANNEL_COUNT> m_lstCurves;
    /// Format version: of the file for a loaded set, 0 for files from before versioning.
    std::uint8_t m_byVersion = CURRENT_VERSION;
};
