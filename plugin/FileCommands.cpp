// Captures kept in files: save, load, export.
#include <mutex>

#include "curves/CaptureRecords.h"
#include "curves/CsvExport.h"
#include "curves/CurveSetRecord.h"
#include "curves/FileStore.h"
#include "platform/system/Archive.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "platform/system/ReplaceFile.h"
#include "platform/windows/Controls.h"
#include "platform/windows/FileDialog.h"
#include "plugin/DlgSetupMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"
#include "ui/KeyboardCalls.h"
#include "ui/ProgressBox.h"

namespace {

constexpr const wchar_t* CAPTURE_EXTENSION = L".rt3";
constexpr const wchar_t* CAPTURE_FILTER = L"Real Time File (*.rt3)|*.rt3||";

}  // namespace

/// Lets the records that are stored or loaded while it lives tell the operator how far they are.
class CDlgSetupMode::WorkInProgress {
  public:
    WorkInProgress(CDlgSetupMode& screen, const std::wstring& strTitle)
        : m_screen(screen), m_box(strTitle) {
        m_screen.m_pProgress = &m_box;
    }
    ~WorkInProgress() { m_screen.m_pProgress = nullptr; }
    WorkInProgress(const WorkInProgress&) = delete;
    WorkInProgress& operator=(const WorkInProgress&) = delete;

  private:
    CDlgSetupMode& m_screen;
    CProgressBox m_box;
};

void CDlgSetupMode::Serialize(CArchive& ar) {
    if (ar.IsStoring())
        StoreCapture(ar);
    else
        LoadCaptureRecords(ar);
}

void CDlgSetupMode::StoreCapture(CArchive& ar) {
    RTScreenRecord screen;
    screen.m_nMode = m_nMode;
    screen.m_nPositionInput = m_nPositionInput;
    RTPlotRecord plots;
    {
        const std::lock_guard lock(m_lock);
        screen.m_nValueRate = m_nValueRate;
        screen.m_nAuxRate = m_nAuxRate;
        for (std::size_t k = 0; k < RT_MAX_CHANNELS; ++k)
            plots.m_anSpans[k] = m_aPlots[k].m_nSpanValues;
    }
    WriteScreenRecord(ar, screen);
    WritePlotRecord(ar, plots);
    WriteCurveSet(ar, m_capture.CopyCurves()->m_lstCurves, m_pProgress);
}

void CDlgSetupMode::LoadCaptureRecords(CArchive& ar) {
    // The curves are read into a set that nobody else sees; what is complete is put in hand at the
    // end, whatever that end is.
    struct Installer {
        CDlgSetupMode& m_screen;
        std::shared_ptr<CRTCurves> m_spCurves = std::make_shared<CRTCurves>();
        RTCaptureScale m_scale{};
        ~Installer() {
            m_screen.m_capture.ReplaceCurves(m_spCurves, m_scale);
            for (CDialogDraw& control : m_screen.m_aPlotCtrl) control.Invalidate();
        }
    } loaded{*this};
    {
        const std::lock_guard lock(m_lock);
        loaded.m_scale.m_nValueRate = m_nValueRate;
        loaded.m_scale.m_nAuxRate = m_nAuxRate;
        for (std::size_t k = 0; k < RT_MAX_CHANNELS; ++k)
            loaded.m_scale.m_anSpanValues[k] = m_aPlots[k].m_nSpanValues;
    }
    const RTScreenRecord screen = ReadScreenRecord(ar);
    loaded.m_scale.m_nValueRate = screen.m_nValueRate;
    loaded.m_scale.m_nAuxRate = screen.m_nAuxRate;
    RTPlotRecord plots;
    plots.m_anSpans = loaded.m_scale.m_anSpanValues;
    ReadPlotRecord(ar, plots);
    loaded.m_scale.m_anSpanValues = plots.m_anSpans;
    ReadCurveSet(ar, *loaded.m_spCurves, m_pProgress);
    FillDisplayList(m_nMode, m_nPositionInput);
}

void CDlgSetupMode::OnSave() {
    if (m_bDesktopMode) {
        CFileDialog dialog(false, CAPTURE_EXTENSION, CAPTURE_FILTER);
        if (dialog.DoModal() == IDOK) SaveCapture(dialog.GetPathName());
        return;
    }
    std::wstring strName;
    if (!CallKeyboard(GetLangText(154, L"Error: Blank value not supported."),
                      GetLangText(1522, L"Real Time file name"), &strName))
        return;
    if (!IsStoreName(strName)) {
        ShowBigMessageBox(GetLangText(1094, L"Data Error"),
                          strName + L"\ncannot be used as a file name.", BIGBTN_OK_CENTRE);
        return;
    }
    CreateStoreFolder();
    SaveCapture(GetSavePath(strName));
}

void CDlgSetupMode::SaveCapture(const std::wstring& strPath) {
    const WorkInProgress work(*this, GetLangText(1510, L"Save"));
    CReplaceFile file(strPath);
    CArchive ar(&file, CArchive::store);
    Serialize(ar);
    ar.Close();
    file.Commit();
}

void CDlgSetupMode::OnLoad() {
    if (m_bDesktopMode) {
        CFileDialog dialog(true, L"", CAPTURE_FILTER);
        if (dialog.DoModal() == IDOK) LoadCapture(dialog.GetPathName(), dialog.GetFileName());
        return;
    }
    const std::vector<std::wstring> arrFiles = FindStoredFiles();
    CDlgListFiles dialog;
    dialog.m_pLangTable = m_pLangTable;
    dialog.SetFiles(arrFiles);
    dialog.SetCaption(GetLangText(1523, L"Select Real Time file to open"));
    if (dialog.DoModal() != IDOK || dialog.GetSelectedIndex() < 0) return;
    const auto nFile = static_cast<std::size_t>(dialog.GetSelectedIndex());
    LoadCapture(JoinPath(GetStoreFolder(), arrFiles[nFile]), dialog.GetSelectedName());
}

/// A dropped file is loaded as one chosen in the open dialog, when that could be shown.
void CDlgSetupMode::OnDropFiles(const std::vector<std::wstring>& arrPaths) {
    const CWnd* pLoad = GetControl(IDC_LOAD);
    if (m_bDesktopMode && pLoad && pLoad->IsWindowEnabled() && !arrPaths.empty())
        LoadCapture(arrPaths.front(), GetNameOfPath(arrPaths.front()));
}

void CDlgSetupMode::LoadCapture(const std::wstring& strPath, const std::wstring& strShownName) {
    SetWindowText(L"Real Time Mode - " + strShownName);
    OnClear();
    {
        const WorkInProgress work(*this, GetLangText(1509, L"Load"));
        CFile file(strPath, CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        Serialize(ar);
        ar.Close();
    }
    SelectDisplay();
    for (std::size_t k = 0; k < m_nChannels; ++k) ZoomAllAndRepaint(k);
}

LRESULT CDlgSetupMode::OnExportCsv(WPARAM, LPARAM) {
    const std::shared_ptr<RTCurveData> spCurve = m_capture.CopyCurves()->FirstCurve(CurrentIndex());
    if (!spCurve) return -1;
    CFileDialog dialog(false, L".csv", L"Text File (*.csv)|*.csv||");
    if (dialog.DoModal() != IDOK) return 0;
    const WorkInProgress work(*this, GetLangText(1533, L"Export to csv..."));
    ExportCurveCsv(dialog.GetPathName(), *spCurve, {}, m_pProgress);
    return 0;
}
