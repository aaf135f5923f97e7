#include "plugin/DlgSetupMode.h"

#include "curves/InstrumentMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BarMessages.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"

BEGIN_MESSAGE_MAP(CDlgSetupMode, CDlgBase)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_BN_CLICKED(IDC_ZOOM_ALL, OnZoomAll)
ON_BN_CLICKED(IDC_SAVE, OnSave)
ON_BN_CLICKED(IDC_START, OnStart)
ON_BN_CLICKED(IDC_LOAD, OnLoad)
ON_COMMAND(IDC_CONTINUOUS, OnContinuousCommand)
ON_BN_CLICKED(IDC_STOP, OnStop)
ON_BN_CLICKED(IDC_CLEAR, OnClear)
ON_CBN_SELCHANGE(IDC_DISPLAY_LIST, OnSelChangeDisplay)
ON_BN_CLICKED(IDC_SAMPLE_TIME_MODE, OnSampleTimeMode)
ON_BN_CLICKED(IDC_SETTINGS, OnSettings)
ON_WM_RBUTTONDOWN()
ON_MESSAGE(WM_RT_BARCOMMAND, OnBarCommand)
ON_MESSAGE(WM_RT_SWITCHBAR, OnSwitchBar)
ON_WM_CLOSE()
ON_CBN_SELCHANGE(IDC_CHANNEL_LIST, OnSelChangeChannel)
ON_MESSAGE(WM_RT_EXPORTCSV, OnExportCsv)
ON_MESSAGE(WM_RT_PASSOUTPUT, OnPassOutput)
ON_WM_DROPFILES()
END_MESSAGE_MAP()

namespace {

/// How long the reader may take to end by itself once the screen has closed.
constexpr unsigned READER_PATIENCE_MS = 1000;

}  // namespace

CDlgSetupMode::CDlgSetupMode()
    : CDlgBase(SCREEN_TEMPLATE), m_capture(*this), m_reader(*this, m_capture, *this) {
    m_spCurves = std::make_shared<CRTCurves>();
    for (RTPlot& plot : m_aPlots) plot.m_pSessionLock = &m_lock;
}

CDlgSetupMode::~CDlgSetupMode() = default;

void CDlgSetupMode::Run() {
    /// However the screen ends, its reader ends before Run does.
    struct ReaderEnd {
        ~ReaderEnd() { m_screen.EndReader(); }
        CDlgSetupMode& m_screen;
    };
    // The reader decodes by it from its first packet on, which may come before the set-up.
    m_nChannels = CountChannels(m_nMode);
    const ReaderEnd readerEnd{*this};
    m_hReaderThread = StartThread([this] { return ReaderThreadProc(*this); });
    DoModal();
}

void CDlgSetupMode::EndReader() {
    m_bStopReader = 1;
    if (!m_hReaderThread.Wait(READER_PATIENCE_MS)) m_reader.LeaveBetweenPackets();
    m_hReaderThread.Close();
}

unsigned CDlgSetupMode::ReaderThreadProc(CDlgSetupMode& screen) {
    screen.m_reader.Run();
    return 0;
}

void CDlgSetupMode::DoDataExchange(CDataExchange* pExchange) {
    CDlgBase::DoDataExchange(pExchange);
    std::int16_t nSampleSeconds = m_capture.GetSampleSeconds();
    ExchangeText(pExchange, IDC_SAMPLE_TIME, nSampleSeconds);
    if (pExchange->m_bSaveAndValidate) m_capture.SetSampleSeconds(nSampleSeconds);
    ExchangeText(pExchange, IDC_TRIGGER, m_strTrigger);
}
