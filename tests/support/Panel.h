// A small panel for tests: it loads the real plug-in library, takes its message objects and feeds
// its packet queue, while a script works the screen as an operator would.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "acquisition/ObjRTGeneric.h"
#include "platform/operator/Operator.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Application.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"
#include "tests/support/Controls.h"
#include "tests/support/TemporaryFolder.h"

/// A sample packet of one block.
std::shared_ptr<RTPacket> MakeSamples(std::uint8_t byState,
                                      const std::vector<std::int16_t>& values);

/// The instrument's report that it is idle.
std::shared_ptr<RTPacket> MakeIdleReport();

/// Takes message objects as the host's view does, and keeps them and their images.
class CTestView : public CView {
  public:
    std::vector<std::unique_ptr<CObjConfig>> m_messages;
    std::vector<std::string> m_images;

  private:
    LRESULT OnSendObject(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()
};

class TestPanel {
  public:
    /// @param nMode, nPositionInput the instrument's mode and kind of second input
    explicit TestPanel(std::uint8_t nMode = 1, std::uint8_t nPositionInput = 0);

    /// Runs the screen with a script beside it, and closes it when the script ends.
    void Run(const std::function<void()>& script);

    /// Runs the screen until the script has closed it.
    void RunUntilClosed(const std::function<void()>& script);

    /// For scripts: whether a control of the screen is enabled, visible, and its text.
    bool IsEnabled(int nID) { return ::IsEnabled(*m_pDialog, nID); }
    bool IsVisible(int nID) { return ::IsVisible(*m_pDialog, nID); }
    std::wstring TextOf(int nID) { return ::TextOf(*m_pDialog, nID); }
    bool Tap(int nID) { return Operator::Tap(*m_pDialog, nID); }
    CWnd* Control(int nID);
    /// Of whichever bar is shown.
    bool TapBar(int nID);
    std::wstring BarText(int nID) { return ::TextOf(*Control(IDC_BAR), nID); }
    /// Picks an item of one of the screen's two lists.
    bool Select(int nList, const std::wstring& strText) {
        return Operator::Select(*Control(nList), strText);
    }
    /// A point of the plots, in pixels of the design, in the screen's client area; all plots stand
    /// at one place.
    CPoint AtPlot(int x, int y);
    void TapPlot(int x, int y = 100);
    void Drag(int xFrom, int xTo);
    /// Saves under a name typed on the keyboard.
    void SaveAs(const std::wstring& strName);
    /// Types a path into the standard file dialog, which must be about to open, and confirms it.
    void AnswerFileDialog(const std::wstring& strPath);

    /// The values of a channel's curve by index, as far as they are stored.
    std::vector<std::int16_t> ValuesOf(std::size_t nChannel, std::size_t nCurve = 0);
    std::size_t CurveCount(std::size_t nChannel);

    /// Waits until every packet has been taken and the screen has shown what came of it.
    void Settle();

    TemporaryFolder m_folder;  ///< holds the settings
    CDynamicLibrary m_library;
    CApplication m_app;
    CFrameWindow m_frame;
    CTestView m_view;
    RTPacketQueue m_queue;
    std::unique_ptr<CDlgBase> m_pDialog;
    CRealTimeData* m_pSession = nullptr;
};
