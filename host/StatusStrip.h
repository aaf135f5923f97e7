// The strip below the screen: what the instrument is doing, what became of files, and the values at
// the time markers.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/StripTexts.h"
#include "platform/system/FileEvents.h"
#include "platform/windows/Application.h"

class QTimer;
struct CRealTimeData;

/// Looks ten times a second, and is painted when something has changed. Hears of files from its
/// making on, whatever thread works on them. Everything else is for the user-interface thread.
class CStatusStrip : public CView {
  public:
    /// @param session of the screen; must outlive the strip
    /// @param describe says how the instrument stands, whenever it is asked
    CStatusStrip(const CRealTimeData& session, std::function<StripField()> describe);
    ~CStatusStrip() override;

    /// Shows the strip below a screen's window, which holds the session's plots. The window's text
    /// is what the strip says.
    void Attach(CWnd& screen);

    /// Shows what has changed since the last look, at once.
    void Update();

  private:
    void OnPaint();
    DECLARE_MESSAGE_MAP()

    StripContents Look();
    std::vector<StripRow> LookAtMarkers() const;

    const CRealTimeData& m_session;
    const std::function<StripField()> m_describe;
    const CWnd* m_pScreen = nullptr;
    StripContents m_shown;
    std::unique_ptr<QTimer> m_pTimer;

    std::mutex m_mutex;
    StripField m_file;  ///< guarded by m_mutex
    const CFileListener m_fileListener;
};
