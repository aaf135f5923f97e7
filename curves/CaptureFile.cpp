#include "curves/CaptureFile.h"

#include "curves/CurveSetRecord.h"
#include "platform/system/Archive.h"
#include "platform/system/ReplaceFile.h"

void ReadCapture(CFile& file, RTCaptureFile& capture, IRTProgress* pProgress) {
    CArchive ar(&file, CArchive::load);
    capture.m_screen = ReadScreenRecord(ar);
    ReadPlotRecord(ar, capture.m_plots);
    ReadCurveSet(ar, capture.m_curves, pProgress);
}

void WriteCapture(CFile& file, const RTCaptureFile& capture, IRTProgress* pProgress) {
    CArchive ar(&file, CArchive::store);
    WriteScreenRecord(ar, capture.m_screen);
    WritePlotRecord(ar, capture.m_plots);
    WriteCurveSet(ar, capture.m_curves.m_lstCurves, pProgress);
    ar.Close();
}

void SaveCapture(const std::wstring& strPath, const RTCaptureFile& capture,
                 IRTProgress* pProgress) {
    CReplaceFile file(strPath);
    WriteCapture(file, capture, pProgress);
    file.Commit();
}
