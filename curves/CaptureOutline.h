// What an .rt3 file says without its values: enough to tell what it holds, at the cost of a few
// hundred bytes read.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "curves/CaptureRecords.h"
#include "curves/CurveRecord.h"
#include "platform/system/Object.h"

/// One curve of a capture file.
struct RTCurveOutline : RTCurveHead {
    std::uint32_t m_nPulses = 0;
    /// Of the values: those that the file gives; found from the values where it gives none, or all
    /// four as 0, which stands for extremes that were not computed.
    RTExtremes m_foundExtremes;
};

/// A capture file as an outline; loads only.
struct RTCaptureOutline : CObject {
    /// Loads the three records of any version, and passes over values and pulse records. Refuses
    /// what a load of the whole refuses. At an exception the outline holds what was read before it.
    /// @throws CFileException, CArchiveException, CMemoryException, CUserException
    void Serialize(CArchive& ar) override;

    bool HasCurves() const;

    RTScreenRecord m_screen;
    RTPlotRecord m_plots;
    std::uint8_t m_byVersion = 0;  ///< of the curve set
    std::array<std::vector<RTCurveOutline>, CRTCurves::CHANNEL_COUNT> m_lstCurves;
    std::uint64_t m_nBytesBehind = 0;  ///< behind the records
};
