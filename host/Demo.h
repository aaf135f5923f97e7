// The demonstration: operates the screen as a person would, with nobody there.
#pragma once

#include <filesystem>
#include <string>

class CDlgBase;
struct CRealTimeData;

/// Takes one capture with the screen's own controls, and leaves in a folder a picture of the screen
/// (screen.png), the capture (capture.rt3) and its export (capture.csv); says on standard output
/// what was captured and where it is. Closes the screen at the end.
///
/// Threads: the script thread of Operator::CScript, while the screen runs.
class CDemo {
  public:
    /// @param screen, session must outlive the demonstration
    /// @param strFolder is made when it is missing; files of those names in it are replaced
    CDemo(CDlgBase& screen, CRealTimeData& session, const std::string& strFolder);

    /// Runs it. What goes wrong is said on standard error.
    /// @return whether everything was made
    bool Run();

  private:
    void TakeCapture();
    void PrintCurves() const;
    void SavePicture();
    void SaveCapture();
    void ExportCurve();
    void CloseScreen();

    void TapBar(int nID);
    void AwaitWindow(const char* pWhat);
    void AwaitScreen(const char* pWhat);

    CDlgBase& m_screen;
    CRealTimeData& m_session;
    const std::filesystem::path m_folder;
};
