// Captures kept in files: save, load, export.
#include <algorithm>
#include <mutex>

#include "curves/CaptureFile.h"
#include "curves/CsvExport.h"
#include "curves/FileStore.h"
#include "platform/system/Archive.h"
#include "platform/system/Paths.h"
#include "platform/windows/Controls.h"
#include "platform/windows/FileDialog.h"
#include "platform/windows/KeyboardCalls.h"
#include "plugin/DlgSetupMode.h"
#include "plugin/ScreenTemplate.h"
#include "ui/BigMessageBox.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"
#include "ui/ProgressBox.h"

namespace {

constexpr const wchar_t* CAPTURE_EXTENSION = L".rt3";
constexpr const wchar_t* CAPTURE_FILTER = L"Real Time File (*.rt3)|*.rt3||";

/// As far as the file has been read.
RTCaptureScale FindScale(const RTCaptureFile& capture) {
    const RTScreenRecord& screen = capture.m_screen;
    RTCaptureScale scale;
    if (screen.m_nRatesRead > 0) scale.m_nValueRate = screen.m_nValueRate;
    if (screen.m_nRatesRead > 1) scale.m_nAuxRate = screen.m_nAuxRate;
    const RTPlotRecord& plots = capture.m_plots;
    std::copy_n(plots.m_anSpans.begin(), plots.m_nPlots, scale.m_anSpanValues.begin());
    return scale;
}

}  // namespace

void CDlgSetupMode::Serialize(CArchive& ar) {
    if (ar.IsStoring())
        StoreCapture(ar);
    else
        LoadCapture(ar);
}

/// What is in hand apart from the curves.
RTCaptureFile CDlgSetupMode::DescribeCapture() {
    RTCaptureFile capture;
    capture.m_screen.m_nMode = m_nMode;
    capture.m_screen.m_nPositionInput = m_nPositionInput;
    const std::lock_guard lock(m_lock);
    capture.m_screen.m_nValueRate = m_nValueRate;
    capture.m_screen.m_nAuxRate = m_nAuxRate;
    for (std::size_t k = 0; k < RT_MAX_CHANNELS; ++k)
        capture.m_plots.m_anSpans[k] = m_aPlots[k].m_nSpanValues;
    return capture;
}

void CDlgSetupMode::StoreCapture(CArchive& ar) {
    RTCaptureFile capture = DescribeCapture();
    capture.m_curves.m_lstCurves = m_capture.CopyCurves()->m_lstCurves;
    capture.Serialize(ar);
}

void CDlgSetupMode::LoadCapture(CArchive& ar) {
    // The curves are read into a set that nobody else sees; what was read is put in hand at the
    // end, whatever that end is.
    const auto spLoaded = std::make_shared<RTCaptureFile>();
    const auto install = [&] {
        m_capture.ReplaceCurves({spLoaded, &spLoaded->m_curves}, FindScale(*spLoaded));
        for (CDialogDraw& control : m_aPlotCtrl) control.Invalidate();
    };
    try {
        spLoaded->Serialize(ar);
    } catch (...) {
        install();
        throw;
    }
    install();
    FillDisplayList(m_nMode, m_nPositionInput);
}

void CDlgSetupMode::OnSave() {
    if (m_bDesktopMode) {
        CFileDialog dialog(false, CAPTURE_EXTENSION, CAPTURE_FILTER);
        dialog.SetFolder(GetStoreFolder());
        if (dialog.DoModal() == IDOK) SaveTo(dialog.GetPathName());
        return;
    }
    std::wstring strName;
    if (!CallKeyboard(GetLangText(154, L"Error: Blank value not supported."),
                      GetLangText(1522, L"Real Time file name"), &strName))
        return;
    if (!IsPlainFileName(strName)) {
        ShowBigMessageBox(GetLangText(1094, L"Data Error"),
                          strName + L"\n" + GetLangText(3166, L"cannot be used as a file name."),
                          BIGBTN_OK_CENTRE);
        return;
    }
    CreateStoreFolder();
    SaveTo(GetSavePath(strName));
}

void CDlgSetupMode::SaveTo(const std::wstring& strPath) {
    CProgressBox progress(GetLangText(1510, L"Save"));
    SaveCapture(strPath, *this, &progress);
}

void CDlgSetupMode::OnLoad() {
    if (m_bDesktopMode) {
        CFileDialog dialog(true, L"", CAPTURE_FILTER);
        dialog.SetFolder(GetStoreFolder());
        if (dialog.DoModal() == IDOK) LoadFrom(dialog.GetPathName(), dialog.GetFileName());
        return;
    }
    const std::vector<std::wstring> arrFiles = FindStoredFiles();
    CDlgListFiles dialog;
    dialog.m_pLangTable = m_pLangTable;
    dialog.SetFiles(arrFiles);
    dialog.SetCaption(GetLangText(1523, L"Select Real Time file to open"));
    if (dialog.DoModal() != IDOK || dialog.GetSelectedIndex() < 0) return;
    const auto nFile = static_cast<std::size_t>(dialog.GetSelectedIndex());
    LoadFrom(JoinPath(GetStoreFolder(), arrFiles[nFile]), dialog.GetSelectedName());
}

/// A dropped file is loaded as one chosen in the open dialog, when that could be shown.
void CDlgSetupMode::OnDropFiles(const std::vector<std::wstring>& arrPaths) {
    const CWnd* pLoad = GetControl(IDC_LOAD);
    if (m_bDesktopMode && pLoad && pLoad->IsWindowEnabled() && !arrPaths.empty())
        LoadFrom(arrPaths.front(), GetNameOfPath(arrPaths.front()));
}

void CDlgSetupMode::LoadFrom(const std::wstring& strPath, const std::wstring& strShownName) {
    SetWindowText(L"Real Time Mode - " + strShownName);
    OnClear();
    {
        CProgressBox progress(GetLangText(1509, L"Load"));
        ::LoadCapture(strPath, *this, &progress);
    }
    SelectDisplay();
    for (std::size_t k = 0; k < m_nChannels; ++k) ZoomAllAndRepaint(k);
}

LRESULT CDlgSetupMode::OnExportCsv(WPARAM, LPARAM) {
    const std::shared_ptr<RTCurveData> spCurve = m_capture.CopyCurves()->FirstCurve(CurrentIndex());
    if (!spCurve) return -1;
    CFileDialog dialog(false, L".csv", L"Text File (*.csv)|*.csv||");
    dialog.SetFolder(GetStoreFolder());
    if (dialog.DoModal() != IDOK) return 0;
    CProgressBox progress(GetLangText(1533, L"Export to csv..."));
    ExportCurveCsv(dialog.GetPathName(), *spCurve, {}, &progress);
    return 0;
}
