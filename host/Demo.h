// The demonstration: operates the screen as a person would, with nobody there.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

class CDlgBase;
struct CRealTimeData;

/// Takes one capture with the screen's own controls, and leaves in a folder a picture of the
/// screen, the capture and its export; says on standard output what was captured and where it is.
/// Closes the screen at the end. User-interface thread.
class CDemo {
  public:
    /// @param screen, session must outlive the demonstration
    /// @param strFolder is made when it is missing
    CDemo(CDlgBase& screen, CRealTimeData& session, const std::string& strFolder);

    /// Runs it. What goes wrong is said on standard error.
    /// @return whether everything was made
    bool Run();

  private:
    void TakeCapture();
    void SavePicture();
    void CloseScreen();
    void PrintCurves() const;

    CDlgBase& m_screen;
    CRealTimeData& m_session;
    const std::filesystem::path m_folder;
};
