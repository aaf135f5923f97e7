// The capture state of one screen: which curves are in hand and which are being filled.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "acquisition/ObjRTGeneric.h"
#include "acquisition/SampleDecoder.h"
#include "acquisition/TriggerLevel.h"
#include "plugin/RealTimeData.h"

/// What a capture file says about its curves as a whole. What is none, it does not say.
struct RTCaptureScale {
    std::optional<std::uint16_t> m_nValueRate;  ///< values per second and channel
    std::optional<std::uint16_t> m_nAuxRate;
    std::array<std::optional<std::int32_t>, RT_MAX_CHANNELS> m_anSpanValues;  ///< by plot
};

/// Begins, ends and replaces captures in a session.
///
/// Thread safety: the session lock guards the current curves, and with them the session's curve
/// set, rates and plot views. Every operation takes it itself, for a few assignments (for the
/// decoding of one packet in StoreSamples); no caller may hold it. Value arrays are allocated
/// before it is taken and old curves are freed after it is left. Flags, sample time and the plot on
/// show may be read at any time from any thread.
///
/// Exceptions: an operation that throws has changed nothing.
///
/// Ownership: part of the screen, whose session record it borrows.
class RTCapture {
  public:
    explicit RTCapture(CRealTimeData& session) : m_session(session) {}
    RTCapture(const RTCapture&) = delete;
    RTCapture& operator=(const RTCapture&) = delete;

    /// Sample time in whole seconds; not checked.
    std::int16_t GetSampleSeconds() const { return m_nSampleSeconds.load(); }
    void SetSampleSeconds(std::int16_t nSeconds) { m_nSampleSeconds.store(nSeconds); }

    /// Continuous capture is selected, instead of a sample time.
    bool IsContinuous() const { return m_bContinuous.load(); }
    /// A continuous capture that was started here runs.
    bool IsContinuousRunning() const { return m_bContinuousRunning.load(); }

    /// No capture was started here since the last one ended. A return to idle that was asked for on
    /// the reader thread is out of date when this has become false.
    bool IsIdle() const { return m_bIdle.load(); }

    /// The plot (and channel) on show, 0 to 2.
    std::uint8_t GetCurrentPlot() const { return m_nCurrentPlot.load(); }

    /// The curve that a channel is filling, or null.
    std::shared_ptr<RTCurveData> GetCurrentCurve(std::size_t nChannel) const;

    /// A set of its own with the curves in hand now, to be saved or exported while captures go on.
    /// @throws CMemoryException
    std::shared_ptr<CRTCurves> CopyCurves() const;

    // Commands of the user-interface thread.

    /// Begins a capture: takes over the host's rates and gives every channel in use a new curve, in
    /// a new set when continuous capture is selected.
    /// @param nTriggerTenths, nDisplay passed on to the instrument
    /// @return what the instrument is to be told
    /// @throws CMemoryException when there is no memory for the curves, or their size is absurd
    RTCaptureParameters Start(std::uint16_t nTriggerTenths, std::uint8_t nDisplay);

    /// The instrument has been told to stop. Values may still arrive until it reports that it is
    /// idle.
    void Stop();

    /// Puts an empty set in hand; the channels have no curve until a capture begins.
    /// @throws CMemoryException
    void Clear();

    /// Puts a loaded set in hand, with the rates and spans that its file gave, and shows the whole
    /// of the channels that it has curves of. No channel has a current curve until a capture
    /// begins. The set is the session's from now on.
    void ReplaceCurves(std::shared_ptr<CRTCurves> spCurves, const RTCaptureScale& scale);

    /// Selects continuous capture, or a sample time if it was selected.
    /// @return whether it is selected now
    bool ToggleContinuous();

    /// @param nPlot 0 to 2
    void SelectPlot(std::uint8_t nPlot);

    // Events of the packet reader's thread.

    struct SampleOutcome {
        std::size_t m_nShownPlot;  ///< the plot to repaint
        bool m_bCaptureEnded;      ///< the sample-time capture on show has all its values
    };
    /// Stores the values of a sample packet, and shows the whole of every plot.
    /// @throws CMemoryException with the values stored, but not all pulse records
    SampleOutcome StoreSamples(std::span<const std::uint8_t> payload);

    /// The instrument has reported that it is idle.
    void ReportIdle();

    /// Completes the capture that StoreSamples or ReportIdle has ended: computes the extremes of
    /// the curve on show and, with auto zoom, shows the whole of its plot. Nothing, when the next
    /// capture has been started meanwhile.
    /// @return the plot to repaint, if any
    std::optional<std::size_t> FinishCapture();

    /// The instrument has begun a new curve: it goes into a set of its own.
    /// @throws CMemoryException
    void BeginAnnouncedCurve();

    /// The instrument has started a capture. With a capture in hand it goes into the same set, and
    /// nothing else changes; without, the instrument says whether it is continuous.
    /// @return the plot to repaint, if any
    /// @throws CMemoryException
    std::optional<std::size_t> CaptureStarted(bool bContinuous);

  private:
    struct CurvePlan;
    struct NewCurves;

    CurvePlan MakePlan(std::uint16_t nValueRate) const;
    static NewCurves MakeCurves(const CurvePlan& plan);
    template <class Install>
    void InstallNewCurves(Install install);
    void ShareSet(NewCurves& curves);
    void AppendToSet(const NewCurves& curves);
    void BeginCurve(std::size_t nChannel, NewCurves& curves);
    void BeginCurves(NewCurves& curves, bool bNewSet);
    void DropCurrentCurves(NewCurves& curves);

    CRealTimeData& m_session;
    RTCurrentCurves m_aspCurrentCurve;
    std::atomic<std::int16_t> m_nSampleSeconds{3};

    // Changed under the lock only.
    std::atomic<bool> m_bContinuous{false};
    std::atomic<bool> m_bContinuousRunning{false};
    std::atomic<bool> m_bIdle{true};
    std::atomic<std::uint8_t> m_nCurrentPlot{0};
};
