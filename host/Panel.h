// The panel application: the session around one screen.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "acquisition/RTPacket.h"
#include "host/Judgement.h"
#include "host/Options.h"
#include "host/PanelView.h"
#include "host/StripTexts.h"
#include "host/StrokeJudge.h"
#include "instrument/Instrument.h"
#include "instrument/PacketSink.h"
#include "platform/windows/Application.h"
#include "plugin/RealTimeData.h"

class CDlgBase;
class CLinkInstrument;
class CStatusStrip;
class CVerdictStrip;

/// A session that cannot begin: the data folder or the plug-in library is missing, or the library
/// does not give what it should.
class CPanelError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The panel's device object.
class CPanelDevice final : public IRTDevice {
  public:
    void SetInputRanges(std::uint32_t nInputs24V) { m_nInputs24V = nInputs24V; }

    /// Parameter 50: the ranges of the position inputs. Every other parameter is 0.
    std::uint32_t ReadParameter(std::uint32_t nNumber) override;

  private:
    std::uint32_t m_nInputs24V = 0;
};

using InstrumentMaker = std::function<std::unique_ptr<IInstrument>(CPacketSink sink)>;

/// Owns what a screen's session needs (application object, instrument, queue, device, main frame)
/// and runs one screen. User-interface thread; made after the window system.
class CPanel {
  public:
    /// Makes the instrument that the options ask for; one on a link is joined from then on.
    /// @param pJudgement by which its strokes are judged; null: they are not
    /// @param makeInstrument makes another one, which sends its packets to what it is given
    /// @throws CRecordingError, CTlsError
    explicit CPanel(const Options& options, std::unique_ptr<Judgement> pJudgement = nullptr,
                    const InstrumentMaker& makeInstrument = {});
    ~CPanel();

    /// What the instrument is, in a line for the person who started the program.
    const std::string& GetInstrumentText() const { return m_strInstrument; }

    /// What the status strip says, line by line; nothing while it is not shown.
    std::wstring GetStatusText() const;

    /// The strip that shows verdicts; null while there is none.
    CVerdictStrip* GetVerdictStrip() const { return m_pVerdictStrip.get(); }

    /// Waits for an instrument on a link, loads the plug-in, runs its screen, and returns when the
    /// screen has closed.
    /// @return the exit code: 0, or 1 when a demonstration did not go through or the operator did
    ///         not want to wait
    /// @throws CPanelError
    int Run();

  private:
    std::unique_ptr<CStrokeJudge> MakeJudge();
    CPacketSink MakeSink();
    std::unique_ptr<IInstrument> MakeInstrument();
    std::unique_ptr<IInstrument> MakeLink();
    bool JoinInstrument();
    StripField DescribeInstrumentNow() const;
    void FillSession(CRealTimeData& session);
    void OnScreenShown(CDlgBase& screen);
    int RunScreen(CDlgBase& screen, CRealTimeData& session);
    void OnJudgeNews();

    Options m_options;  ///< what an instrument on a link says takes the place of what they say
    CApplication m_app;
    const std::unique_ptr<Judgement> m_pJudgement;  ///< null: strokes are not judged
    std::unique_ptr<CStrokeJudge> m_pJudge;         ///< null with it
    RTPacketQueue m_queue;                          ///< what is left in it goes before the judge
    CPanelDevice m_device;
    std::string m_strInstrument;
    CFrameWindow m_frame;
    std::unique_ptr<IInstrument> m_pInstrument;  ///< null: the desktop has none
    CLinkInstrument* m_pLink = nullptr;          ///< the instrument, when it is on a link
    std::unique_ptr<CPanelView> m_pView;
    std::unique_ptr<CVerdictStrip> m_pVerdictStrip;  ///< null with m_pJudgement
    std::unique_ptr<CStatusStrip> m_pStrip;          ///< of the screen that runs, or ran last
    std::vector<std::wstring> m_arrDroppedFiles;  ///< the capture to open, while it is on its way
};
