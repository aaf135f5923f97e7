#include "curves/CaptureFile.h"

#include "platform/system/Archive.h"
#include "platform/system/FileEvents.h"
#include "platform/system/ReplaceFile.h"

void RTCaptureFile::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar.SetTotalLength(SCREEN_RECORD_LENGTH + PLOT_RECORD_LENGTH + m_curves.GetRecordLength());
        WriteScreenRecord(ar, m_screen);
        WritePlotRecord(ar, m_plots);
    } else {
        m_plots.m_nPlots = 0;
        ReadScreenRecord(ar, m_screen);
        ReadPlotRecord(ar, m_plots);
    }
    m_curves.Serialize(ar);
    if (ar.IsLoading()) m_nBytesBehind = ar.GetBytesLeft();
}

void ReadCapture(CFile& file, CObject& capture, IProgress* pProgress) {
    CallWithMemoryException([&] {
        CArchive ar(&file, CArchive::load);
        ar.SetProgress(pProgress);
        capture.Serialize(ar);
    });
}

void WriteCapture(CFile& file, CObject& capture, IProgress* pProgress) {
    CallWithMemoryException([&] {
        CArchive ar(&file, CArchive::store);
        ar.SetProgress(pProgress);
        capture.Serialize(ar);
        ar.Close();
    });
}

void SaveCapture(const std::wstring& strPath, CObject& capture, IProgress* pProgress) {
    DoFileWork(FileWork::Save, strPath, [&] {
        CReplaceFile file(strPath);
        WriteCapture(file, capture, pProgress);
        file.Commit(pProgress);
    });
}

void LoadCapture(const std::wstring& strPath, CObject& capture, IProgress* pProgress) {
    DoFileWork(FileWork::Load, strPath, [&] {
        CFile file(strPath, CFile::modeRead);
        ReadCapture(file, capture, pProgress);
    });
}
