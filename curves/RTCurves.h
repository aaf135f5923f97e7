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
/// Hosts: they read the lists and FirstCurve; sets are made, filled, stored and loaded by the
/// screen.
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

    /// Stores the curve set record of an .rt3 file in its current version, or loads one of any
    /// version.
    ///
    /// Stored, each curve is written as far as its count and its pulse count had come when its turn
    /// began, so a capture may go on meanwhile; the lists themselves must not change (store a copy
    /// of the set in hand). From the first list whose first curve has extremes of all 0 on, the
    /// extremes of every curve are computed anew, written, and kept in the curve.
    ///
    /// Loaded curves are appended to the lists; at an exception those read completely stay. Memory
    /// is taken only for what the rest of the file can hold: a longer value or pulse count is
    /// reported as a file that ends too early, before any of it is read. For any file it is at most
    /// 16 times its length. Beside it, what a program needs to work on stays free: a set that
    /// leaves less does not fit.
    /// @throws CArchiveException, CFileException, CMemoryException, CUserException
    void Serialize(CArchive& ar) override;

    /// The length in bytes of the record that is stored.
    std::uint64_t GetRecordLength() const;

    std::array<RTCurveList, CHANNEL_COUNT> m_lstCurves;
    /// Format version: of the file for a loaded set, 0 for files from before versioning.
    std::uint8_t m_byVersion = CURRENT_VERSION;
};
