// Holds what a screen on a linked instrument has and shows to what the instrument sent.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "soak/CountingInstrument.h"
#include "soak/LinkedScreen.h"
#include "soak/RoughWay.h"

/// Silence after which a connection is lost.
constexpr std::uint64_t SILENCE_MS = 3000;

/// Reports what is wrong. One thread at a time, beside the user interface's.
class CLinkCheck {
  public:
    /// @param nPatience how long the user-interface thread may take to answer, in milliseconds
    CLinkCheck(CLinkedScreen& screen, const CSentCurves& sent, const CRoughWay& way,
               unsigned nPatience, CSoakRecord& record);

    /// The values of a curve follow one another, from the first of a curve that was sent. A line
    /// may lose some, which the operator is told.
    void CheckValues(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel,
                     std::uint32_t nCount);

    /// The screen does not stay in a capture without an instrument, or with one that is idle, or
    /// one that the link does not know of.
    void CheckState();

  private:
    using Hole = std::pair<std::uint16_t, std::uint16_t>;  ///< the sets around it
    using Moment = std::optional<std::uint64_t>;
    struct Checked {
        std::uint32_t m_nValues = 0;
        std::uint16_t m_nSet = 0;  ///< of the last one
    };

    bool IsLossTold(const std::shared_ptr<RTCurveData>& spCurve, std::size_t nChannel);
    void Fault(const std::string& strWhat);

    CLinkedScreen& m_screen;
    const CSentCurves& m_sent;
    const CRoughWay& m_way;
    const std::uint64_t m_nDelay;  ///< of what a screen does at once, on this machine
    CSoakRecord& m_record;
    Moment m_capturing;      ///< since when
    Moment m_unknown;        ///< since when that, and the link says it is not
    Moment m_lossTold;       ///< when last
    std::set<Hole> m_holes;  ///< of all curves
    /// What was found right, by curve.
    std::map<std::weak_ptr<RTCurveData>, Checked, std::owner_less<>> m_checked;
};
