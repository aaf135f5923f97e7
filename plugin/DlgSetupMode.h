// The Real Time Mode screen.
#pragma once

#include <array>
#include <memory>
#include <optional>

#include "acquisition/Capture.h"
#include "acquisition/PacketReader.h"
#include "acquisition/ReaderScreen.h"
#include "platform/system/NumberedText.h"
#include "plot/DialogDraw.h"
#include "plugin/DlgBase.h"
#include "plugin/RealTimeData.h"
#include "ui/EditClick.h"
#include "ui/LanguageTable.h"

class CDlgBarInfo;
class CDlgBarMainMenu;
struct RTCaptureFile;

/// The screen object that GetDialog makes. The host owns it, fills the CRealTimeData part, calls
/// Run once and deletes it. The reader thread lives only inside Run and sees the screen only
/// through IReaderScreen; everything else belongs to the user-interface thread.
class CDlgSetupMode : public CDlgBase, public CRealTimeData, private IReaderScreen {
  public:
    CDlgSetupMode();
    ~CDlgSetupMode() override;

    void Run() override;

    /// Stores or loads the capture in hand as RTCaptureFile does. Loading replaces the set in hand,
    /// with what was read also at an exception, and refills the display list.
    void Serialize(CArchive& ar) override;

  protected:
    void DoDataExchange(CDataExchange* pExchange) override;
    bool OnInitDialog() override;
    DECLARE_MESSAGE_MAP()

  private:
    /// Entry of the reader thread.
    /// @return 0
    static unsigned ReaderThreadProc(CDlgSetupMode& screen);
    void EndReader();

    // Set-up (ScreenSetup.cpp)
    void BindPlots();
    void MakeFonts();
    void LoadLanguageTable();
    void PrepareTouchEntry();
    void FillChannelList();
    void FillDisplayList(std::uint8_t nMode, std::uint8_t nPositionInput);
    std::wstring GetRangeTag(std::uint8_t nPositionInput) const;
    void DisableWhatTheSessionForbids();
    void SetTexts();
    LRESULT OnSwitchBar(WPARAM wParam, LPARAM lParam);

    // Captures (CaptureCommands.cpp)
    void OnStart();
    void OnStop();
    void OnClear();
    void OnSampleTimeMode();
    void OnContinuousCommand();
    void ShowCapturing();
    void ShowIdle();
    void ClearBarReadOuts();
    LRESULT OnPassOutput(WPARAM wParam, LPARAM lParam);
    void ReturnToIdle() override;
    void RepaintPlot(std::size_t nPlot) override;

    // Views (ViewCommands.cpp)
    void OnZoomAll();
    void OnSelChangeDisplay();
    void OnSelChangeChannel();
    void SelectDisplay();
    void OnSettings();
    LRESULT OnBarCommand(WPARAM wParam, LPARAM lParam);
    void OnClose();
    void ShowTimeDistance(std::int32_t nMilliseconds);
    void ShowTriggerPercent(std::int32_t nPercent);
    void ZoomAllAndRepaint(std::size_t nPlot);

    // Mouse over the plots (PlotMouse.cpp)
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    CRect GetPlotArea() const;

    // Files (FileCommands.cpp)
    void OnSave();
    void OnLoad();
    void OnDropFiles(const std::vector<std::wstring>& arrPaths);
    LRESULT OnExportCsv(WPARAM wParam, LPARAM lParam);
    RTCaptureFile DescribeCapture();
    void StoreCapture(CArchive& ar);
    void LoadCapture(CArchive& ar);
    void SaveTo(const std::wstring& strPath);
    void LoadFrom(const std::wstring& strPath, const std::wstring& strShownName);

    std::size_t CurrentIndex() const { return m_capture.GetCurrentPlot(); }
    RTPlot& CurrentPlot() { return m_aPlots[CurrentIndex()]; }
    CDialogDraw& CurrentPlotCtrl() { return m_aPlotCtrl[CurrentIndex()]; }

    RTCapture m_capture;
    std::wstring m_strTrigger = L"0";  ///< trigger level in percent, as in IDC_TRIGGER
    std::array<CDialogDraw, RT_MAX_CHANNELS> m_aPlotCtrl;
    CFont m_fontLarge;
    CFont m_fontSmall;
    int m_nPlotLeft = 0;  ///< pixels from the window's left edge to the plots' left edge
    std::array<std::uint8_t, RT_MAX_CHANNELS> m_abyDisplay{};
    CLanguageTable m_langTable;               ///< lent to the bars and dialogs
    std::optional<CTextSource> m_layerTexts;  ///< lends the table to the layer below
    std::unique_ptr<CDlgBarMainMenu> m_pMainMenuBar;
    std::unique_ptr<CDlgBarInfo> m_pInfoBar;
    CEditClick m_editSampleTime;
    CEditClick m_editTrigger;
    CPacketReader m_reader;

    /// A request to show the idle state is on its way; further ones are the same.
    std::atomic<bool> m_bIdleQueued{false};
};

/// Hands a message object to the view that sends it to the instrument; without one it is deleted.
void SendToInstrument(std::unique_ptr<CObjConfig> pMessage);
