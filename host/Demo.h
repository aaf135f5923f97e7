// The demonstration: operates the screen as a person would, with nobody there.
#pragma once

#include <filesystem>
#include <string>

class CDlgBase;
class CLinkInstrument;
class CVerdictStrip;
struct CRealTimeData;
struct Judgement;
struct Options;

/// Takes one capture with the screen's own controls, and leaves in a folder a picture of the screen
/// (screen.png), the capture (capture.rt3) and its export (capture.csv); says on standard output
/// what was captured and where it is. Where strokes are judged it also leaves the stroke's picture
/// (xy.png) and its line of the verdict log (verdict.json), and says what the verdict is. Closes
/// the screen at the end. Of a screen whose captures are controlled elsewhere it takes the next one
/// that somebody else begins, for which it waits a minute.
///
/// Threads: the script thread of Operator::CScript, while the screen runs.
class CDemo {
  public:
    /// The options name the folder, which is made when it is missing (files of those names in it
    /// are replaced), and the sample time and trigger level to enter. All must outlive the
    /// demonstration.
    /// @param pJudgement, pVerdictStrip null: strokes are not judged
    /// @param pLink null: the instrument is not on a link
    CDemo(CDlgBase& screen, CRealTimeData& session, const Options& options,
          const Judgement* pJudgement, const CVerdictStrip* pVerdictStrip,
          const CLinkInstrument* pLink);

    /// Runs it. What goes wrong is said on standard error.
    /// @return whether everything was made
    bool Run();

  private:
    void TakeCapture();
    void TakeCaptureOfOthers();
    void AwaitPackets();
    void PrintCurves();
    void SaveVerdict();
    void SavePictures();
    void SaveCapture();
    void ExportCurve();
    void CloseScreen();

    void EnterNumber(int nID, const std::wstring& strNumber);
    void PressKeys(const std::wstring& strText);
    void TapBar(int nID);
    void AwaitScreen(const char* pWhat);

    CDlgBase& m_screen;
    CRealTimeData& m_session;
    const Options& m_options;
    const Judgement* const m_pJudgement;
    const CVerdictStrip* const m_pVerdictStrip;
    const std::filesystem::path m_folder;
    const CLinkInstrument* const m_pLink;
    std::string m_strIncomplete;  ///< why the capture is not whole; empty: it is
};
